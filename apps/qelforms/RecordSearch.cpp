#include "RecordSearch.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "Markup.h"
#include "SearchWords.h"
#include "qel/base/CaseMapping.h"
#include "qel/base/Search.h"

namespace qel::forms {
namespace {

/// The visible texts of a record that a search reads.
struct Texts {
  std::u16string title;
  std::u16string body;
};

/// `parts_in` tells where a text has what was searched.
template <class PartsIn>
Heading found_in(const Statement& record, const Texts& texts, const PartsIn& parts_in) {
  ShownTitle title{simplified(texts.title), false};
  if (title.text.empty()) title = shown_title({}, record.text(5));
  Heading heading = heading_of(record, std::move(title));
  heading.found_in_title = parts_in(heading.title);
  Snippet snippet = snippet_of(texts.body, parts_in(texts.body));
  heading.snippet = std::move(snippet.text);
  heading.found = std::move(snippet.parts);
  return heading;
}

/// The newest records of a listing, of which a condition may leave some out.
Statement records_of(const Database& database, const Listing& listing,
                     const std::string& condition) {
  return {database,
          "SELECT id, changed, created, since, title, body FROM records"
          " LEFT JOIN trash ON trash.record = id WHERE " +
              is_listed(listing, "id") + condition + " ORDER BY id DESC",
          tag_key(listing.tag)};
}

}  // namespace

std::vector<Heading> RecordSearch::find(std::u16string_view text, const Listing& listing,
                                        std::size_t most, std::size_t reach) {
  const SearchWords words(text);
  std::vector<Heading> found = read(words, listing, most, reach);
  for (Heading& heading : index_.find(words, listing, most - found.size())) {
    found.push_back(std::move(heading));
  }
  return found.empty() ? find_as_written(text, listing, most, reach) : found;
}

/// The newest records that the index does not know, those with the words in their titles first.
std::vector<Heading> RecordSearch::read(const SearchWords& words, const Listing& listing,
                                        std::size_t most, std::size_t reach) {
  std::vector<Heading> by_title;
  std::vector<Heading> others;
  if (words.empty()) return by_title;
  const bool has_index = index_.exists();
  Statement record =
      records_of(database_, listing, has_index ? " AND id IN (SELECT record FROM unindexed)" : "");
  constexpr std::size_t effort = 4;  // that words are, compared with text as it is written
  std::size_t read = 0;
  while (by_title.size() < most && (!has_index || read < reach / effort) && record.step()) {
    const Texts texts = {visible_text(record.text(4)), visible_text(record.text(5))};
    read += texts.title.size() + texts.body.size();
    if (!words.are_in(texts.title, texts.body)) continue;
    const bool is_titled_so = words.are_in(texts.title, {});
    if (!is_titled_so && others.size() == most) continue;
    (is_titled_so ? by_title : others)
        .push_back(found_in(record, texts,
                            [&](std::u16string_view text) { return words.parts_in(text); }));
  }
  std::move(others.begin(), others.end(), std::back_inserter(by_title));
  if (by_title.size() > most) by_title.resize(most);
  return by_title;
}

std::vector<Heading> RecordSearch::find_as_written(std::u16string_view text, const Listing& listing,
                                                   std::size_t most, std::size_t reach) const {
  const std::u16string wanted = to_lower(text);
  const auto parts_in = [&wanted](std::u16string_view in) {
    const std::size_t at = find_text(to_lower(in), wanted);
    return at == std::u16string::npos || wanted.empty() ? std::vector<Part>()
                                                        : std::vector<Part>{{at, wanted.size()}};
  };
  std::vector<Heading> headings;
  Statement record = records_of(database_, listing, "");
  for (std::size_t read = 0; headings.size() < most && read < reach && record.step();) {
    const Texts texts = {visible_text(record.text(4)), visible_text(record.text(5))};
    read += texts.title.size() + texts.body.size();
    const bool is_found =
        wanted.empty() || !parts_in(texts.body).empty() || !parts_in(texts.title).empty();
    if (is_found) headings.push_back(found_in(record, texts, parts_in));
  }
  return headings;
}

}  // namespace qel::forms
