#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace qel::command {

/// A text that a task cannot work on; the message says why.
class TaskError : public std::runtime_error {
 public:
  using runtime_error::runtime_error;
};

/// What a task has to say, as bytes, and the exit status.
struct TaskResult {
  std::string output;
  int status = 0;
  bool is_markup = false;  ///< ends as the text that was read does, with a line break or without
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
/// `FileError`, or a `TaskError` for a text that is RTF.
int run(const TextTask& task);

}  // namespace qel::command
