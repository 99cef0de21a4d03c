#include "Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace qel::bench {
namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Both standard outputs to nowhere, for a process about to be started.
class SilentOutput {
 public:
  SilentOutput() {
    posix_spawn_file_actions_init(&actions_);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO}) {
      posix_spawn_file_actions_addopen(&actions_, output, "/dev/null", O_WRONLY, 0);
    }
  }
  SilentOutput(const SilentOutput&) = delete;
  SilentOutput& operator=(const SilentOutput&) = delete;
  ~SilentOutput() { posix_spawn_file_actions_destroy(&actions_); }

  const posix_spawn_file_actions_t* get() const { return &actions_; }

 private:
  posix_spawn_file_actions_t actions_ = {};
};

}  // namespace

ProcessUse run_process(const std::vector<std::string>& command) {
  std::vector<std::string> copies = command;
  std::vector<char*> arguments;
  arguments.reserve(copies.size() + 1);
  for (std::string& word : copies) arguments.push_back(word.data());
  arguments.push_back(nullptr);

  const SilentOutput silent;
  pid_t process = 0;
  if (posix_spawnp(&process, arguments[0], silent.get(), nullptr, arguments.data(), environ) != 0) {
    return {};
  }
  int status = 0;
  rusage use = {};
  if (wait4(process, &status, 0, &use) != process) return {};
  constexpr double kilobyte = 1024;
  return {WIFEXITED(status) && WEXITSTATUS(status) == 0,
          seconds(use.ru_utime) + seconds(use.ru_stime),
          static_cast<double>(use.ru_maxrss) * kilobyte};
}

TemporaryFile::TemporaryFile(std::string suffix)
    : suffix_(std::move(suffix)),
      path_(std::filesystem::temp_directory_path() / ("qel-bench-XXXXXX" + suffix_)) {
  const int file = mkstemps(path_.data(), static_cast<int>(suffix_.size()));
  if (file < 0) throw std::runtime_error("no temporary file: " + path_);
  close(file);
}

TemporaryFile::~TemporaryFile() {
  std::error_code ignored;
  std::filesystem::remove(path_, ignored);
}

std::uintmax_t TemporaryFile::size() const { return std::filesystem::file_size(path_); }

void TemporaryFile::write(const std::string& bytes) const {
  std::ofstream file(path_, std::ios::binary);
  if (!file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
    throw std::runtime_error("not written: " + path_);
  }
}

}  // namespace qel::bench
