#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "System.h"

/// Files as the programs read and write them. "-" is standard input or standard output.
namespace qel::command {

/// A file that cannot be read or written; the message names it and says why.
class FileError : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// The reader of a pipe wants no more. That is no failure of the program that writes.
class ReaderHasGone : public std::exception {};

std::string read_file(const std::string& path);

/// Whether two names, "-" for standard input and output, are those of one regular file.
bool is_same_file(const std::string& input, const std::string& output);
/// Raises a `FileError` where standard output goes to the file that is read, which it overwrites
/// or, where it is appended, makes longer without end.
void refuse_to_write_while_reading(const std::string& input, const std::string& output);

using system::Cancellation;

/// A file to read piece by piece.
class InputFile {
 public:
  explicit InputFile(const std::string& path);

  /// The size of a regular file; 0 for any other.
  std::size_t expected_size() const;
  /// Reads up to `size` bytes, as many as are there; 0 at the end of the file.
  std::size_t read_some(char* bytes, std::size_t size);
  /// Waits until there is something to read, or the end. Returns false when it is cancelled.
  bool wait(const Cancellation& cancellation) const { return file_.wait(cancellation); }

 private:
  std::string name_;
  system::File file_;
};

/// A file to write. Its content appears under its name only when it is complete: it is written to a
/// temporary file in the same folder, which is removed again on any failure. Devices, pipes and
/// standard output are written to directly.
///
/// A file that is replaced passes on its permissions; a symbolic link is followed. The time of the
/// file is that at which writing began, so that it is older than what changes meanwhile.
class OutputFile {
 public:
  explicit OutputFile(std::string path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  void write(std::string_view bytes);
  /// Must be called when everything is written. A terminal gets a line feed after a last line
  /// without one.
  void finish();

 private:
  friend class OutputGroup;

  void open_replacement(const std::string& target);
  void write_all(std::string_view bytes);
  /// The steps of `finish`.
  void end_last_line();
  void make_safe();
  void appear();
  /// Raises an error if there is one.
  void check(const std::error_code& error) const;

  std::string path_;
  std::size_t size_ = 0;
  std::string target_;     // what the temporary file replaces
  std::string temporary_;  // empty when the target is written directly
  system::File file_;
  std::chrono::nanoseconds begin_{};  // by the clock of the file system
  bool at_line_start_ = true;
};

/// Files that are made safe on the disk together and then appear, which takes far less time than
/// one after another. Any thread may use it.
class OutputGroup {
 public:
  /// What became of the files that could not be finished.
  using Failures = std::vector<FileError>;

  /// Takes a file in which everything is written. A group that has become large is finished.
  Failures add(std::unique_ptr<OutputFile> file);
  /// Finishes the files taken so far.
  Failures finish();

 private:
  using Files = std::vector<std::unique_ptr<OutputFile>>;

  Failures finish_taken(std::unique_lock<std::mutex> taking);
  static Failures finish_all(Files& files);

  std::mutex taking_;
  std::mutex finishing_;
  Files taken_;
  std::size_t taken_bytes_ = 0;
};

}  // namespace qel::command
