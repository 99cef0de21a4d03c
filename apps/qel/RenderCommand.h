#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>

#include "TableOptions.h"
#include "TextSource.h"
#include "TextTask.h"

namespace qel::command {

/// `qel render`: markup as a picture.
class RenderCommand {
 public:
  /// Adds the options to `app`, which refer to this object then.
  explicit RenderCommand(CLI::App& app);
  RenderCommand(const RenderCommand&) = delete;
  RenderCommand& operator=(const RenderCommand&) = delete;

  bool is_asked_for() const { return app_.parsed(); }
  /// What the parsed arguments ask for. Raises a `UsageError` for arguments that do not fit.
  TextTask values() const;

 private:
  struct Picture {
    float width = 450;
    float margin = 10;
    float indent = 0;
    std::int16_t align = 0;
    std::int16_t label = 0;
    bool transparent = false;
    bool reveal_codes = false;
    bool hides_hidden = false;
    bool one_color = false;
    bool wraps = true;
  };

  static std::string drawn(const Picture& picture, const Tables& tables,
                           std::u16string_view markup);

  const CLI::App& app_;
  TextSource source_;
  std::string output_;
  std::string align_ = "left";
  bool no_wrap_ = false;
  Picture picture_;
  TableOptions tables_;
};

}  // namespace qel::command
