#include "com/objects/FileAccess.h"

#include <algorithm>
#include <utility>

#include "com/automation/Errors.h"
#include "com/automation/Values.h"
#include "qel/base/Error.h"
#include "qel/base/Utf8.h"

namespace qel::com {
namespace {

/// Raises an error for the last failure of the system.
[[noreturn]] void raise_failure(const std::wstring& path, const char* what) {
  const DWORD failure = GetLastError();
  const unsigned number = failure == ERROR_FILE_NOT_FOUND   ? errors::file_not_found
                          : failure == ERROR_PATH_NOT_FOUND ? errors::path_not_found
                          : failure == ERROR_ACCESS_DENIED  ? errors::permission_denied
                                                            : errors::file_access;
  const auto name = to_utf8(windows::utf16(path.c_str(), path.size()));
  throw Error(number, "QEL", name + ": the file cannot be " + what);
}

/// A name beside the file that no other call uses at the same time.
std::wstring name_beside(const std::wstring& path) {
  static LONG count = 0;
  return path + L"." + std::to_wstring(GetCurrentProcessId()) + L"-" +
         std::to_wstring(InterlockedIncrement(&count)) + L".tmp";
}

}  // namespace

SourceFile::SourceFile(const std::wstring& path)
    : path_(path),
      file_(CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                        FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {
  if (file_ == INVALID_HANDLE_VALUE) raise_failure(path_, "opened");
}

std::size_t SourceFile::read(char* buffer, std::size_t size) {
  constexpr std::size_t most = std::size_t{1} << 30U;
  DWORD done = 0;
  if (ReadFile(file_, buffer, static_cast<DWORD>(std::min(size, most)), &done, nullptr) == FALSE) {
    raise_failure(path_, "read");
  }
  return done;
}

TargetFile::TargetFile(std::wstring path)
    : path_(std::move(path)),
      temporary_(name_beside(path_)),
      file_(CreateFileW(temporary_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                        FILE_ATTRIBUTE_NORMAL, nullptr)) {
  if (file_ == INVALID_HANDLE_VALUE) raise_failure(path_, "written");
}

TargetFile::~TargetFile() {
  close();
  if (!temporary_.empty()) DeleteFileW(temporary_.c_str());
}

void TargetFile::close() {
  if (file_ != INVALID_HANDLE_VALUE) CloseHandle(std::exchange(file_, INVALID_HANDLE_VALUE));
}

void TargetFile::write(std::string_view bytes) {
  DWORD done = 0;
  const auto size = static_cast<DWORD>(bytes.size());
  if (WriteFile(file_, bytes.data(), size, &done, nullptr) == FALSE || done != size) {
    raise_failure(path_, "written");
  }
}

void TargetFile::replace() {
  close();
  constexpr DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (MoveFileExW(temporary_.c_str(), path_.c_str(), how) == FALSE) {
    raise_failure(path_, "replaced");
  }
  temporary_.clear();
}

}  // namespace qel::com
