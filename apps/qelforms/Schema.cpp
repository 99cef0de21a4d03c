#include "Schema.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "Database.h"

namespace qel::forms {
namespace {

constexpr std::int64_t application_id = 0x51454C46;

constexpr const char* records_and_drafts = R"(
  CREATE TABLE records(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    title TEXT NOT NULL,
    body TEXT NOT NULL,
    visible_title TEXT NOT NULL,
    searched TEXT NOT NULL,  -- the visible text of both in lower case
    created INTEGER NOT NULL,
    changed INTEGER NOT NULL,
    revision INTEGER NOT NULL);
  CREATE TABLE drafts(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    record INTEGER NOT NULL,
    revision INTEGER NOT NULL,
    title TEXT NOT NULL,
    body TEXT NOT NULL,
    kept INTEGER NOT NULL);
  CREATE TABLE tables(
    name TEXT PRIMARY KEY,
    record TEXT NOT NULL);)";

constexpr const char* index_of_words = R"(
  ALTER TABLE records DROP COLUMN visible_title;
  ALTER TABLE records DROP COLUMN searched;
  -- The records that have changed since the index of words was written. The triggers call no
  -- function, so that they work in every program.
  CREATE TABLE unindexed(record INTEGER PRIMARY KEY);
  INSERT INTO unindexed SELECT id FROM records;
  CREATE TRIGGER record_added AFTER INSERT ON records BEGIN
    INSERT INTO unindexed VALUES(new.id) ON CONFLICT DO NOTHING;
  END;
  CREATE TRIGGER record_changed AFTER UPDATE ON records BEGIN
    INSERT INTO unindexed VALUES(old.id) ON CONFLICT DO NOTHING;
    INSERT INTO unindexed VALUES(new.id) ON CONFLICT DO NOTHING;
  END;
  CREATE TRIGGER record_removed AFTER DELETE ON records BEGIN
    INSERT INTO unindexed VALUES(old.id) ON CONFLICT DO NOTHING;
  END;)";

constexpr const char* tables_beside_records = R"(
  CREATE TABLE trash(
    record INTEGER PRIMARY KEY,
    since INTEGER NOT NULL);
  CREATE TABLE tags(
    record INTEGER NOT NULL,
    key TEXT NOT NULL,  -- in lower case
    name TEXT NOT NULL,
    PRIMARY KEY(record, key)) WITHOUT ROWID;
  -- What lists show of the records.
  CREATE TABLE headings(
    record INTEGER PRIMARY KEY,
    title TEXT NOT NULL,
    key TEXT NOT NULL,  -- in lower case, without accents
    untitled INTEGER NOT NULL,
    changed INTEGER NOT NULL,
    created INTEGER NOT NULL);)";

constexpr const char* notes_of_changes = R"(
  CREATE INDEX tags_by_key ON tags(key);
  -- The records that have changed since their headings were written. A program without an index of
  -- words brings only these up to date.
  CREATE TABLE unlisted(record INTEGER PRIMARY KEY);
  INSERT INTO unlisted SELECT id FROM records;
  CREATE TRIGGER heading_added AFTER INSERT ON records BEGIN
    INSERT INTO unlisted VALUES(new.id) ON CONFLICT DO NOTHING;
  END;
  CREATE TRIGGER heading_changed AFTER UPDATE ON records BEGIN
    INSERT INTO unlisted VALUES(old.id) ON CONFLICT DO NOTHING;
    INSERT INTO unlisted VALUES(new.id) ON CONFLICT DO NOTHING;
  END;
  CREATE TRIGGER heading_removed AFTER DELETE ON records BEGIN
    INSERT INTO unlisted VALUES(old.id) ON CONFLICT DO NOTHING;
    DELETE FROM trash WHERE record = old.id;
    DELETE FROM tags WHERE record = old.id;
  END;
  -- The index of words has a new form.
  INSERT INTO unindexed SELECT id FROM records WHERE true ON CONFLICT DO NOTHING;)";

/// Each step brings a file from the version that is its index to the next.
const std::array<std::string, 3> steps = {records_and_drafts, index_of_words,
                                          std::string(tables_beside_records) + notes_of_changes};

constexpr std::int64_t newest_version = 3;

bool is_empty(const Database& database) {
  Statement query(database, "SELECT count(*) FROM sqlite_schema");
  return query.step() && query.integer(0) == 0;
}

std::int64_t version_of(const Database& database) {
  Statement id(database, "PRAGMA application_id");
  if (!id.step() || id.integer(0) != application_id) {
    database.fail(not_a_database, "open", "it is not a database of records");
  }
  Statement query(database, "PRAGMA user_version");
  return query.step() ? query.integer(0) : 0;
}

void bring_up_to_date(Database& database) {
  Transaction transaction(database);
  // Another program may have done this in the meantime.
  const std::int64_t found = is_empty(database) ? 0 : version_of(database);
  for (auto step = static_cast<std::size_t>(found); step < steps.size(); ++step) {
    database.execute(steps[step]);
  }
  database.execute("PRAGMA application_id = " + std::to_string(application_id) +
                   "; PRAGMA user_version = " + std::to_string(newest_version));
  transaction.commit();
}

/// Tables of the connection stand before those of the file.
void add_what_lacks(Database& database) {
  std::string tables = tables_beside_records;
  constexpr std::string_view create = "CREATE TABLE ";
  for (std::size_t at = tables.find(create); at != std::string::npos;
       at = tables.find(create, at + create.size())) {
    tables.insert(at + create.size(), "temp.");
  }
  tables.append(
      "CREATE TEMP VIEW unlisted AS SELECT id AS record FROM main.records;"
      "CREATE TEMP VIEW unindexed AS SELECT id AS record FROM main.records;");
  database.execute(tables, "read");
}

}  // namespace

void open_schema(Database& database, bool creates) {
  if (creates && is_empty(database)) bring_up_to_date(database);
  const std::int64_t found = version_of(database);
  if (found > newest_version) {
    database.fail(newer_version, "open",
                  "a later version of the program has written it (" + std::to_string(found) +
                      ", known up to " + std::to_string(newest_version) + ")");
  }
  if (found == newest_version) return;
  if (database.is_read_only()) {
    add_what_lacks(database);
  } else {
    bring_up_to_date(database);
  }
}

}  // namespace qel::forms
