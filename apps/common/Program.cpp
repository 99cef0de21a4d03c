#include "Program.h"

#include <csignal>
#include <exception>
#include <iostream>

#include "Files.h"
#include "Temporaries.h"
#include "UsageError.h"

namespace qel::command {

void complain(const std::string& program, const std::string& message) {
  std::cerr << program + ": " + message + "\n";
}

void print(std::string_view text) {
  OutputFile output("-");
  output.write(text);
  output.finish();
}

int run_program(const std::string& program, const std::function<int()>& work) {
  // Writing to a reader that has gone is to fail, not to end the process.
  std::signal(SIGPIPE, SIG_IGN);
  // So is writing to a file that has reached its size limit.
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    temporaries::remove_on_signals();
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
