#pragma once

#include <cstdint>

#include "qel/convert/Writer.h"
#include "qel/model/StyleCodes.h"

namespace qel::convert {

/// Writes the runs of a text as a JSON array with one object per line. Line codes behind the last
/// run stand before an empty one.
class RunsJson : public Writer {
 public:
  RunsJson() { out().append(u"["); }

  void text(std::u16string_view text, const style_codes::CodeState& state) override;
  void line_break(const style_codes::CodeState& /*state*/) override {
    end_run();
    ++line_codes_;
  }
  void finish() override;

 private:
  void begin_run(const style_codes::CodeState& state);
  void end_run();

  bool is_first_ = true;
  bool is_open_ = false;  // whether the text of a run is being written
  style_codes::CodeState state_;
  std::int32_t line_codes_ = 0;  // before the run
};

}  // namespace qel::convert
