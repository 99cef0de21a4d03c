#pragma once

#include <CLI/CLI.hpp>

#include "UsageError.h"

namespace qel::command {

/// The message for arguments that `app` did not accept: one line, with the command that shows the
/// help.
UsageError usage_error(const CLI::App& app, int argc, const char* const* argv,
                       const CLI::ParseError& error);

}  // namespace qel::command
