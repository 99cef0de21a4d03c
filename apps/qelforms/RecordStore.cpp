#include "RecordStore.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "Headings.h"
#include "RecordSearch.h"
#include "Schema.h"

namespace qel::forms {
RecordStore::RecordStore(std::string path, const Options& options)
    : database_(std::move(path), options.creates, options.patience),
      reach_(options.reach),
      most_indexed_(options.most_indexed),
      headings_(std::make_unique<Headings>(database_)),
      search_(std::make_unique<RecordSearch>(database_)) {
  if (options.most_pages > 0) {
    database_.execute("PRAGMA max_page_count = " + std::to_string(options.most_pages));
  }
  open_schema(database_, options.creates);
  try_to_catch_up(0);
}

RecordStore::~RecordStore() = default;

std::int64_t RecordStore::state_of_others() const {
  Statement version(database_, "PRAGMA data_version");
  return version.step() ? version.integer(0) : 0;
}

void RecordStore::together(const std::function<void()>& work) {
  Transaction transaction(database_);
  work();
  transaction.commit();
}

/// A change of this many records brings the index up to date unless it is far behind.
void RecordStore::catch_up(std::size_t records) {
  constexpr std::size_t some = 1000;
  headings_->catch_up();
  search_->catch_up(records + some);
}

/// Returns whether nothing prevents it.
bool RecordStore::try_to_catch_up(std::size_t most) {
  const bool is_behind = headings_->is_behind() || (most > 0 && search_->is_behind());
  if (is_read_only() || !is_behind) return true;
  const std::chrono::milliseconds patience = database_.patience();
  database_.put_patience(std::chrono::milliseconds(0));
  std::optional<Error> error;
  try {
    together([&] {
      headings_->catch_up();
      if (most > 0) search_->catch_up(most);
    });
  } catch (const Error& raised) {
    error = raised;
  }
  database_.put_patience(patience);
  // What cannot be written now is looked for without the index.
  if (error && error->number() == not_a_database) throw Error(*error);
  return !error;
}

RecordStore::Indexing RecordStore::index_more(std::size_t most) {
  if (!try_to_catch_up(most)) return Indexing::held_up;
  return is_read_only() || !search_->is_behind() ? Indexing::done : Indexing::more;
}

std::vector<Heading> RecordStore::list(const Listing& listing) const {
  return headings_->list(listing);
}

std::vector<Heading> RecordStore::find(std::u16string_view text, const Listing& listing,
                                       std::size_t most) {
  try_to_catch_up(most_indexed_);
  std::vector<Heading> found = search_->find(text, listing, most, reach_);
  headings_->add_tags(found);
  return found;
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
    catch_up(saved.size());
  });
  std::move(saved.begin(), saved.end(), records.begin());
}

void RecordStore::write(Record& record) {
  record.changed = time_now();
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
  Statement(database_, "DELETE FROM trash WHERE record = ?", record.id).run();
  ++record.revision;
}

void RecordStore::refuse_stale(const Record& record) const {
  load(record.id);
  database_.fail(changed_elsewhere, "write",
                 "record " + std::to_string(record.id) + " was saved by somebody else meanwhile");
}

void RecordStore::keep_draft(Draft& draft) {
  const std::int64_t time = time_now();
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
