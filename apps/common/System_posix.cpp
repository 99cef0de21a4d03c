#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <thread>

#include "System.h"

namespace qel::command::system {
namespace {

namespace fs = std::filesystem;

std::error_code last_error() { return {errno, std::generic_category()}; }

std::error_code error_of(int result) { return result == 0 ? std::error_code() : last_error(); }

int descriptor_of(std::intptr_t handle) { return static_cast<int>(handle); }

std::chrono::nanoseconds time_of(const timespec& time) {
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

timespec timespec_of(std::chrono::nanoseconds time) {
  const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
  return {static_cast<time_t>(seconds.count()), static_cast<long>((time - seconds).count())};
}

Status status_from(const struct stat& status) {
  const Kind kind = S_ISREG(status.st_mode)   ? Kind::file
                    : S_ISDIR(status.st_mode) ? Kind::folder
                                              : Kind::other;
  return {kind, static_cast<std::uint64_t>(status.st_size), Identity(status.st_dev, status.st_ino),
          time_of(status.st_mtim)};
}

/// The signals to watch for, except those that the parent process chose to ignore.
sigset_t watched_signals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    if (action.sa_handler != SIG_IGN) sigaddset(&signals, signal);
  }
  return signals;
}

[[noreturn]] void wait_for(const sigset_t& signals, const std::function<void()>& clean_up) {
  int signal = 0;
  while (sigwait(&signals, &signal) != 0) {
  }
  clean_up();
  constexpr int ended_by_signal = 128;
  _exit(ended_by_signal + signal);
}

}  // namespace

Status status_of(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 ? status_from(status) : Status();
}

std::string without_links(const std::string& path) {
  constexpr int longest_chain = 40;
  fs::path target = path;
  std::error_code error;
  for (int i = 0; i < longest_chain && fs::is_symlink(fs::symlink_status(target, error)); ++i) {
    target = target.parent_path() / fs::read_symlink(target, error);
  }
  return target.string();
}

std::vector<Entry> entries_of(const std::string& folder, std::error_code& error) {
  std::vector<Entry> entries;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    std::error_code unknown;
    const Kind kind = entry->is_directory(unknown) ? Kind::folder
                      : entry->is_other(unknown)   ? Kind::other
                                                   : Kind::file;
    const std::string name = entry->path().filename().string();
    entries.push_back({name, kind, entry->is_symlink(unknown), name.starts_with('.')});
  }
  return entries;
}

std::error_code create_folders(const std::string& path) {
  std::error_code error;
  fs::create_directories(path, error);
  return error;
}

std::vector<std::string> files_matching(const std::string& pattern) { return {pattern}; }

std::string_view name_in_line(std::string_view line) { return line; }

Cancellation::Cancellation() {
  std::array<int, 2> ends = {};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::system_error(last_error());
  ends_ = {ends[0], ends[1]};
}

Cancellation::~Cancellation() {
  ::close(descriptor_of(ends_.first));
  ::close(descriptor_of(ends_.second));
}

void Cancellation::cancel() const {
  constexpr char any = 0;
  // Fails only where the pipe is full of earlier cancellations.
  [[maybe_unused]] const ssize_t count = ::write(descriptor_of(ends_.second), &any, 1);
}

File File::standard_input() { return {STDIN_FILENO, false}; }

File File::standard_output() { return {STDOUT_FILENO, false}; }

File File::open_to_read(const std::string& path, std::error_code& error) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) error = last_error();
  return {descriptor, true};
}

File File::open_to_write(const std::string& path, std::error_code& error) {
  const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor < 0) error = last_error();
  return {descriptor, true};
}

