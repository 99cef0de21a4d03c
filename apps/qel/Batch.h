#pragma once

#include <string>
#include <vector>

#include "Conversion.h"

namespace qel::command {

/// One file to convert; "-" is standard input or output.
struct Task {
  std::string input;
  std::string output;
};

/// The tasks that put each file into `folder` under its own name with the extension of `format`.
/// Raises a `UsageError` when two would write the same file, or one would overwrite a file that is
/// read.
std::vector<Task> tasks_into(const std::string& folder, const std::vector<std::string>& files,
                             OutputFormat format);

/// Converts the files, up to `jobs` at a time. One that fails is reported on standard error, and
/// the others go on. Whether all went well.
bool convert_files(const std::vector<Task>& tasks, const ConversionOptions& options,
                   std::size_t jobs);

}  // namespace qel::command
