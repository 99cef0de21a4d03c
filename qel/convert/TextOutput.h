#pragma once

#include "qel/convert/Writer.h"

namespace qel::convert {

/// Writes plain text.
template <class Char>
class TextOutput final : public BasicWriter<Char> {
 public:
  /// `line_break` is a literal.
  explicit TextOutput(std::basic_string_view<Char> line_break) : line_break_(line_break) {}

  void text(std::basic_string_view<Char> text, const style_codes::CodeState& /*state*/) override {
    this->out().append(text);
  }
  void line_break(const style_codes::CodeState& /*state*/) override {
    this->out().append(line_break_);
  }
  void finish() override {}

 private:
  std::basic_string_view<Char> line_break_;
};

}  // namespace qel::convert
