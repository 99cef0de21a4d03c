#if __has_include(<malloc.h>)
#include <malloc.h>
#endif

#include "CommandLine.h"
#include "Program.h"
#include "System.h"
#include "qel/base/Utf8.h"

namespace qel::command {
namespace {

/// Texts are large and short-lived: their memory goes back to the system at once. Otherwise the
/// allocator would keep that of the first text, and the later ones would come on top.
void return_large_blocks() {
#if defined(M_MMAP_THRESHOLD)
  constexpr int large = 1 << 18;
  mallopt(M_MMAP_THRESHOLD, large);
#endif
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
      return run(line.conversions) ? success : failed;
  }
  return failed;
}

}  // namespace
}  // namespace qel::command

int main(int argc, char** argv) {
  using namespace qel::command;
  return run_program("qel", [&] {
    return_large_blocks();
    const system::Arguments arguments(argc, argv);
    return run(parse_command_line(arguments.count(), arguments.values()));
  });
}
