#if __has_include(<malloc.h>)
#include <malloc.h>
#endif

#include <csignal>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>

#include "Batch.h"
#include "CommandLine.h"
#include "Files.h"
#include "Temporaries.h"
#include "UsageError.h"
#include "qel/base/Utf8.h"

namespace qel::command {
namespace {

enum ExitStatus : int { success = 0, failed = 1, misused = 2 };

void complain(const std::string& message) { std::cerr << "qel: " + message + "\n"; }

void print(std::string_view text) {
  OutputFile output("-");
  output.write(text);
  output.finish();
}

void create_folder(const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw FileError("cannot create " + folder + ": " + error.message());
}

/// Texts are large and live shortly: what they took goes back to the system at once. Otherwise the
/// allocator keeps it after the first of them, and the later ones come on top.
void return_large_blocks() {
#if defined(M_MMAP_THRESHOLD)
  constexpr int large = 1 << 18;
  mallopt(M_MMAP_THRESHOLD, large);
#endif
}

int convert(const CommandLine& line) {
  std::vector<Task> tasks = {{line.files.front(), line.output}};
  if (line.folder) {
    tasks = tasks_into(*line.folder, line.files, line.options.to);
    create_folder(*line.folder);
  }
  return convert_files(tasks, line.options, line.jobs) ? success : failed;
}

int run(const CommandLine& line) {
  switch (line.action) {
    case CommandLine::Action::text:
      return run(line.task);
    case CommandLine::Action::print:
      print(line.text);
      return success;
    case CommandLine::Action::tables:
      print(to_utf8(line.options.tables.records()));
      return success;
    case CommandLine::Action::convert:
      return convert(line);
  }
  return failed;
}

}  // namespace
}  // namespace qel::command

int main(int argc, char** argv) {
  using namespace qel::command;
  // A reader that went away is a write that fails.
  std::signal(SIGPIPE, SIG_IGN);
  // So is a file that reached its limit.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    return_large_blocks();
    temporaries::remove_on_signals();
    return run(parse_command_line(argc, argv));
  } catch (const UsageError& error) {
    complain(error.what());
    return misused;
  } catch (const std::exception& error) {
    complain(error.what());
    return failed;
  }
}
