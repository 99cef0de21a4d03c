#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Database.h"

namespace qel::forms {

/// A record of the form. Texts are markup; times are milliseconds since 1970, UTC.
struct Record {
  std::int64_t id = 0;  ///< 0 for one that was never saved; never used twice
  std::u16string title;
  std::u16string body;
  std::int64_t created = 0;
  std::int64_t changed = 0;
  std::int64_t revision = 0;  ///< how often it was saved
};

/// What a list shows of a record.
struct Heading {
  std::int64_t id = 0;
  std::u16string title;  ///< visible text, on one line
  std::int64_t changed = 0;
};

/// Unsaved work on a record.
struct Draft {
  enum class Basis {
    current,   ///< newer than the record
    outdated,  ///< somebody saved the record since
    removed,   ///< the record is gone
  };

  std::int64_t id = 0;         ///< 0 for one that was never kept
  std::int64_t record_id = 0;  ///< 0 for a record that was never saved
  std::int64_t revision = 0;   ///< of the record that the work began with
  std::u16string title;
  std::u16string body;
  std::int64_t kept = 0;         ///< when, as the times of a record
  Basis basis = Basis::current;  ///< when it was read
};

/// The records of a host form in a database file, with the drafts of unsaved work and the records
/// of the form's tables. Several programs may use one file at a time.
///
/// Every change is a transaction: whatever interrupts it, the file holds what it held before or all
/// of the change, and what a member has returned from stays. Errors are `Error`s with the numbers
/// of `StoreError`; after one, nothing of the change was made.
class RecordStore {
 public:
  struct Options {
    bool creates = false;                      ///< the file, where there is none
    std::chrono::milliseconds patience{5000};  ///< how long to wait for other programs
    std::int64_t most_pages = 0;  ///< of 4096 bytes, that the file may grow to; 0 for no limit
  };

  explicit RecordStore(std::string path) : RecordStore(std::move(path), Options()) {}
  /// Brings a file of an earlier version up to date. One that cannot be written to can be read.
  RecordStore(std::string path, const Options& options);

  const std::string& path() const { return database_.path(); }
  bool is_read_only() const { return database_.is_read_only(); }

  /// Does the work in one transaction.
  void together(const std::function<void()>& work);

  // Records.

  /// All of them, the oldest first.
  std::vector<Heading> list() const;
  /// Those whose visible title or body holds the text, whatever its case. All characters stand for
  /// themselves; an empty text is in every record.
  std::vector<Heading> find(std::u16string_view text) const;
  Record load(std::int64_t id) const;
  /// Saves them together: adds those without a number and replaces the others, and brings numbers,
  /// times and revisions up to date. Raises `changed_elsewhere` rather than undo the work of
  /// others.
  void save(std::span<Record> records);
  void save(Record& record) { save({&record, 1}); }
  /// Removes them together, with their drafts.
  void remove(std::span<const std::int64_t> ids);

  // Drafts.

  /// Keeps it under its number, a new one where it has none. Saving a record keeps its drafts.
  void keep_draft(Draft& draft);
  /// Those that were neither saved nor given up, the oldest first: after a crash, what to offer.
  std::vector<Draft> drafts() const;
  void drop_draft(std::int64_t id);

  // The form's tables, as texts under a name; empty when there is none.

  std::u16string table(std::u16string_view name) const;
  void put_table(std::u16string_view name, std::u16string_view record);

  /// Raises an error when the file is damaged.
  void check() const;

 private:
  bool is_empty() const;
  std::int64_t version() const;
  void bring_up_to_date();
  void write(Record& record);
  void refuse_stale(const Record& record) const;

  Database database_;
};

}  // namespace qel::forms
