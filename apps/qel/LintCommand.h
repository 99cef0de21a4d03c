#pragma once

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "TableOptions.h"
#include "qel/model/QELCode.h"

namespace qel::command {

/// What to check, and how to tell what was found.
struct LintTask {
  std::vector<std::string> files;  ///< "-" is standard input
  std::shared_ptr<const Tables> tables;
  Way way = Way::lossless;
  bool as_json = false;
};

/// Writes the findings to standard output. Returns the exit status: whether there are none. A file
/// that cannot be read is reported, and the others are checked all the same.
int run(const LintTask& task);

/// `qel lint`: what in markup may not be what its author meant.
class LintCommand {
 public:
  /// Adds the options to `app`; they refer to this object.
  explicit LintCommand(CLI::App& app);
  LintCommand(const LintCommand&) = delete;
  LintCommand& operator=(const LintCommand&) = delete;

  bool is_asked_for() const { return app_.parsed(); }
  /// What the parsed arguments ask for. Raises a `UsageError` for arguments that are not valid.
  LintTask values(Way way) const;

 private:
  const CLI::App& app_;
  std::vector<std::string> files_;
  bool as_json_ = false;
  TableOptions tables_;
};

}  // namespace qel::command
