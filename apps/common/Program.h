#pragma once

#include <functional>
#include <string>
#include <string_view>

/// How a program of the command line begins and ends.
namespace qel::command {

enum ExitStatus : int { success = 0, failed = 1, misused = 2 };

/// One line on standard error, under the program's name.
void complain(const std::string& program, const std::string& message);

/// Text on standard output. Raises a `FileError`.
void print(std::string_view text);

/// Does what the program does and returns its exit status. An exception ends it with a complaint; a
/// `UsageError` counts as misuse. A reader of its output that goes away and a file that reaches its
/// limit are failures of writing, and a signal that ends the process removes its temporary files.
/// To be called before any thread is started.
int run_program(const std::string& program, const std::function<int()>& work);

}  // namespace qel::command
