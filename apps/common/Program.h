#pragma once

#include <functional>
#include <string>
#include <string_view>

/// How a command-line program begins and ends.
namespace qel::command {

enum ExitStatus : int { success = 0, failed = 1, misused = 2 };

/// Writes a line on standard error, with the program's name before the message.
void complain(const std::string& program, const std::string& message);

/// Writes text to standard output. Raises a `FileError` if that fails.
void print(std::string_view text);

/// Does the program's work and returns the exit status. An exception is reported as a failure, a
/// `UsageError` as misuse. When the reader of the output has gone, the work ends quietly as a
/// success. Writing fails, instead of ending the process, when a file reaches its size limit. An
/// interrupt that ends the process removes its temporary files. Must be called before any thread is
/// started.
int run_program(const std::string& program, const std::function<int()>& work);

}  // namespace qel::command
