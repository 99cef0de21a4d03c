#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "InputPaths.h"
#include "Reports.h"
#include "qel/convert/Options.h"

namespace qel::command {

/// One file to convert; "-" is standard input or output.
struct Task {
  std::string input;
  std::string output;
};

struct BatchOptions {
  convert::Options conversion;
  std::size_t jobs = 1;  ///< how many files are converted at a time
  ReportStyle report = ReportStyle::summary;
  bool skips_newer = false;  ///< leaves an output alone that is newer than its input
};

/// One task for each file, which writes to `folder` under the file's own name with the extension of
/// `format`. Raises a `UsageError` when two would write the same file, or one would overwrite an
/// input file.
std::vector<Task> tasks_into(const std::string& folder, const std::vector<InputPath>& files,
                             convert::OutputFormat format);

/// Converts the files. A failure is reported on standard error, and the other files go on. Returns
/// whether all went well.
bool convert_files(const std::vector<Task>& tasks, const BatchOptions& options);

}  // namespace qel::command
