#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "LintCommand.h"
#include "Tables.h"
#include "TextTask.h"
#include "qel/convert/Options.h"

namespace qel::command {

/// What the arguments ask for.
struct CommandLine {
  enum class Action {
    print,    ///< `text`: the help or the version
    convert,  ///< `files` as `options` say
    tables,   ///< print the records of `tables`
    text,     ///< `task`
    lint,     ///< `checks`
  };

  Action action = Action::print;
  std::string text;
  std::vector<std::string> files;  ///< "-" is standard input; never empty
  std::string output = "-";        ///< where to write the one file, unless there is a folder
  std::optional<std::string> folder;
  std::size_t jobs = 1;
  convert::Options options;
  Tables tables;  ///< those of `options`, where there are any
  TextTask task;
  LintTask checks;
};

/// Raises a `UsageError` for arguments that are not valid, a `FileError` when the file of the
/// tables cannot be read, and a `TableError` when it does not hold tables.
CommandLine parse_command_line(int argc, const char* const* argv);

}  // namespace qel::command
