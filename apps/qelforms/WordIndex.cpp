#include "WordIndex.h"

#include <algorithm>
#include <string>

#include "Database.h"
#include "Markup.h"
#include "qel_sqlite.h"

namespace qel::forms {
namespace {

constexpr std::u16string_view blanks = u" \t\r\n\u00A0\u3000";

constexpr const char* create =
    "search USING fts5(title, body, tokenize = 'unicode61 remove_diacritics 2');";

constexpr const char* read_records =
    "INSERT INTO search(rowid, title, body) SELECT id, qel_plain(title), qel_plain(body) FROM "
    "records";

/// Each word in quotes: nothing in it is an operator then, and what is between its letters only
/// parts them. A word without a blank behind it is perhaps only begun.
std::u16string query_of(std::u16string_view text) {
  std::u16string query;
  bool is_within = false;
  for (const char16_t unit : text) {
    const bool is_blank = blanks.find(unit) != std::u16string_view::npos;
    if (is_blank == is_within) query.append(is_blank ? u"\" " : u"\"");
    is_within = !is_blank;
    if (is_within) query.append(unit == u'"' ? 2 : 1, unit);
  }
  return is_within ? query + u"\"*" : query;
}

std::u16string on_one_line(std::u16string text) {
  std::replace(text.begin(), text.end(), u'\n', u' ');
  return text;
}

}  // namespace

WordIndex::WordIndex(Database& database) : database_(database) {
  if (qel_sqlite_register(database.connection()) != 0) database.fail_after("open");
}

void WordIndex::catch_up() {
  if (database_.is_read_only()) {
    catch_up_in_memory();
  } else {
    catch_up_in_file();
  }
}

void WordIndex::catch_up_in_file() {
  // Another program may have dropped it.
  const bool has_index =
      Statement(database_, "SELECT 1 FROM sqlite_schema WHERE name = 'search'").step();
  if (has_index && !Statement(database_, "SELECT 1 FROM unindexed").step()) return;
  Transaction transaction(database_);
  if (!has_index) database_.execute("INSERT OR IGNORE INTO unindexed SELECT id FROM records");
  database_.execute(std::string("CREATE VIRTUAL TABLE IF NOT EXISTS ") + create +
                    "DELETE FROM search WHERE rowid IN (SELECT record FROM unindexed);" +
                    read_records + " WHERE id IN (SELECT record FROM unindexed);" +
                    "DELETE FROM unindexed;");
  transaction.commit();
}

void WordIndex::catch_up_in_memory() {
  Statement version(database_, "PRAGMA data_version");
  if (!version.step() || version.integer(0) == seen_) return;
  database_.execute(std::string("CREATE VIRTUAL TABLE IF NOT EXISTS temp.") + create +
                        "DELETE FROM temp.search;" + read_records + ";",
                    "read");
  seen_ = version.integer(0);
}

std::vector<Heading> WordIndex::find(std::u16string_view text, std::size_t most) {
  catch_up();
  std::vector<Heading> headings;
  const std::u16string query = query_of(text);
  if (query.empty() || !Statement(database_, "SELECT 1 FROM records").step()) return headings;
  // Words in titles count ten times as much.
  Statement found(database_,
                  "SELECT id, records.title, changed, snippet(search, 1, '', '', '\u2026', 12)"
                  " FROM search JOIN records ON id = search.rowid"
                  " WHERE search MATCH ? AND rank MATCH 'bm25(10.0, 1.0)' ORDER BY rank LIMIT ?",
                  query, static_cast<std::int64_t>(std::min<std::size_t>(most, INT64_MAX)));
  while (found.step()) {
    headings.push_back({found.integer(0), visible_text(found.text(1)), found.integer(2),
                        on_one_line(found.text(3))});
  }
  return headings;
}

}  // namespace qel::forms