File File::create_replacement(const std::string& path, const std::string& target,
                              std::error_code& error) {
  constexpr mode_t permissions = 0777;
  constexpr mode_t for_everybody = 0666;
  struct stat status = {};
  const bool replaces = stat(target.c_str(), &status) == 0;
  // A write-protected file is not replaced even if its folder is writable.
  if (replaces && access(target.c_str(), W_OK) != 0) {
    error = last_error();
    return {};
  }
  const mode_t mode = replaces ? status.st_mode & permissions : for_everybody;
  const int descriptor =
      open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode & for_everybody);
  if (descriptor < 0) {
    error = last_error();
    return {};
  }
  flock(descriptor, LOCK_EX);  // until it is closed
  // Only an administrator can keep the owner; otherwise the file belongs to the writer.
  if (replaces && fchown(descriptor, status.st_uid, status.st_gid) != 0) errno = 0;
  if (replaces && fchmod(descriptor, mode) != 0) errno = 0;
  return {descriptor, true};
}

bool File::is_terminal() const { return isatty(descriptor_of(handle_)) != 0; }

Status File::status() const {
  struct stat status = {};
  return fstat(descriptor_of(handle_), &status) == 0 ? status_from(status) : Status();
}

std::size_t File::read(char* bytes, std::size_t size, std::error_code& error) {
  ssize_t count = 0;
  do {
    count = ::read(descriptor_of(handle_), bytes, size);
  } while (count < 0 && errno == EINTR);
  if (count >= 0) return static_cast<std::size_t>(count);
  error = last_error();
  return 0;
}

bool File::wait(const Cancellation& cancellation) const {
  std::array<pollfd, 2> files = {
      {{descriptor_of(handle_), POLLIN, 0}, {descriptor_of(cancellation.ends_.first), POLLIN, 0}}};
  while (poll(files.data(), files.size(), -1) < 0 && errno == EINTR) {
  }
  return files[1].revents == 0;
}

std::error_code File::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor_of(handle_), bytes.data(), bytes.size());
    if (count >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(count));
    } else if (errno != EINTR) {
      return last_error();
    }
  }
  return {};
}

void File::begin_write_back() const {
#if defined(SYNC_FILE_RANGE_WRITE)
  sync_file_range(descriptor_of(handle_), 0, 0, SYNC_FILE_RANGE_WRITE);
#endif
}

std::error_code File::make_safe(std::chrono::nanoseconds modified) {
  const std::array<timespec, 2> times = {{{0, UTIME_OMIT}, timespec_of(modified)}};
  if (futimens(descriptor_of(handle_), times.data()) != 0) errno = 0;
  return error_of(fsync(descriptor_of(handle_)));
}

std::error_code File::close() {
  const int descriptor = descriptor_of(std::exchange(handle_, none));
  return descriptor >= 0 && is_own_ ? error_of(::close(descriptor)) : std::error_code();
}

std::error_code replace(const std::string& path, const std::string& target) {
  return error_of(std::rename(path.c_str(), target.c_str()));
}

void remove(const std::string& path) { unlink(path.c_str()); }

void remove_if_abandoned(const std::string& path) {
  // The process may be about to lock or to rename it.
  constexpr time_t long_enough = 60;
  const int descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return;
  struct stat status = {};
  if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
      std::time(nullptr) - status.st_mtime > long_enough &&
      flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
    unlink(path.c_str());
  }
  ::close(descriptor);
}

unsigned long process_id() { return static_cast<unsigned long>(getpid()); }

std::size_t most_open_files() {
  struct rlimit limit = {};
  return getrlimit(RLIMIT_NOFILE, &limit) == 0 ? limit.rlim_cur : 0;
}

void prepare_process() {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

void before_interruption(std::function<void()> clean_up) {
  const sigset_t signals = watched_signals();
  // Threads inherit the mask, so only the thread that waits for the signals gets them.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  std::thread([signals, clean_up = std::move(clean_up)] { wait_for(signals, clean_up); }).detach();
}

Arguments::Arguments(int argc, char** argv) : pointers_(argv, argv + argc) {}

bool is_output_terminal() { return isatty(STDOUT_FILENO) != 0; }

bool can_rewrite_errors() { return isatty(STDERR_FILENO) != 0; }

void write_error(std::string_view text) { std::cerr << text << std::flush; }

}  // namespace qel::command::system
