#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Database.h"
#include "Heading.h"

namespace qel::forms {

class Headings;
class RecordSearch;

/// A record of the form. Texts are markup; times are milliseconds since 1970, UTC.
struct Record {
  std::int64_t id = 0;  ///< 0 for a record that was never saved; never reused
  std::u16string title;
  std::u16string body;
  std::int64_t created = 0;
  std::int64_t changed = 0;
  std::int64_t revision = 0;  ///< how often it was saved
};

/// What the headings of a list are in order of.
enum class Order { changed, created, title };

/// Which records a list has, in which order.
struct Listing {
  Order order = Order::created;
  bool ascending = true;
  std::u16string tag = {};  ///< only records with this tag, whatever its case; all when empty
  bool trash = false;       ///< those in the trash instead of the others
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
    /// About how many characters, of the newest records, a search looks through for text as it is
    /// written where no record has the words.
    std::size_t reach = 4'000'000;
    /// By how many records a search brings the index up to date first. What the index does not know
    /// then is looked through, of the newest about a quarter as many characters as `reach`.
    std::size_t most_indexed = std::numeric_limits<std::size_t>::max();
  };

  enum class Indexing {
    done,     ///< the index knows all records
    more,     ///< there is more to do
    held_up,  ///< nothing could be written now
  };

  explicit RecordStore(std::string path) : RecordStore(std::move(path), Options()) {}
  /// Opens the file, and brings one of an earlier version up to date. A write-protected file can be
  /// read.
  RecordStore(std::string path, const Options& options);
  RecordStore(const RecordStore&) = delete;
  RecordStore& operator=(const RecordStore&) = delete;
  ~RecordStore();

  const std::string& path() const { return database_.path(); }
  bool is_read_only() const { return database_.is_read_only(); }

  /// Does all of the work in one transaction.
  void together(const std::function<void()>& work);

  /// How long members wait for other programs from now on. With none, they raise `locked` at once.
  void put_patience(std::chrono::milliseconds patience) { database_.put_patience(patience); }
  /// A number that changes when another program has written to the file.
  std::int64_t state_of_others() const;

  // Records.

  /// The headings of what the listing tells, in its order.
  std::vector<Heading> list(const Listing& listing = {}) const;
  /// The records with all words of the text, in any order, in their visible title or body, whatever
  /// their case and accents. The last word may be the beginning of one, unless a blank follows it.
  /// The best come first: those where the words stand often in short texts, ten times as much in
  /// titles; where more than a thousand are found, those with the words in their titles, then the
  /// newest. Where there are none, the records that hold the text as it is written, within words,
  /// too, the newest first; every record holds an empty text. Only what the listing tells, whose
  /// order does not count, and no more than `most`. Never waits to bring the index up to date: what
  /// it does not know is looked through.
  std::vector<Heading> find(std::u16string_view text, const Listing& listing = {},
                            std::size_t most = std::numeric_limits<std::size_t>::max());
  /// Brings the index of words up to date by no more records than `most`, for idle time, so that
  /// the first search in a file of an earlier version or one that another program has written need
  /// not: a thousand take about 0.1 s. Never waits.
  Indexing index_more(std::size_t most);
  /// A record in the trash can be loaded, too.
  Record load(std::int64_t id) const;
  /// Saves the records together: adds those without a number, replaces the others, and updates
  /// numbers, times and revisions. What is saved leaves the trash. Raises `changed_elsewhere`
  /// rather than overwrite the work of others.
  void save(std::span<Record> records);
  void save(Record& record) { save({&record, 1}); }
  /// Adds records with the same texts and tags, as new ones; returns their numbers in the same
  /// order.
  std::vector<std::int64_t> duplicate(std::span<const std::int64_t> ids);

  // The trash. All of these work on all of the records or on none.

  /// Moves the records there, with their drafts; those that are there stay.
  void move_to_trash(std::span<const std::int64_t> ids);
  void restore(std::span<const std::int64_t> ids);
  /// Removes the records for good, wherever they are, with their drafts and tags.
  void remove(std::span<const std::int64_t> ids);
  /// Removes what is in the trash for good; returns how many records that were.
  std::size_t empty_trash();

  // Tags: visible texts, the same whatever their case.

  /// Those of the record, in the order of the alphabet.
  std::vector<std::u16string> tags(std::int64_t id) const;
  /// Gives the record these tags and no others. Blanks around them and empty ones are dropped; a
  /// tag that another record has is written as there. The record counts as unchanged.
  void put_tags(std::int64_t id, std::span<const std::u16string> tags);
  /// The tags of all records that are not in the trash, in the order of the alphabet.
  std::vector<std::u16string> all_tags() const;

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
  void catch_up(std::size_t records);
  bool try_to_catch_up(std::size_t most);
  void write(Record& record);
  void refuse_stale(const Record& record) const;
  void require(std::int64_t id) const;

  Database database_;
  std::size_t reach_;
  std::size_t most_indexed_;
  std::unique_ptr<Headings> headings_;
  std::unique_ptr<RecordSearch> search_;
};

}  // namespace qel::forms
