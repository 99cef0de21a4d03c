#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Database.h"
#include "Heading.h"
#include "WordIndex.h"

namespace qel::forms {

/// A record of the form. Texts are markup; times are milliseconds since 1970, UTC.
struct Record {
  std::int64_t id = 0;  ///< 0 for a record that was never saved; never reused
  std::u16string title;
  std::u16string body;
  std::int64_t created = 0;
  std::int64_t changed = 0;
  std::int64_t revision = 0;  ///< how often it was saved
};

/// Unsaved work on a record.
struct Draft {
  enum class Basis {
    current,   ///< newer than the record
    outdated,  ///< somebody has saved the record since
    removed,   ///< the record is gone
  };

  std::int64_t id = 0;         ///< 0 for a draft that was never kept
  std::int64_t record_id = 0;  ///< 0 for work on a record that was never saved
  std::int64_t revision = 0;   ///< of the record when the work began
  std::u16string title;
  std::u16string body;
  std::int64_t kept = 0;         ///< when it was kept; a time as in `Record`
  Basis basis = Basis::current;  ///< at the time when the draft was read
};

/// The records of a form in a database file, with drafts of unsaved work and the form's tables.
/// Several programs may use one file at a time.
///
/// Every change is a transaction: whatever interrupts it, the file holds all of the change or
/// nothing of it, and once a member has returned, its change is permanent. Errors are `Error`s with
/// the numbers of `StoreError`; a change that raises one has not been made.
class RecordStore {
 public:
  struct Options {
    bool creates = false;                      ///< whether to create a missing file
    std::chrono::milliseconds patience{5000};  ///< how long to wait for other programs
    std::int64_t most_pages = 0;  ///< limit to the file's size, in pages of 4096 bytes; 0 for none
  };

  explicit RecordStore(std::string path) : RecordStore(std::move(path), Options()) {}
  /// Opens the file, and brings one of an earlier version up to date. A write-protected file can be
  /// read.
  RecordStore(std::string path, const Options& options);
  RecordStore(const RecordStore&) = delete;
  RecordStore& operator=(const RecordStore&) = delete;

  const std::string& path() const { return database_.path(); }
  bool is_read_only() const { return database_.is_read_only(); }

  /// Does all of the work in one transaction.
  void together(const std::function<void()>& work);

  // Records.

  /// All of them, the oldest first.
  std::vector<Heading> list() const;
  /// The records with all words of the text, in any order, in their visible title or body, whatever
  /// their case and accents. The last word may be the beginning of one, unless a blank follows it.
  /// The best come first. Where there are none, the records that hold the text as it is written,
  /// within words, too, the oldest first; every record holds an empty text. No more than `most`.
  std::vector<Heading> find(std::u16string_view text,
                            std::size_t most = std::numeric_limits<std::size_t>::max());
  Record load(std::int64_t id) const;
  /// Saves the records together: adds those without a number, replaces the others, and updates
  /// numbers, times and revisions. Raises `changed_elsewhere` rather than overwrite the work of
  /// others.
  void save(std::span<Record> records);
  void save(Record& record) { save({&record, 1}); }
  /// Removes the records together, with their drafts.
  void remove(std::span<const std::int64_t> ids);

  // Drafts.

  /// Keeps the draft under its number, or under a new one if it has none. Saving a record does not
  /// drop its drafts.
  void keep_draft(Draft& draft);
  /// The drafts that were neither saved nor given up, the oldest first: what to offer after a
  /// crash.
  std::vector<Draft> drafts() const;
  void drop_draft(std::int64_t id);

  // The form's tables as texts by name; empty when there is none.

  std::u16string table(std::u16string_view name) const;
  void put_table(std::u16string_view name, std::u16string_view record);

  /// Raises an error when the file is damaged.
  void check() const;

 private:
  bool is_empty() const;
  std::int64_t version() const;
  void bring_up_to_date();
  std::vector<Heading> find_anywhere(std::u16string_view text, std::size_t most) const;
  void write(Record& record);
  void refuse_stale(const Record& record) const;

  Database database_;
  WordIndex words_;
};

}  // namespace qel::forms
