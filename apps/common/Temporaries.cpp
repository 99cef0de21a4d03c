#include "Temporaries.h"

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <mutex>
#include <set>
#include <thread>

namespace qel::command::temporaries {
namespace {

struct Registry {
  std::mutex mutex;
  std::set<std::string> paths;
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
  int descriptor = -1;
  do {
    path = folder + "/.qel-" + std::to_string(getpid()) + "-" + std::to_string(files.next++);
    descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
  } while (descriptor < 0 && errno == EEXIST);
  if (descriptor >= 0) files.paths.insert(path);
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
