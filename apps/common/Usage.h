#pragma once

#include <CLI/CLI.hpp>

#include "UsageError.h"

namespace qel::command {

/// What to say of arguments that `app` did not take: on one line, with the call that helps further.
UsageError usage_error(const CLI::App& app, int argc, const char* const* argv,
                       const CLI::ParseError& error);

}  // namespace qel::command
