#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

/// Files as the programs read and write them. "-" is standard input or standard output.
namespace qel::command {

/// A file that cannot be read or written; the message names it and says why.
class FileError : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// A file to read, which is closed at the end.
class InputFile {
 public:
  explicit InputFile(const std::string& path);
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  /// The size of a regular file; 0 for any other.
  std::size_t expected_size() const;
  /// Reads up to `size` bytes; 0 at the end of the file.
  std::size_t read_some(char* bytes, std::size_t size) const;

 private:
  bool is_standard_;
  std::string name_;
  int descriptor_;
};

std::string read_file(const std::string& path);

/// A file to write. Its content appears under its name only when it is complete: it is written to a
/// temporary file in the same folder, which is removed again on any failure. Devices, pipes and
/// standard output are written to directly.
///
/// A file that is replaced passes on its permissions; a symbolic link is followed.
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
  void open_replacement(const std::string& target);
  void write_all(std::string_view bytes);
  [[noreturn]] void fail(int error) const;

  std::string path_;
  std::string target_;     // what the temporary file replaces
  std::string temporary_;  // empty when the target is written directly
  int descriptor_ = -1;
  bool at_line_start_ = true;
};

}  // namespace qel::command
