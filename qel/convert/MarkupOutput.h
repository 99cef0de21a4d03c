#pragma once

#include "qel/convert/FormatUse.h"
#include "qel/convert/Writer.h"
#include "qel/model/LosslessMarkup.h"

namespace qel::convert {

/// Writes markup in the lossless way, or the older code set.
class MarkupOutput : public Writer {
 public:
  /// With `from_markup`, the runs were read from markup: line breaks then have no style, and what
  /// only conversions to RTF read as a code stays.
  MarkupOutput(style_codes::CodeSet set, bool from_markup)
      : Writer(LosslessMarkup::characters_needed), from_markup_(from_markup), markup_(out(), set) {}

  void text(std::u16string_view text, const style_codes::CodeState& state) override {
    markup_.text(text, state,
                 from_markup_ ? LosslessMarkup::Text::markup : LosslessMarkup::Text::any);
  }
  void line_break(const style_codes::CodeState& state) override {
    if (from_markup_) {
      markup_.line_breaks(1);
    } else {
      markup_.text(u"\n", state);
    }
  }
  void finish() override { markup_.finish(false); }

 private:
  void forget(std::size_t count) override { markup_.forget(count); }

  bool from_markup_;
  LosslessMarkup markup_;
};

/// Writes the older code set, and takes note of what it has no codes for.
class OlderMarkupOutput : public MarkupOutput {
 public:
  explicit OlderMarkupOutput(bool from_markup)
      : MarkupOutput(style_codes::CodeSet::v6, from_markup) {}

  void text(std::u16string_view text, const style_codes::CodeState& state) override {
    used_.add(state);
    MarkupOutput::text(text, state);
  }
  void count_lacking(Dropped& dropped) const override { used_.count_lacking_in_v6(dropped); }

 private:
  FormatUse used_;
};

}  // namespace qel::convert
