#pragma once

#include "qel/convert/Writer.h"

namespace qel::convert {

/// Writes plain text.
class TextOutput : public Writer {
 public:
  /// `line_break` is a literal.
  explicit TextOutput(std::u16string_view line_break) : line_break_(line_break) {}

  void text(std::u16string_view text, const style_codes::CodeState& /*state*/) override {
    out().append(text);
  }
  void line_break(const style_codes::CodeState& /*state*/) override { out().append(line_break_); }
  void finish() override {}

 private:
  std::u16string_view line_break_;
};

}  // namespace qel::convert
