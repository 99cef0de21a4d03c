#pragma once

#include <string>
#include <string_view>

#include "qel/model/RunSink.h"

namespace qel::rtf {

/// Writes runs as the body of an RTF document, with the words of the code table and of small
/// capitals. Text that is raised and lowered at once is raised.
class RtfBodyWriter : public RunSink {
 public:
  /// Appends to `out`, which may be emptied between two calls.
  explicit RtfBodyWriter(std::u16string& out) : out_(out) {}

  void text(std::u16string_view text, const style_codes::CodeState& state) override;
  void line_break(const style_codes::CodeState& state) override;
  void finish() override { enter({}); }

 private:
  void enter(style_codes::CodeState state);

  std::u16string& out_;
  style_codes::CodeState last_;
  std::u16string codes_;
};

}  // namespace qel::rtf
