#include "Temporaries.h"

#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <mutex>
#include <set>
#include <string_view>
#include <system_error>
#include <thread>

namespace qel::command::temporaries {
namespace {

constexpr std::string_view prefix = ".qel-";

struct Registry {
  std::mutex mutex;
  std::set<std::string> paths;
  std::set<std::string> folders;  // that have been looked through for files left behind
  unsigned next = 0;
};

/// Never destroyed: a signal may arrive while the process ends.
Registry& registry() {
  static auto& files = *new Registry;
  return files;
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

[[noreturn]] void wait_for(const sigset_t& signals) {
  int signal = 0;
  while (sigwait(&signals, &signal) != 0) {
  }
  // Held to the end, so that no more files are created or renamed.
  const std::lock_guard lock(registry().mutex);
  for (const std::string& path : registry().paths) unlink(path.c_str());
  constexpr int ended_by_signal = 128;
  _exit(ended_by_signal + signal);
}

bool is_name(std::string_view name) {
  if (!name.starts_with(prefix)) return false;
  const std::string_view numbers = name.substr(prefix.size());
  return numbers.find('-') != numbers.npos &&
         numbers.find_first_not_of("-0123456789") == numbers.npos;
}

/// Removes the file unless a process has it locked, as the one does that writes it, or may be about
/// to lock or rename it.
void remove_if_left(const std::string& path) {
  constexpr time_t long_enough = 60;
  const int descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return;
  struct stat status = {};
  if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && status.st_uid == geteuid() &&
      std::time(nullptr) - status.st_mtime > long_enough &&
      flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
    unlink(path.c_str());
  }
  close(descriptor);
}

/// Nobody could remove the files of a process that was killed. Those who write to the folder next
/// do.
void remove_files_left_in(const std::string& folder) {
  namespace fs = std::filesystem;
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
    if (is_name(entry->path().filename().native())) remove_if_left(entry->path());
  }
}

}  // namespace

void remove_on_signals() {
  registry();
  const sigset_t signals = watched_signals();
  // Threads inherit the mask, so only the thread that waits for the signals gets them.
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  std::thread([signals] { wait_for(signals); }).detach();
}

int create(const std::string& folder, mode_t mode, std::string& path) {
  Registry& files = registry();
  const std::lock_guard lock(files.mutex);
  if (files.folders.insert(folder).second) remove_files_left_in(folder);
  int descriptor = -1;
  do {
    path = folder + "/" + std::string(prefix) + std::to_string(getpid()) + "-" +
           std::to_string(files.next++);
    descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  } while (descriptor < 0 && errno == EEXIST);
  if (descriptor < 0) return descriptor;
  files.paths.insert(path);
  flock(descriptor, LOCK_EX);  // until it is closed
  return descriptor;
}

bool rename_to(const std::string& path, const std::string& target) {
  const std::lock_guard lock(registry().mutex);
  if (std::rename(path.c_str(), target.c_str()) != 0) return false;
  registry().paths.erase(path);
  return true;
}

void remove(const std::string& path) {
  const std::lock_guard lock(registry().mutex);
  unlink(path.c_str());
  registry().paths.erase(path);
}

}  // namespace qel::command::temporaries
