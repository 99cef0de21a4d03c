#include "Database.h"

#include <sqlite3.h>

#include <system_error>
#include <utility>

#include "qel/base/Utf8.h"
#include "qel/richtext/CodePage.h"

namespace qel::forms {
namespace {

/// SQLite treats some names specially, but not after the name of a folder.
std::string as_file(const std::string& path) { return path.starts_with('/') ? path : "./" + path; }

StoreError number_of(int result) {
  switch (result & 0xFF) {
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
      return not_a_database;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return locked;
    case SQLITE_READONLY:
      return write_protected;
    case SQLITE_FULL:
      return disk_full;
    default:
      return store_failed;
  }
}

std::string cause_of(sqlite3* connection) {
  switch (number_of(sqlite3_errcode(connection))) {
    case locked:
      return "another program is using it";
    case write_protected:
      return "it is protected against writing";
    case disk_full:
      return "the disk is full";
    default:
      break;
  }
  const int result = sqlite3_errcode(connection) & 0xFF;
  int error = sqlite3_system_errno(connection);
  // What a commit fails with is kept with the file only.
  if (error == 0) sqlite3_file_control(connection, "main", SQLITE_FCNTL_LAST_ERRNO, &error);
  const bool is_of_system = error != 0 && (result == SQLITE_CANTOPEN || result == SQLITE_IOERR);
  return is_of_system ? std::generic_category().message(error) : sqlite3_errmsg(connection);
}

}  // namespace

std::int64_t time_now() {
  const auto time = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(time).count();
}

void Database::Closer::operator()(sqlite3* connection) const { sqlite3_close_v2(connection); }

Database::Database(std::string path, bool creates, std::chrono::milliseconds patience)
    : path_(std::move(path)), patience_(patience) {
  sqlite3* connection = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | (creates ? SQLITE_OPEN_CREATE : 0);
  const int result = sqlite3_open_v2(as_file(path_).c_str(), &connection, flags, nullptr);
  connection_.reset(connection);
  if (connection == nullptr) fail(store_failed, "open", "out of memory");
  if (result != SQLITE_OK) fail_after("open");
  sqlite3_extended_result_codes(connection, 1);
  put_patience(patience);
  // EXTRA also syncs the folder once the journal is gone: without that, a power failure could bring
  // the journal back and undo what was reported as saved.
  execute("PRAGMA synchronous = EXTRA; PRAGMA trusted_schema = OFF;", "open");
}

bool Database::is_read_only() const { return sqlite3_db_readonly(connection_.get(), "main") == 1; }

void Database::put_patience(std::chrono::milliseconds patience) {
  patience_ = patience;
  sqlite3_busy_timeout(connection_.get(), static_cast<int>(patience.count()));
}

void Database::execute(const std::string& statements, const char* verb) {
  const int result = sqlite3_exec(connection_.get(), statements.c_str(), nullptr, nullptr, nullptr);
  if (result != SQLITE_OK) fail_after(verb);
}

std::int64_t Database::changed_rows() const { return sqlite3_changes64(connection_.get()); }

std::int64_t Database::last_inserted() const {
  return sqlite3_last_insert_rowid(connection_.get());
}

void Database::fail(StoreError number, const std::string& verb, const std::string& cause) const {
  throw Error(number, "RecordStore", "cannot " + verb + " " + path_ + ": " + cause);
}

void Database::fail_after(const std::string& verb) const {
  fail(number_of(sqlite3_errcode(connection_.get())), verb, cause_of(connection_.get()));
}

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

Statement::Statement(const Database& database, std::string_view sql, std::nullptr_t)
    : database_(database) {
  sqlite3_stmt* statement = nullptr;
  const int result = sqlite3_prepare_v2(database.connection_.get(), sql.data(),
                                        static_cast<int>(sql.size()), &statement, nullptr);
  statement_.reset(statement);
  check(result);
}

void Statement::check(int result) const {
  if (result == SQLITE_OK || result == SQLITE_ROW || result == SQLITE_DONE) return;
  const bool reads = !statement_ || sqlite3_stmt_readonly(statement_.get()) != 0;
  database_.fail_after(reads ? "read" : "write");
}

void Statement::reset() {
  sqlite3_reset(statement_.get());
  bound_ = 0;
}

void Statement::bind(std::int64_t value) {
  check(sqlite3_bind_int64(statement_.get(), ++bound_, value));
}

void Statement::bind(const std::u16string& value) {
  const std::string bytes = to_utf8(value);
  check(sqlite3_bind_text64(statement_.get(), ++bound_, bytes.data(), bytes.size(),
                            SQLITE_TRANSIENT, SQLITE_UTF8));
}

bool Statement::step() {
  const int result = sqlite3_step(statement_.get());
  check(result);
  return result == SQLITE_ROW;
}

std::int64_t Statement::integer(int column) const {
  return sqlite3_column_int64(statement_.get(), column);
}

std::u16string Statement::text(int column) const {
  return from_utf8(bytes(column), richtext::decode_western);
}

std::string_view Statement::bytes(int column) const {
  // The size is that of the representation that was asked for last.
  const auto* const blob = static_cast<const char*>(sqlite3_column_blob(statement_.get(), column));
  const int size = sqlite3_column_bytes(statement_.get(), column);
  if (blob == nullptr) return {};
  return {blob, static_cast<std::size_t>(size)};
}

Transaction::Transaction(Database& database)
    : database_(database), is_open_(sqlite3_get_autocommit(database.connection_.get()) != 0) {
  if (is_open_) database_.execute("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  // A disk error may have ended it already.
  sqlite3* const connection = database_.connection_.get();
  if (!is_open_ || sqlite3_get_autocommit(connection) != 0) return;
  sqlite3_exec(connection, "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::commit() {
  if (!is_open_) return;
  database_.execute("COMMIT");
  is_open_ = false;
}

}  // namespace qel::forms
