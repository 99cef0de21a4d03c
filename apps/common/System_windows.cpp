#include <windows.h>

#include <algorithm>
#include <array>
#include <thread>

#include "Paths.h"
#include "System.h"
#include "WindowsConsole.h"
#include "WindowsNames.h"

namespace qel::command::system {
namespace {

using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;

/// The systems count from 1601; a number of nanoseconds since then would be too large.
constexpr Ticks begin_of_1970{116'444'736'000'000'000};
constexpr DWORD shared_with_all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE handle_of(std::intptr_t handle) {
  return reinterpret_cast<HANDLE>(handle);  // NOLINT(performance-no-int-to-ptr)
}

std::intptr_t number_of(HANDLE handle) { return reinterpret_cast<std::intptr_t>(handle); }

std::error_code error_of(BOOL succeeds) { return succeeds ? std::error_code() : last_error(); }

std::uint64_t joined(DWORD high, DWORD low) { return std::uint64_t{high} << 32U | low; }

std::chrono::nanoseconds time_of(const FILETIME& time) {
  const auto ticks = static_cast<std::int64_t>(joined(time.dwHighDateTime, time.dwLowDateTime));
  return Ticks(ticks) - begin_of_1970;
}

FILETIME filetime_of(std::chrono::nanoseconds time) {
  const auto ticks =
      static_cast<std::uint64_t>((std::chrono::duration_cast<Ticks>(time) + begin_of_1970).count());
  return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32U)};
}

Kind kind_of(DWORD attributes) {
  return (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? Kind::folder : Kind::file;
}

Status status_from(HANDLE handle) {
  BY_HANDLE_FILE_INFORMATION found = {};
  if (GetFileType(handle) != FILE_TYPE_DISK) return {Kind::other, 0, {}, {}};
  if (!GetFileInformationByHandle(handle, &found)) return {};
  return {kind_of(found.dwFileAttributes), joined(found.nFileSizeHigh, found.nFileSizeLow),
          Identity(found.dwVolumeSerialNumber, joined(found.nFileIndexHigh, found.nFileIndexLow)),
          time_of(found.ftLastWriteTime)};
}

/// Not open where that fails.
class OpenHandle {
 public:
  OpenHandle(const std::string& path, DWORD access, DWORD flags)
      : handle_(CreateFileW(native(path).c_str(), access, shared_with_all, nullptr, OPEN_EXISTING,
                            flags, nullptr)) {}
  OpenHandle(const OpenHandle&) = delete;
  OpenHandle& operator=(const OpenHandle&) = delete;
  ~OpenHandle() {
    if (is_open()) CloseHandle(handle_);
  }

  bool is_open() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

/// A place behind the end of any file: what is locked can be neither read nor written.
bool lock(HANDLE handle) {
  OVERLAPPED place = {};
  place.OffsetHigh = 0x7FFFFFFF;
  return LockFileEx(handle, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place);
}

/// A path as users write it.
std::string without_prefix(std::string_view path) {
  constexpr std::string_view share = R"(\\?\UNC\)";
  constexpr std::string_view drive = R"(\\?\)";
  if (path.starts_with(share)) return R"(\\)" + std::string(path.substr(share.size()));
  return std::string(path.substr(path.starts_with(drive) ? drive.size() : 0));
}

/// Folders that are kept in a cloud are reparse points, too. Wine names no kind of them.
bool leads_elsewhere(const WIN32_FIND_DATAW& found) {
  const DWORD kind = found.dwReserved0;
  return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
         (kind == 0 || IsReparseTagNameSurrogate(kind));
}

/// Calls `visit` for each that fits the pattern.
template <class Visit>
std::error_code find_files(const std::wstring& pattern, Visit visit) {
  WIN32_FIND_DATAW found = {};
  auto* const search = FindFirstFileW(pattern.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return last_error();
  do {
    const bool is_link = leads_elsewhere(found);
    const bool is_hidden = (found.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) != 0;
    Entry entry = {to_narrow(found.cFileName), kind_of(found.dwFileAttributes), is_link, is_hidden};
    if (entry.name.starts_with('.')) entry.is_hidden = true;
    if (entry.name != "." && entry.name != "..") visit(std::move(entry));
  } while (FindNextFileW(search, &found));
  const DWORD end = GetLastError();
  FindClose(search);
  SetLastError(end);
  return error_of(end == ERROR_NO_MORE_FILES);
}

}  // namespace

Status status_of(const std::string& path) {
  if (fault_of(path)) return {};
  const OpenHandle file(path, FILE_READ_ATTRIBUTES, FILE_FLAG_BACKUP_SEMANTICS);
  return file.is_open() ? status_from(file.get()) : Status();
}

std::string without_links(const std::string& path) {
  const OpenHandle file(path, FILE_READ_ATTRIBUTES, FILE_FLAG_BACKUP_SEMANTICS);
  if (!file.is_open()) return path;
  std::wstring target(32768, L'\0');
  target.resize(GetFinalPathNameByHandleW(file.get(), target.data(),
                                          static_cast<DWORD>(target.size()), FILE_NAME_NORMALIZED));
  return target.empty() ? path : without_prefix(to_narrow(target));
}

std::vector<Entry> entries_of(const std::string& folder, std::error_code& error) {
  std::vector<Entry> entries;
  error = find_files(native(folder + "\\") + L"*",
                     [&](Entry entry) { entries.push_back(std::move(entry)); });
  return entries;
}

std::error_code create_folders(const std::string& path) {
  if (path.empty()) return {};
  if (const std::error_code fault = fault_of(path)) return fault;
  const Kind kind = status_of(path).kind;
  if (kind == Kind::folder) return {};
  if (kind != Kind::none) return std::make_error_code(std::errc::not_a_directory);
  const std::string parent = to_text(to_path(path).parent_path());
  if (parent != path) {
    if (const std::error_code error = create_folders(parent)) return error;
  }
  if (CreateDirectoryW(native(path).c_str(), nullptr)) return {};
  const std::error_code error = last_error();
  // Another process may have created it.
  return status_of(path).kind == Kind::folder ? std::error_code() : error;
}

std::vector<std::string> files_matching(const std::string& pattern) {
  const std::size_t begin = pattern.find_last_of("/\\") + 1;
  if (pattern.find_first_of("*?", begin) == pattern.npos) return {pattern};
  const std::string folder = pattern.substr(0, begin);
  std::vector<std::string> files;
  find_files(native(folder.empty() ? ".\\" : folder) + to_wide(pattern.substr(begin)),
             [&](const Entry& entry) {
               if (entry.kind == Kind::file && !entry.is_hidden) {
                 files.push_back(folder + entry.name);
               }
             });
  std::sort(files.begin(), files.end());
  return files.empty() ? std::vector{pattern} : files;
}

std::string_view name_in_line(std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

Cancellation::Cancellation() : ends_(number_of(CreateEventW(nullptr, TRUE, FALSE, nullptr)), 0) {
  if (ends_.first == 0) throw std::system_error(last_error());
}

Cancellation::~Cancellation() { CloseHandle(handle_of(ends_.first)); }

void Cancellation::cancel() const { SetEvent(handle_of(ends_.first)); }

File File::standard_input() { return {number_of(GetStdHandle(STD_INPUT_HANDLE)), false}; }

File File::standard_output() { return {number_of(GetStdHandle(STD_OUTPUT_HANDLE)), false}; }

namespace {

/// Sets `error` where it fails, and gives the number of no handle.
std::intptr_t open_existing(const std::string& path, DWORD access, std::error_code& error) {
  error = fault_of(path);
  if (error) return number_of(INVALID_HANDLE_VALUE);
  const std::wstring name = native(path);
  auto* const handle = CreateFileW(name.c_str(), access, shared_with_all, nullptr, OPEN_EXISTING,
                                   FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle != INVALID_HANDLE_VALUE) return number_of(handle);
  error = last_error();
  const DWORD attributes = GetFileAttributesW(name.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && kind_of(attributes) == Kind::folder) {
    error = std::make_error_code(std::errc::is_a_directory);
  }
  return number_of(INVALID_HANDLE_VALUE);
}

}  // namespace

File File::open_to_read(const std::string& path, std::error_code& error) {
  return {open_existing(path, GENERIC_READ, error), true};
}

File File::open_to_write(const std::string& path, std::error_code& error) {
  return {open_existing(path, GENERIC_WRITE, error), true};
}

File File::create_replacement(const std::string& path, const std::string& target,
                              std::error_code& error) {
  error = fault_of(target);
  if (error) return {};
  const DWORD attributes = GetFileAttributesW(native(target).c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0) {
    error = std::make_error_code(std::errc::permission_denied);
    return {};
  }
  // Shared in this way, it can be removed while it is written to.
  auto* const handle = CreateFileW(native(path).c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES,
                                   FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                                   FILE_ATTRIBUTE_NORMAL, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    error = last_error();
    return {};
  }
  lock(handle);  // until it is closed
  return {number_of(handle), true};
}

bool File::is_terminal() const { return is_console(handle_of(handle_)); }

Status File::status() const { return status_from(handle_of(handle_)); }

std::size_t File::read(char* bytes, std::size_t size, std::error_code& error) {
  constexpr std::size_t most = std::size_t{1} << 30U;
  if (is_terminal()) return read_console(handle_of(handle_), pending_, bytes, size);
  DWORD count = 0;
  const auto wanted = static_cast<DWORD>(std::min(size, most));
  if (ReadFile(handle_of(handle_), bytes, wanted, &count, nullptr)) return count;
  const std::error_code reason = last_error();
  // The end of a pipe is that of what writes to it.
  if (reason != std::errc::broken_pipe && GetLastError() != ERROR_HANDLE_EOF) error = reason;
  return 0;
}

bool File::wait(const Cancellation& cancellation) const {
  constexpr DWORD longest_pause = 16;
  auto* const file = handle_of(handle_);
  auto* const cancelled = handle_of(cancellation.ends_.first);
  if (is_terminal()) {
    const std::array<HANDLE, 2> handles = {cancelled, file};
    return WaitForMultipleObjects(2, handles.data(), FALSE, INFINITE) != WAIT_OBJECT_0;
  }
  // Nothing tells when a pipe has something to read.
  DWORD available = 0;
  for (DWORD pause = 0; GetFileType(file) == FILE_TYPE_PIPE;
       pause = std::min(pause * 2 + 1, longest_pause)) {
    if (!PeekNamedPipe(file, nullptr, 0, nullptr, &available, nullptr) || available > 0) break;
    if (WaitForSingleObject(cancelled, pause) == WAIT_OBJECT_0) return false;
  }
  return WaitForSingleObject(cancelled, 0) != WAIT_OBJECT_0;
}

std::error_code File::write(std::string_view bytes) {
  constexpr std::size_t most = std::size_t{1} << 20U;
  if (is_terminal()) return write_console(handle_of(handle_), pending_, bytes);
  while (!bytes.empty()) {
    const auto size = static_cast<DWORD>(std::min(bytes.size(), most));
    DWORD count = 0;
    if (!WriteFile(handle_of(handle_), bytes.data(), size, &count, nullptr)) return last_error();
    bytes.remove_prefix(count);
  }
  return {};
}

void File::begin_write_back() const {}

std::error_code File::make_safe(std::chrono::nanoseconds modified) {
  const FILETIME time = filetime_of(modified);
  SetFileTime(handle_of(handle_), nullptr, nullptr, &time);
  return error_of(FlushFileBuffers(handle_of(handle_)));
}

std::error_code File::close() {
  const std::intptr_t handle = std::exchange(handle_, none);
  return handle != none && is_own_ ? error_of(CloseHandle(handle_of(handle))) : std::error_code();
}

std::error_code replace(const std::string& path, const std::string& target) {
  // Its successor takes over who may do what with a file. Not all file systems know that.
  constexpr DWORD as_far_as_possible =
      REPLACEFILE_IGNORE_MERGE_ERRORS | 4;  // REPLACEFILE_IGNORE_ACL_ERRORS
  const std::wstring from = native(path);
  const std::wstring to = native(target);
  if (ReplaceFileW(to.c_str(), from.c_str(), nullptr, as_far_as_possible, nullptr, nullptr))
    return {};
  return error_of(
      MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH));
}

void remove(const std::string& path) { DeleteFileW(native(path).c_str()); }

void remove_if_abandoned(const std::string& path) {
  // The process may be about to lock or to rename it.
  constexpr auto long_enough = std::chrono::seconds(60);
  const OpenHandle file(path, GENERIC_READ, FILE_FLAG_OPEN_REPARSE_POINT);
  FILETIME now = {};
  GetSystemTimeAsFileTime(&now);
  if (!file.is_open()) return;
  const Status status = status_from(file.get());
  if (status.kind == Kind::file && time_of(now) - status.modified > long_enough &&
      lock(file.get())) {
    remove(path);
  }
}

unsigned long process_id() { return GetCurrentProcessId(); }

std::size_t most_open_files() {
  constexpr std::size_t plenty = 1024;
  return plenty;
}

}  // namespace qel::command::system
