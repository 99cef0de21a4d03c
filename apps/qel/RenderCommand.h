#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "Picture.h"
#include "TableOptions.h"
#include "TextSource.h"
#include "TextTask.h"
#include "qel/model/QELCode.h"

namespace qel::command {

/// `qel render`: markup as a picture.
class RenderCommand {
 public:
  /// Adds the options to `app`; they refer to this object.
  explicit RenderCommand(CLI::App& app);
  RenderCommand(const RenderCommand&) = delete;
  RenderCommand& operator=(const RenderCommand&) = delete;

  bool is_asked_for() const { return app_.parsed(); }
  /// What the parsed arguments ask for. Raises a `UsageError` for arguments that are not valid.
  TextTask values(Way way) const;

 private:
  const CLI::App& app_;
  TextSource source_;
  std::string output_;
  std::string align_ = "left";
  bool no_wrap_ = false;
  Picture picture_;
  TableOptions tables_;
};

}  // namespace qel::command
