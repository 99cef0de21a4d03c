#include "Files.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <utility>

#include "Temporaries.h"

namespace qel::command {
namespace {

constexpr std::string_view standard_stream = "-";

[[noreturn]] void fail_to(std::string_view verb, const std::string& name, int error) {
  throw FileError("cannot " + std::string(verb) + " " + name + ": " +
                  std::generic_category().message(error));
}

/// Where a chain of symbolic links leads, whether or not the file exists.
std::string without_links(const std::string& path) {
  namespace fs = std::filesystem;
  constexpr int longest_chain = 40;
  fs::path target = path;
  std::error_code error;
  for (int i = 0; i < longest_chain && fs::is_symlink(fs::symlink_status(target, error)); ++i) {
    target = target.parent_path() / fs::read_symlink(target, error);
  }
  return target.string();
}

std::string folder_of(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

/// Lets the system begin to write, so that waiting for it later is short.
void begin_write_back([[maybe_unused]] int descriptor) {
#if defined(SYNC_FILE_RANGE_WRITE)
  sync_file_range(descriptor, 0, 0, SYNC_FILE_RANGE_WRITE);
#endif
}

}  // namespace

InputFile::InputFile(const std::string& path)
    : is_standard_(path == standard_stream),
      name_(is_standard_ ? "standard input" : path),
      descriptor_(is_standard_ ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
  if (descriptor_ < 0) fail_to("read", name_, errno);
}

InputFile::~InputFile() {
  if (!is_standard_) close(descriptor_);
}

std::size_t InputFile::expected_size() const {
  struct stat status = {};
  if (fstat(descriptor_, &status) != 0 || !S_ISREG(status.st_mode)) return 0;
  return static_cast<std::size_t>(status.st_size);
}

std::size_t InputFile::read_some(char* bytes, std::size_t size) const {
  ssize_t count = 0;
  do {
    count = read(descriptor_, bytes, size);
  } while (count < 0 && errno == EINTR);
  if (count < 0) fail_to("read", name_, errno);
  return static_cast<std::size_t>(count);
}

bool InputFile::wait(const Cancellation& cancellation) const {
  std::array<pollfd, 2> files = {
      {{descriptor_, POLLIN, 0}, {cancellation.descriptor(), POLLIN, 0}}};
  while (poll(files.data(), files.size(), -1) < 0 && errno == EINTR) {
  }
  return files[1].revents == 0;
}

Cancellation::Cancellation() {
  if (pipe2(ends_.data(), O_CLOEXEC) != 0) fail_to("create", "a pipe", errno);
}

Cancellation::~Cancellation() {
  for (const int end : ends_) close(end);
}

void Cancellation::cancel() const {
  constexpr char any = 0;
  // Fails only where the pipe is full of earlier cancellations.
  [[maybe_unused]] const ssize_t count = ::write(ends_[1], &any, 1);
}

std::string read_file(const std::string& path) {
  constexpr std::size_t smallest_buffer = std::size_t{1} << 16U;
  const InputFile reader(path);
  // One byte more than expected, so that the end is found without a larger buffer.
  std::string bytes(std::max(reader.expected_size() + 1, smallest_buffer), '\0');
  std::size_t used = 0;
  while (const std::size_t count = reader.read_some(bytes.data() + used, bytes.size() - used)) {
    used += count;
    if (used == bytes.size()) bytes.resize(used * 2);
  }
  bytes.resize(used);
  return bytes;
}

bool is_same_file(const std::string& input, const std::string& output) {
  const auto find = [](const std::string& name, int standard, struct stat& status) {
    return name == standard_stream ? fstat(standard, &status) : stat(name.c_str(), &status);
  };
  struct stat read = {};
  struct stat written = {};
  return find(input, STDIN_FILENO, read) == 0 && find(output, STDOUT_FILENO, written) == 0 &&
         S_ISREG(read.st_mode) && read.st_dev == written.st_dev && read.st_ino == written.st_ino;
}

void refuse_to_write_while_reading(const std::string& input, const std::string& output) {
  if (output == standard_stream && is_same_file(input, output)) {
    throw FileError("standard output is the file that is read; -o FILE writes to another");
  }
}

OutputFile::OutputFile(std::string path) : path_(std::move(path)) {
  if (path_ == standard_stream) {
    descriptor_ = STDOUT_FILENO;
    return;
  }
  struct stat status = {};
  if (stat(path_.c_str(), &status) != 0 || S_ISREG(status.st_mode)) {
    open_replacement(without_links(path_));
  } else {
    descriptor_ = open(path_.c_str(), O_WRONLY | O_CLOEXEC);
    if (descriptor_ < 0) fail(errno);
  }
}

OutputFile::~OutputFile() {
  if (descriptor_ >= 0 && descriptor_ != STDOUT_FILENO) close(descriptor_);
  if (!temporary_.empty()) temporaries::remove(temporary_);
}

void OutputFile::open_replacement(const std::string& target) {
  constexpr mode_t permissions = 0777;
  constexpr mode_t for_everybody = 0666;
  struct stat status = {};
  const bool replaces = stat(target.c_str(), &status) == 0;
  // A write-protected file is not replaced even if its folder is writable.
  if (replaces && access(target.c_str(), W_OK) != 0) fail(errno);
  const mode_t mode = replaces ? status.st_mode & permissions : for_everybody;
  target_ = target;
  descriptor_ = temporaries::create(folder_of(target), mode & for_everybody, temporary_);
  if (descriptor_ < 0) {
    temporary_.clear();
    fail(errno);
  }
  struct stat begun = {};
  if (fstat(descriptor_, &begun) != 0) fail(errno);
  begin_ = begun.st_mtim;
  if (!replaces) return;
  // Only an administrator can keep the owner; otherwise the file belongs to the writer.
  if (fchown(descriptor_, status.st_uid, status.st_gid) != 0) errno = 0;
  if (fchmod(descriptor_, mode) != 0) errno = 0;
}

void OutputFile::write(std::string_view bytes) {
  if (bytes.empty()) return;
  at_line_start_ = bytes.back() == '\n';
  size_ += bytes.size();
  write_all(bytes);
}

void OutputFile::write_all(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      fail(errno);
    }
  }
}

