#include "Headings.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "Markup.h"
#include "SearchWords.h"
#include "qel/base/CaseMapping.h"
#include "qel/base/Graphemes.h"
#include "qel/base/Utf8.h"
#include "qel/text/MarkupStrings.h"

namespace qel::forms {
namespace {

constexpr std::size_t longest_title = 60;  // of one that is taken from a body

/// As much of the text as a title may have, without a part of a word at its end.
std::u16string first_words(const std::u16string& text) {
  if (text.size() <= longest_title) return text;
  std::size_t end = text.rfind(u' ', longest_title);
  if (end == std::u16string::npos || end == 0) end = whole_position(text, longest_title);
  return text.substr(0, end) + u"\u2026";
}

struct Row {
  Heading heading;
  std::string key;  // of the title
};

template <class Key>
void sort_by(std::vector<std::size_t>& order, bool ascending, Key key) {
  std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
    return ascending ? key(left) < key(right) : key(right) < key(left);
  });
}

std::vector<std::size_t> order_of(const std::vector<Row>& rows, const Listing& listing) {
  std::vector<std::size_t> order(rows.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto id = [&](std::size_t i) { return rows[i].heading.id; };
  switch (listing.order) {
    case Order::changed:
      sort_by(order, listing.ascending,
              [&](std::size_t i) { return std::pair(rows[i].heading.changed, id(i)); });
      break;
    case Order::created:
      sort_by(order, listing.ascending,
              [&](std::size_t i) { return std::pair(rows[i].heading.created, id(i)); });
      break;
    case Order::title:
      sort_by(order, listing.ascending,
              [&](std::size_t i) { return std::pair(std::string_view(rows[i].key), id(i)); });
      break;
  }
  return order;
}

}  // namespace

ShownTitle shown_title(std::u16string_view title, std::u16string_view body) {
  std::u16string text = simplified(visible_text(title));
  if (!text.empty()) return {std::move(text), false};
  // Blanks at the beginning do not count, so there are some to spare.
  constexpr std::size_t enough = longest_title * 4;
  return {first_words(simplified(visible_text(markup::left(body, enough, Way::lossless)))), true};
}

std::u16string tag_key(std::u16string_view tag) { return to_lower(simplified(tag)); }

std::string is_listed(const Listing& listing, const std::string& id) {
  const std::string tagged =
      "(?1 = '' OR " + id + " IN (SELECT record FROM tags WHERE key = ?1)) AND ";
  return tagged + id + (listing.trash ? " IN" : " NOT IN") + " (SELECT record FROM trash)";
}

Heading heading_of(const Statement& row, ShownTitle title) {
  Heading heading;
  heading.id = row.integer(0);
  heading.changed = row.integer(1);
  heading.created = row.integer(2);
  heading.trashed = row.integer(3);
  heading.title = std::move(title.text);
  heading.untitled = title.untitled;
  return heading;
}

bool Headings::is_behind() const { return Statement(database_, "SELECT 1 FROM unlisted").step(); }

void Headings::catch_up() {
  if (!is_behind()) return;
  Transaction transaction(database_);
  database_.execute("DELETE FROM headings WHERE record IN (SELECT record FROM unlisted)");
  Statement changed(database_,
                    "SELECT id, title, body, changed, created FROM unlisted"
                    " JOIN records ON id = record");
  Statement kept(database_,
                 "INSERT INTO headings(record, title, key, untitled, changed, created)"
                 " VALUES(?, ?, ?, ?, ?, ?)");
  while (changed.step()) {
    const ShownTitle title = shown_title(changed.text(1), changed.text(2));
    kept.begin_with(changed.integer(0), title.text, folded(title.text),
                    std::int64_t{title.untitled ? 1 : 0}, changed.integer(3), changed.integer(4));
    kept.run();
  }
  database_.execute("DELETE FROM unlisted");
  transaction.commit();
}

std::vector<Heading> Headings::list(const Listing& listing) const {
  std::vector<Row> rows;
  const std::u16string tag = tag_key(listing.tag);
  const std::string sorted_by = listing.order == Order::title ? "key" : "''";
  Statement kept(database_,
                 "SELECT h.record, changed, created, since, title, untitled, " + sorted_by +
                     " FROM headings h LEFT JOIN trash ON trash.record = h.record WHERE " +
                     is_listed(listing, "h.record") +
                     " AND h.record NOT IN (SELECT record FROM unlisted)",
                 tag);
  while (kept.step()) {
    rows.push_back(
        {heading_of(kept, {kept.text(4), kept.integer(5) != 0}), std::string(kept.bytes(6))});
  }
  Statement changed(database_,
                    "SELECT id, changed, created, since, title, body FROM unlisted u"
                    " JOIN records ON id = u.record LEFT JOIN trash ON trash.record = id WHERE " +
                        is_listed(listing, "id"),
                    tag);
  while (changed.step()) {
    Heading heading = heading_of(changed, shown_title(changed.text(4), changed.text(5)));
    std::string key = to_utf8(folded(heading.title));
    rows.push_back({std::move(heading), std::move(key)});
  }
  std::vector<Heading> headings;
  headings.reserve(rows.size());
  for (const std::size_t i : order_of(rows, listing)) {
    headings.push_back(std::move(rows[i].heading));
  }
  add_tags(headings);
  return headings;
}

void Headings::add_tags(std::vector<Heading>& headings) const {
  if (!Statement(database_, "SELECT 1 FROM tags").step()) return;
  constexpr std::size_t few = 2000;
  if (headings.size() > few) return add_all_tags(headings);
  Statement tags(database_, "SELECT name FROM tags WHERE record = ? ORDER BY key");
  for (Heading& heading : headings) {
    tags.begin_with(heading.id);
    while (tags.step()) heading.tags.push_back(tags.text(0));
  }
}

/// Takes as long as there are tags, however many headings there are.
void Headings::add_all_tags(std::vector<Heading>& headings) const {
  std::unordered_map<std::int64_t, Heading*> by_id;
  for (Heading& heading : headings) by_id.emplace(heading.id, &heading);
  Statement tags(database_, "SELECT record, name FROM tags ORDER BY record, key");
  while (tags.step()) {
    const auto found = by_id.find(tags.integer(0));
    if (found != by_id.end()) found->second->tags.push_back(tags.text(1));
  }
}

}  // namespace qel::forms
