#include "RecordStore.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Markup.h"
#include "qel/base/CaseMapping.h"
#include "qel/base/Search.h"

namespace qel::forms {
namespace {

constexpr std::int64_t application_id = 0x51454C46;

/// Each step brings a file from the version that is its index to the next.
constexpr std::array<const char*, 2> schema_steps = {R"(
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
    record TEXT NOT NULL);)",
                                                     R"(
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
  END;)"};

constexpr auto newest_version = static_cast<std::int64_t>(schema_steps.size());

std::int64_t now() {
  const auto time = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

/// Whether a visible text holds the text in lower case.
bool holds(std::u16string_view visible, std::u16string_view wanted) {
  return find_text(to_lower(visible), wanted) != std::u16string_view::npos;
}

}  // namespace

RecordStore::RecordStore(std::string path, const Options& options)
    : database_(std::move(path), options.creates, options.patience), words_(database_) {
  if (options.most_pages > 0) {
    database_.execute("PRAGMA max_page_count = " + std::to_string(options.most_pages));
  }
  if (options.creates && is_empty()) bring_up_to_date();
  const std::int64_t found = version();
  if (found > newest_version) {
    database_.fail(newer_version, "open",
                   "a later version of the program has written it (" + std::to_string(found) +
                       ", known up to " + std::to_string(newest_version) + ")");
  }
  if (found < newest_version && !is_read_only()) bring_up_to_date();
}

bool RecordStore::is_empty() const {
  Statement query(database_, "SELECT count(*) FROM sqlite_schema");
  return query.step() && query.integer(0) == 0;
}

std::int64_t RecordStore::version() const {
  Statement id(database_, "PRAGMA application_id");
  if (!id.step() || id.integer(0) != application_id) {
    database_.fail(not_a_database, "open", "it is not a database of records");
  }
  Statement query(database_, "PRAGMA user_version");
  return query.step() ? query.integer(0) : 0;
}

void RecordStore::bring_up_to_date() {
  Transaction transaction(database_);
  // Another program may have done this in the meantime.
  const std::int64_t found = is_empty() ? 0 : version();
  for (auto step = static_cast<std::size_t>(found); step < schema_steps.size(); ++step) {
    database_.execute(schema_steps[step]);
  }
  database_.execute("PRAGMA application_id = " + std::to_string(application_id) +
                    "; PRAGMA user_version = " + std::to_string(newest_version));
  transaction.commit();
}

void RecordStore::together(const std::function<void()>& work) {
  Transaction transaction(database_);
  work();
  transaction.commit();
}

std::vector<Heading> RecordStore::list() const {
  std::vector<Heading> headings;
  Statement query(database_, "SELECT id, title, changed FROM records ORDER BY id");
  while (query.step()) {
    headings.push_back({query.integer(0), visible_text(query.text(1)), query.integer(2), {}});
  }
  return headings;
}

std::vector<Heading> RecordStore::find(std::u16string_view text, std::size_t most) {
  std::vector<Heading> found = words_.find(text, most);
  return found.empty() ? find_anywhere(text, most) : found;
}

std::vector<Heading> RecordStore::find_anywhere(std::u16string_view text, std::size_t most) const {
  const std::u16string wanted = to_lower(text);
  std::vector<Heading> headings;
  Statement query(database_, "SELECT id, title, changed, body FROM records ORDER BY id");
  while (headings.size() < most && query.step()) {
    std::u16string title = visible_text(query.text(1));
    if (!holds(title, wanted) && !holds(visible_text(query.text(3)), wanted)) continue;
    headings.push_back({query.integer(0), std::move(title), query.integer(2), {}});
  }
  return headings;
}

Record RecordStore::load(std::int64_t id) const {
  Statement query(database_,
                  "SELECT title, body, created, changed, revision FROM records WHERE id = ?", id);
  if (!query.step()) {
    database_.fail(no_such_record, "read", "there is no record " + std::to_string(id));
  }
  return {id, query.text(0), query.text(1), query.integer(2), query.integer(3), query.integer(4)};
}

