#include "WordIndex.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <unordered_set>
#include <utility>

#include "Headings.h"
#include "qel_sqlite.h"

namespace qel::forms {
namespace {

/// A text of three letters or fewer is found without a look at all words that begin so.
constexpr const char* create =
    "CREATE VIRTUAL TABLE words USING fts5(title, body, prefix = '1 2 3',"
    " tokenize = 'unicode61 remove_diacritics 2');";

/// Weighing takes time for each record that is found, and for each with one of the words.
constexpr std::int64_t most_weighed = 1000;

std::int64_t as_limit(std::size_t most) {
  return static_cast<std::int64_t>(std::min<std::size_t>(most, INT64_MAX));
}

/// One search. The index comes first in the order of the joins, or each record would ask it.
class Hits {
 public:
  Hits(const Database& database, const SearchWords& words, const Listing& listing)
      : database_(database),
        words_(words),
        tag_(tag_key(listing.tag)),
        source_(
            " FROM words CROSS JOIN headings h ON h.record = words.rowid"
            " LEFT JOIN trash ON trash.record = words.rowid"
            " WHERE words MATCH ?2 AND " +
            // The sign keeps the index from being asked for each of the listed records.
            is_listed(listing, "+words.rowid") +
            " AND words.rowid NOT IN (SELECT record FROM unindexed)") {}

  bool are_many() const {
    Statement found(database_, "SELECT 1" + source_ + " ORDER BY words.rowid DESC LIMIT ?3", tag_,
                    words_.query(), most_weighed + 1);
    std::int64_t count = 0;
    while (found.step()) ++count;
    return count > most_weighed;
  }

  /// Words in titles count ten times as much.
  std::vector<Heading> best(std::size_t most) {
    add(words_.query(), " ORDER BY bm25(words, 10.0, 1.0)", most);
    return std::move(headings_);
  }

  std::vector<Heading> newest(std::size_t most) {
    add(u"{title} : (" + words_.query() + u")", " ORDER BY words.rowid DESC", most);
    add(words_.query(), " ORDER BY words.rowid DESC", most);
    return std::move(headings_);
  }

 private:
  void add(const std::u16string& query, const std::string& order, std::size_t most) {
    Statement found(database_,
                    "SELECT words.rowid, h.changed, h.created, since, h.title, h.untitled,"
                    " words.body" +
                        source_ + order + " LIMIT ?3",
                    tag_, query, as_limit(most));
    while (headings_.size() < most && found.step()) {
      if (!known_.insert(found.integer(0)).second) continue;
      Heading heading = heading_of(found, {found.text(4), found.integer(5) != 0});
      heading.found_in_title = words_.parts_in(heading.title);
      const std::u16string body = found.text(6);
      Snippet snippet = snippet_of(body, words_.parts_in(body));
      heading.snippet = std::move(snippet.text);
      heading.found = std::move(snippet.parts);
      headings_.push_back(std::move(heading));
    }
  }

  const Database& database_;
  const SearchWords& words_;
  std::u16string tag_;
  std::string source_;
  std::vector<Heading> headings_;
  std::unordered_set<std::int64_t> known_;
};

}  // namespace

WordIndex::WordIndex(Database& database) : database_(database) {
  if (qel_sqlite_register(database.connection()) != 0) database.fail_after("open");
}

bool WordIndex::exists() const {
  return Statement(database_, "SELECT 1 FROM sqlite_schema WHERE name = 'words'").step();
}

bool WordIndex::is_behind() const {
  return !exists() || Statement(database_, "SELECT 1 FROM unindexed").step();
}

void WordIndex::catch_up(std::size_t most) {
  if (!is_behind()) return;
  Transaction transaction(database_);
  // Another program may have dropped it, and earlier versions had one of another name.
  if (!exists()) {
    database_.execute(std::string("DROP TABLE IF EXISTS search;"
                                  "INSERT OR IGNORE INTO unindexed SELECT id FROM records;") +
                      create);
  }
  const std::string changed = "(SELECT record FROM unindexed ORDER BY record DESC LIMIT " +
                              std::to_string(as_limit(most)) + ")";
  database_.execute("DELETE FROM words WHERE rowid IN " + changed +
                    ";INSERT INTO words(rowid, title, body)"
                    " SELECT id, qel_plain(title), qel_plain(body) FROM records WHERE id IN " +
                    changed + ";DELETE FROM unindexed WHERE record IN " + changed);
  transaction.commit();
}

std::vector<Heading> WordIndex::find(const SearchWords& words, const Listing& listing,
                                     std::size_t most) {
  if (words.empty() || !exists()) return {};
  Hits hits(database_, words, listing);
  return hits.are_many() ? hits.newest(most) : hits.best(most);
}

}  // namespace qel::forms
