#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>

namespace qel::command {

/// Accepts whole decimal numbers within these limits.
CLI::Validator whole_number(std::int64_t least, std::int64_t most);
/// Accepts decimal numbers, with a fraction or without, within these limits.
CLI::Validator decimal_number(double least, double most);

}  // namespace qel::command
