#if __has_include(<malloc.h>)
#include <malloc.h>
#endif

#include <filesystem>
#include <string>
#include <system_error>

#include "Batch.h"
#include "CommandLine.h"
#include "Files.h"
#include "Program.h"
#include "qel/base/Utf8.h"

namespace qel::command {
namespace {

void create_folder(const std::string& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw FileError("cannot create " + folder + ": " + error.message());
}

/// Texts are large and short-lived: their memory goes back to the system at once. Otherwise the
/// allocator would keep that of the first text, and the later ones would come on top.
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
    case CommandLine::Action::lint:
      return run(line.checks);
    case CommandLine::Action::print:
      print(line.text);
      return success;
    case CommandLine::Action::tables:
      print(to_utf8(line.tables.records()));
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
  return run_program("qel", [&] {
    return_large_blocks();
    return run(parse_command_line(argc, argv));
  });
}
