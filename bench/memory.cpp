// The command on whole files, each in a process of its own: its speed and the most memory it took.

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <string>

#include "Documents.h"
#include "Process.h"

namespace {

using qel::bench::ProcessUse;
using qel::bench::TemporaryFile;

constexpr double most_memory = 16e6;

/// Writes both files of a text. The text is made in a process of its own: a process counts the
/// memory of the one that starts it as its own, so this one stays small.
bool write_files(int size, const TemporaryFile& markup, const TemporaryFile& rtf) {
  const pid_t process = fork();
  if (process == 0) {
    const auto bytes = static_cast<std::size_t>(size);
    markup.write(qel::bench::markup_file(bytes));
    rtf.write(qel::bench::documents(bytes).rtf_bytes);
    _exit(0);
  }
  int status = 0;
  return process > 0 && waitpid(process, &status, 0) == process && status == 0;
}

bool report(const std::string& command, const TemporaryFile& file, const std::string& form) {
  constexpr int attempts = 3;
  ProcessUse best;
  for (int i = 0; i < attempts; ++i) {
    const ProcessUse use = qel::bench::run_process({command, "convert", file.path(), "--to", form});
    if (!use.succeeded) {
      std::printf("failed: %s convert --to %s\n", command.c_str(), form.c_str());
      return false;
    }
    best.peak_memory = std::max(best.peak_memory, use.peak_memory);
    best.cpu_seconds = i == 0 ? use.cpu_seconds : std::min(best.cpu_seconds, use.cpu_seconds);
  }
  const auto size = static_cast<double>(file.size());
  const char* const aim = best.peak_memory <= most_memory ? "met" : "MISSED";
  std::printf("%9.0f bytes of %-4s to %-5s %7.1f MB/s  peak %6.1f MB  %s\n", size,
              file.suffix().c_str() + 1, form.c_str(), size / best.cpu_seconds / 1e6,
              best.peak_memory / 1e6, aim);
  return true;
}

bool report_size(const std::string& command, int size) {
  const TemporaryFile markup(".qel");
  const TemporaryFile rtf(".rtf");
  return write_files(size, markup, rtf) && report(command, markup, "rtf") &&
         report(command, markup, "text") && report(command, markup, "html") &&
         report(command, rtf, "qel") && report(command, rtf, "text");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "Usage: %s <the command qel>\n", argv[0]);
    return 2;
  }
  std::printf(
      "Aim: at most %g MB whatever the size, with the program itself, which takes some 4 MB.\n",
      most_memory / 1e6);
  const bool done =
      report_size(argv[1], qel::bench::medium_size) && report_size(argv[1], qel::bench::large_size);
  return done ? 0 : 1;
}
