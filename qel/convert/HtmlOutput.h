#pragma once

#include "qel/convert/HtmlWriter.h"
#include "qel/convert/Options.h"
#include "qel/convert/Writer.h"

namespace qel::convert {

/// Writes HTML.
class HtmlOutput : public Writer {
 public:
  explicit HtmlOutput(const Options& options)
      : writer_(out(), options.fonts, *options.colors, options.html) {}

  void text(std::u16string_view text, const style_codes::CodeState& state) override {
    writer_.text(text, state);
  }
  void line_break(const style_codes::CodeState& state) override { writer_.line_break(state); }
  void finish() override { writer_.finish(); }

 private:
  HtmlWriter writer_;
};

}  // namespace qel::convert
