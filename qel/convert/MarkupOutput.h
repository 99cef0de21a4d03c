#pragma once

#include "qel/base/Ascii.h"
#include "qel/convert/FormatUse.h"
#include "qel/convert/Writer.h"
#include "qel/model/LosslessMarkup.h"

namespace qel::convert {

/// Writes markup in the lossless way, or the older code set.
template <class Char>
class MarkupOutput : public BasicWriter<Char> {
 public:
  /// With `from_markup`, the runs were read from markup: line breaks then have no style, and what
  /// only conversions to RTF read as a code stays.
  MarkupOutput(style_codes::CodeSet set, bool from_markup)
      : BasicWriter<Char>(Markup::characters_needed),
        from_markup_(from_markup),
        markup_(this->out(), set) {}

  void text(std::basic_string_view<Char> text, const style_codes::CodeState& state) override {
    markup_.text(text, state, from_markup_ ? Markup::Text::markup : Markup::Text::any);
  }
  void line_break(const style_codes::CodeState& state) override {
    if (from_markup_) {
      markup_.line_breaks(1);
    } else {
      markup_.text(ascii<Char, "\n">, state);
    }
  }
  void finish() override { finish(false); }
  /// With `is_cut`, more of the text may be put behind its end.
  void finish(bool is_cut) { markup_.finish(is_cut); }

 private:
  using Markup = BasicLosslessMarkup<Char>;

  void forget(std::size_t count) override { markup_.forget(count); }

  bool from_markup_;
  Markup markup_;
};

/// Writes the older code set, and takes note of what it has no codes for.
template <class Char>
class OlderMarkupOutput : public MarkupOutput<Char> {
 public:
  explicit OlderMarkupOutput(bool from_markup)
      : MarkupOutput<Char>(style_codes::CodeSet::v6, from_markup) {}

  void text(std::basic_string_view<Char> text, const style_codes::CodeState& state) override {
    used_.add(state);
    MarkupOutput<Char>::text(text, state);
  }
  void count_lacking(Dropped& dropped) const override { used_.count_lacking_in_v6(dropped); }

 private:
  FormatUse used_;
};

}  // namespace qel::convert
