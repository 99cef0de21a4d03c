#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace qel::com {

/// A file that is read from its beginning to its end. All members raise errors with the numbers
/// that scripts know.
class SourceFile {
 public:
  explicit SourceFile(const std::wstring& path);
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;
  ~SourceFile() { CloseHandle(file_); }

  /// Fills the buffer with the next bytes and returns their number; 0 at the end.
  std::size_t read(char* buffer, std::size_t size);

 private:
  std::wstring path_;
  HANDLE file_;
};

/// A file that is written beside the one whose place it takes in the end. It leaves nothing behind
/// where it does not come to that.
class TargetFile {
 public:
  explicit TargetFile(std::wstring path);
  TargetFile(const TargetFile&) = delete;
  TargetFile& operator=(const TargetFile&) = delete;
  ~TargetFile();

  void write(std::string_view bytes);
  /// Takes the place of the file of that name, if there is one.
  void replace();

 private:
  void close();

  std::wstring path_;
  std::wstring temporary_;
  HANDLE file_;
};

}  // namespace qel::com
