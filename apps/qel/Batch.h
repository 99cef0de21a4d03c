#pragma once

#include <string>
#include <vector>

#include "qel/convert/Options.h"

namespace qel::command {

/// One file to convert; "-" is standard input or output.
struct Task {
  std::string input;
  std::string output;
};

/// One task for each file, which writes to `folder` under the file's own name with the extension of
/// `format`. Raises a `UsageError` when two would write the same file, or one would overwrite an
/// input file.
std::vector<Task> tasks_into(const std::string& folder, const std::vector<std::string>& files,
                             convert::OutputFormat format);

/// Converts the files, up to `jobs` at a time. A failure is reported on standard error, and the
/// other files go on. Returns whether all went well.
bool convert_files(const std::vector<Task>& tasks, const convert::Options& options,
                   std::size_t jobs);

}  // namespace qel::command