void RecordStore::save(std::span<Record> records) {
  std::vector<Record> saved(records.begin(), records.end());
  together([&] {
    for (Record& record : saved) write(record);
    words_.catch_up();
  });
  std::move(saved.begin(), saved.end(), records.begin());
}

void RecordStore::write(Record& record) {
  record.changed = now();
  if (record.id == 0) {
    record.created = record.changed;
    record.revision = 1;
    Statement(database_,
              "INSERT INTO records(title, body, created, changed, revision) VALUES(?, ?, ?, ?, 1)",
              record.title, record.body, record.created, record.changed)
        .run();
    record.id = database_.last_inserted();
    return;
  }
  Statement(database_,
            "UPDATE records SET title = ?, body = ?, changed = ?, revision = revision + 1"
            " WHERE id = ? AND revision = ?",
            record.title, record.body, record.changed, record.id, record.revision)
      .run();
  if (database_.changed_rows() == 0) refuse_stale(record);
  ++record.revision;
}

void RecordStore::refuse_stale(const Record& record) const {
  load(record.id);
  database_.fail(changed_elsewhere, "write",
                 "record " + std::to_string(record.id) + " was saved by somebody else meanwhile");
}

void RecordStore::remove(std::span<const std::int64_t> ids) {
  together([&] {
    for (const std::int64_t id : ids) {
      load(id);
      Statement(database_, "DELETE FROM records WHERE id = ?", id).run();
      Statement(database_, "DELETE FROM drafts WHERE record = ?", id).run();
    }
    words_.catch_up();
  });
}

void RecordStore::keep_draft(Draft& draft) {
  const std::int64_t time = now();
  // A null for the number asks for a new one.
  Statement(database_,
            "INSERT OR REPLACE INTO drafts(id, record, revision, title, body, kept)"
            " VALUES(nullif(?, 0), ?, ?, ?, ?, ?)",
            draft.id, draft.record_id, draft.revision, draft.title, draft.body, time)
      .run();
  draft.id = database_.last_inserted();
  draft.kept = time;
}

std::vector<Draft> RecordStore::drafts() const {
  std::vector<Draft> drafts;
  Statement query(database_,
                  "SELECT drafts.id, record, drafts.revision, drafts.title, drafts.body, kept,"
                  " records.id, records.revision FROM drafts"
                  " LEFT JOIN records ON records.id = record ORDER BY kept, drafts.id");
  while (query.step()) {
    drafts.push_back({query.integer(0), query.integer(1), query.integer(2), query.text(3),
                      query.text(4), query.integer(5)});
    Draft& draft = drafts.back();
    if (draft.record_id == 0) continue;
    if (query.integer(6) == 0) {
      draft.basis = Draft::Basis::removed;
    } else if (query.integer(7) != draft.revision) {
      draft.basis = Draft::Basis::outdated;
    }
  }
  return drafts;
}

void RecordStore::drop_draft(std::int64_t id) {
  Statement(database_, "DELETE FROM drafts WHERE id = ?", id).run();
}

std::u16string RecordStore::table(std::u16string_view name) const {
  Statement query(database_, "SELECT record FROM tables WHERE name = ?", std::u16string(name));
  return query.step() ? query.text(0) : std::u16string();
}

void RecordStore::put_table(std::u16string_view name, std::u16string_view record) {
  Statement(database_, "INSERT OR REPLACE INTO tables(name, record) VALUES(?, ?)",
            std::u16string(name), std::u16string(record))
      .run();
}

void RecordStore::check() const {
  Statement query(database_, "PRAGMA integrity_check(1)");
  const std::u16string answer = query.step() ? query.text(0) : std::u16string();
  if (answer != u"ok") database_.fail(not_a_database, "read", "it is damaged");
}

}  // namespace qel::forms
