#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

/// What the programs need of the operating system; each system has sources of its own. Names of
/// files and texts for the terminal are UTF-8; on POSIX, they are the bytes that the system has.
namespace qel::command::system {

/// What tells a file from all others, whatever its names.
using Identity = std::pair<std::uint64_t, std::uint64_t>;

enum class Kind : std::uint8_t { none, file, folder, other };

struct Status {
  Kind kind = Kind::none;
  std::uint64_t size = 0;
  Identity identity;
  std::chrono::nanoseconds modified{};  ///< by the clock of the file system
};

/// Of the file that a name stands for, links followed; of the kind `none` where there is none.
Status status_of(const std::string& path);

/// Where a chain of symbolic links leads, whether or not the file exists.
std::string without_links(const std::string& path);

struct Entry {
  std::string name;
  Kind kind = Kind::none;
  bool is_link = false;
  bool is_hidden = false;
};

/// What a folder contains, itself and its parent left out.
std::vector<Entry> entries_of(const std::string& folder, std::error_code& error);
/// Creates the folder, and those it lies in.
std::error_code create_folders(const std::string& path);

/// The files with names that a pattern with "*" and "?" fits, on systems where the shell leaves
/// this to the programs; the pattern itself where there are none.
std::vector<std::string> files_matching(const std::string& pattern);
/// The name in a line, without what the system ends its lines with.
std::string_view name_in_line(std::string_view line);

/// Ends the waiting of other threads for input.
class Cancellation {
 public:
  Cancellation();
  Cancellation(const Cancellation&) = delete;
  Cancellation& operator=(const Cancellation&) = delete;
  ~Cancellation();

  void cancel() const;

 private:
  friend class File;

  std::pair<std::intptr_t, std::intptr_t> ends_;
};

/// An open file, which is closed at the end unless it is one of the process's own.
class File {
 public:
  File() = default;
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  File(File&& other) noexcept { *this = std::move(other); }
  File& operator=(File&& other) noexcept {
    std::swap(handle_, other.handle_);
    std::swap(is_own_, other.is_own_);
    std::swap(pending_, other.pending_);
    return *this;
  }
  ~File() { close(); }

  static File standard_input();
  static File standard_output();
  /// These set `error` where they give a file that is not open.
  static File open_to_read(const std::string& path, std::error_code& error);
  static File open_to_write(const std::string& path, std::error_code& error);
  /// Creates a file that is to replace `target`, and is in use until it is closed. It gets the
  /// permissions of the target, which must not be write-protected. Fails where `path` exists.
  static File create_replacement(const std::string& path, const std::string& target,
                                 std::error_code& error);

  bool is_open() const { return handle_ != none; }
  bool is_terminal() const;
  Status status() const;

  /// Reads up to `size` bytes, as many as are there; 0 at the end of the file.
  std::size_t read(char* bytes, std::size_t size, std::error_code& error);
  /// Waits until there is something to read, or the end. Returns false when it is cancelled.
  bool wait(const Cancellation& cancellation) const;
  /// Writes all of it. The error is `broken_pipe` when the reader of a pipe has gone.
  std::error_code write(std::string_view bytes);

  /// Lets the system begin to write to the disk, so that waiting for it later is short.
  void begin_write_back() const;
  /// Sets the time of the file and waits until it is safe on the disk.
  std::error_code make_safe(std::chrono::nanoseconds modified);
  std::error_code close();

 private:
  static constexpr std::intptr_t none = -1;

  File(std::intptr_t handle, bool is_own) : handle_(handle), is_own_(is_own) {}

  std::intptr_t handle_ = none;
  bool is_own_ = false;
  std::string pending_;  // a part of a character on the way from or to a terminal
};

/// Renames a file so that it takes the place of another, if there is one.
std::error_code replace(const std::string& path, const std::string& target);
void remove(const std::string& path);
/// Removes a file that another process created as a replacement, unless that may still be in use.
void remove_if_abandoned(const std::string& path);

unsigned long process_id();
/// How many files a process may have open.
std::size_t most_open_files();

/// Must be called at the beginning: from here on, a write that fails does not end the process.
void prepare_process();
/// Before an interrupt, a request to terminate or the like ends the process, `clean_up` is called,
/// in a thread of its own. Must be called before any thread is started.
void before_interruption(std::function<void()> clean_up);

/// The arguments of the program.
class Arguments {
 public:
  Arguments(int argc, char** argv);

  int count() const { return static_cast<int>(pointers_.size()); }
  const char* const* values() const { return pointers_.data(); }

 private:
  std::vector<std::string> words_;
  std::vector<const char*> pointers_;
};

bool is_output_terminal();
/// Whether standard error goes to a terminal on which a line can be written again.
bool can_rewrite_errors();
void write_error(std::string_view text);

}  // namespace qel::command::system
