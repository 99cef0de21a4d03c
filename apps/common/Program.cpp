#include "Program.h"

#include <exception>

#include "Files.h"
#include "System.h"
#include "Temporaries.h"
#include "UsageError.h"

namespace qel::command {

void complain(const std::string& program, const std::string& message) {
  system::write_error(program + ": " + message + "\n");
}

void print(std::string_view text) {
  OutputFile output("-");
  output.write(text);
  output.finish();
}

int run_program(const std::string& program, const std::function<int()>& work) {
  system::prepare_process();
  try {
    temporaries::remove_on_interruption();
    return work();
  } catch (const ReaderHasGone&) {
    return success;
  } catch (const UsageError& error) {
    complain(program, error.what());
    return misused;
  } catch (const std::exception& error) {
    complain(program, error.what());
    return failed;
  }
}

}  // namespace qel::command
