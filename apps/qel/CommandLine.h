#pragma once

#include <string>

#include "ConvertCommand.h"
#include "LintCommand.h"
#include "Tables.h"
#include "TextTask.h"

namespace qel::command {

/// What the arguments ask for.
struct CommandLine {
  enum class Action {
    print,    ///< `text`: the help or the version
    convert,  ///< `conversions`
    tables,   ///< print the records of `tables`
    text,     ///< `task`
    lint,     ///< `checks`
  };

  Action action = Action::print;
  std::string text;
  Conversions conversions;
  Tables tables;
  TextTask task;
  LintTask checks;
};

/// Raises a `UsageError` for arguments that are not valid, a `FileError` when the file of the
/// tables cannot be read, and a `TableError` when it does not hold tables.
CommandLine parse_command_line(int argc, const char* const* argv);

}  // namespace qel::command