void OutputFile::finish() {
  end_last_line();
  make_safe();
  appear();
}

void OutputFile::end_last_line() {
  if (!at_line_start_ && isatty(descriptor_) != 0) write_all("\n");
}

void OutputFile::make_safe() {
  if (temporary_.empty()) return;
  const std::array<timespec, 2> times = {{{0, UTIME_OMIT}, begin_}};
  if (futimens(descriptor_, times.data()) != 0) errno = 0;
  if (fsync(descriptor_) != 0) fail(errno);
}

void OutputFile::appear() {
  if (close(std::exchange(descriptor_, -1)) != 0) fail(errno);
  if (temporary_.empty()) return;
  if (!temporaries::rename_to(temporary_, target_)) fail(errno);
  temporary_.clear();
}

void OutputFile::fail(int error) const {
  if (error == EPIPE) throw ReaderHasGone();
  fail_to("write", path_ == standard_stream ? "standard output" : path_, error);
}

namespace {

/// Few enough that two groups are within the limit of the process, with what else is open, and that
/// little of the work is lost when the process is ended.
std::size_t files_in_group() {
  constexpr rlim_t most = 128;
  constexpr rlim_t parts = 4;
  struct rlimit limit = {};
  if (getrlimit(RLIMIT_NOFILE, &limit) != 0) return 1;
  return static_cast<std::size_t>(std::clamp<rlim_t>(limit.rlim_cur / parts, 1, most));
}

}  // namespace

OutputGroup::Failures OutputGroup::add(std::unique_ptr<OutputFile> file) {
  static const std::size_t most_files = files_in_group();
  constexpr std::size_t most_bytes = std::size_t{1} << 24U;
  file->end_last_line();
  if (file->temporary_.empty()) {
    file->appear();
    return {};
  }
  begin_write_back(file->descriptor_);
  std::unique_lock taking(taking_);
  taken_bytes_ += file->size_;
  taken_.push_back(std::move(file));
  if (taken_.size() < most_files && taken_bytes_ < most_bytes) return {};
  return finish_taken(std::move(taking));
}

OutputGroup::Failures OutputGroup::finish() { return finish_taken(std::unique_lock(taking_)); }

OutputGroup::Failures OutputGroup::finish_taken(std::unique_lock<std::mutex> taking) {
  // The next group is taken while this one is finished, but not a third.
  const std::lock_guard finishing(finishing_);
  Files files = std::exchange(taken_, {});
  taken_bytes_ = 0;
  taking.unlock();
  return finish_all(files);
}

OutputGroup::Failures OutputGroup::finish_all(Files& files) {
  Failures failures;
  const auto try_all = [&](void (OutputFile::*step)()) {
    for (std::unique_ptr<OutputFile>& file : files) {
      try {
        if (file) ((*file).*step)();
      } catch (const FileError& error) {
        failures.push_back(error);
        file.reset();
      }
    }
  };
  try_all(&OutputFile::make_safe);
  try_all(&OutputFile::appear);
  return failures;
}

}  // namespace qel::command
