#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "qel/base/Error.h"

struct sqlite3;
struct sqlite3_stmt;

namespace qel::forms {

/// Numbers of the errors that a database raises; their descriptions name the file and the cause.
enum StoreError : std::uint32_t {
  store_failed = Error::component_base + 0x3001,
  not_a_database,     ///< another file, a damaged one, or a database of another program
  newer_version,      ///< written by a later version of this program
  locked,             ///< another program is writing to the file
  write_protected,    ///< the file can only be read
  disk_full,          ///< nothing was kept of what was to be written
  no_such_record,     ///< no record has that number
  changed_elsewhere,  ///< somebody else has saved the record since it was loaded
};

/// Milliseconds since 1970, UTC.
std::int64_t time_now();

/// A connection to an SQLite database in a file. What a transaction writes is on the disk once it
/// is committed; a process that ends before that leaves nothing of it.
class Database {
 public:
  /// `patience` is how long to wait while other programs write.
  Database(std::string path, bool creates, std::chrono::milliseconds patience);

  const std::string& path() const { return path_; }
  bool is_read_only() const;
  std::chrono::milliseconds patience() const { return patience_; }
  void put_patience(std::chrono::milliseconds patience);
  /// For what adds functions to it.
  sqlite3* connection() const { return connection_.get(); }
  /// Runs statements that return nothing; `verb` is what an error says could not be done.
  void execute(const std::string& statements, const char* verb = "write");
  /// How many rows the last statement changed.
  std::int64_t changed_rows() const;
  std::int64_t last_inserted() const;

  [[noreturn]] void fail(StoreError number, const std::string& verb,
                         const std::string& cause) const;
  /// Raises the error that the last call left.
  [[noreturn]] void fail_after(const std::string& verb) const;

 private:
  friend class Statement;
  friend class Transaction;
  struct Closer {
    void operator()(sqlite3* connection) const;
  };

  std::string path_;
  std::chrono::milliseconds patience_;
  std::unique_ptr<sqlite3, Closer> connection_;
};

/// One statement with the values of its question marks, in order.
class Statement {
 public:
  template <class... Values>
  Statement(const Database& database, std::string_view sql, const Values&... values)
      : Statement(database, sql, nullptr) {
    (bind(values), ...);
  }

  /// Moves to the next row; false when there is none.
  bool step();
  /// Runs a statement that returns no rows.
  void run() {
    while (step()) {
    }
  }

  /// Begins anew with these values.
  template <class... Values>
  void begin_with(const Values&... values) {
    reset();
    (bind(values), ...);
  }

  /// A column of the row, from 0.
  std::int64_t integer(int column) const;
  std::u16string text(int column) const;
  /// The same in UTF-8, valid until the next step.
  std::string_view bytes(int column) const;

 private:
  Statement(const Database& database, std::string_view sql, std::nullptr_t);
  void bind(std::int64_t value);
  void bind(const std::u16string& value);
  void reset();
  void check(int result) const;

  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const;
  };

  const Database& database_;
  std::unique_ptr<sqlite3_stmt, Finalizer> statement_;
  int bound_ = 0;
};

/// A transaction: everything that is written while it lives is kept when it is committed, and
/// nothing otherwise. A transaction within another is part of the outer one.
class Transaction {
 public:
  explicit Transaction(Database& database);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  void commit();

 private:
  Database& database_;
  bool is_open_;
};

}  // namespace qel::forms
