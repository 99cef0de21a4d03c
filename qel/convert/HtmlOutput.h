#pragma once

#include "qel/convert/HtmlWriter.h"
#include "qel/convert/Options.h"
#include "qel/convert/Writer.h"

namespace qel::convert {

/// Writes HTML.
template <class Char>
class HtmlOutput final : public BasicWriter<Char> {
 public:
  explicit HtmlOutput(const Options& options)
      : writer_(this->out(), options.fonts, *options.colors, options.html) {}

  void text(std::basic_string_view<Char> text, const style_codes::CodeState& state) override {
    writer_.text(text, state);
  }
  void line_break(const style_codes::CodeState& state) override { writer_.line_break(state); }
  void finish() override { writer_.finish(); }

 private:
  BasicHtmlWriter<Char> writer_;
};

}  // namespace qel::convert
