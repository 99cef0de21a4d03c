#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace qel::command {

/// A text that a task cannot process; the message says why.
class TaskError : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// The markup of a file. Raises a `FileError`, or a `TaskError` for a file that is RTF or binary.
std::u16string read_markup(const std::string& file);

/// Removes the line break at the end, which is not part of a file's markup, and returns it.
std::u16string take_last_break(std::u16string& text);

/// The output of a task, and the exit status.
struct TaskResult {
  std::string output;
  int status = 0;
  bool is_markup = false;  ///< gets the line break with which the text that was read ended, if any
};

/// One piece of work on markup texts.
struct TextTask {
  std::vector<std::string> files;   ///< "-" is standard input
  std::optional<std::string> text;  ///< read in place of the first file
  std::string output = "-";
  /// Gets one text for each file, without the line break at its end.
  std::function<TaskResult(const std::vector<std::u16string>& texts)> run;
};

/// Reads the texts, does the work and writes the output. Returns the exit status; raises a
/// `FileError`, or a `TaskError` for a file that is RTF or binary.
int run(const TextTask& task);

}  // namespace qel::command
