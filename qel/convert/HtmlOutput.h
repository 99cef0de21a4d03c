#pragma once

#include <memory>
#include <type_traits>

#include "qel/convert/FormatUse.h"
#include "qel/convert/HtmlTags.h"
#include "qel/convert/HtmlWriter.h"
#include "qel/convert/Options.h"
#include "qel/convert/PreparedTables.h"
#include "qel/convert/Writer.h"

namespace qel::convert {

/// Writes HTML.
template <class Char>
class HtmlOutput final : public BasicWriter<Char> {
 public:
  /// `options` have to outlive this object.
  explicit HtmlOutput(const Options& options)
      : options_(options), writer_(this->out(), tags_of(options), options.html) {}

  void text(std::basic_string_view<Char> text, const style_codes::CodeState& state) override {
    used_.add(state);
    writer_.text(text, state);
  }
  void line_break(const style_codes::CodeState& state) override { writer_.line_break(state); }
  void finish() override { writer_.finish(); }
  void count_lacking(Dropped& dropped) const override {
    if (!options_.html.classes) dropped.fonts += used_.fonts_lacking(options_.fonts);
  }

 private:
  static std::shared_ptr<const HtmlTags<Char>> tags_of(const Options& options) {
    if constexpr (std::is_same_v<Char, char>) {
      if (options.prepared) return options.prepared->html_tags;
    }
    return std::make_shared<const HtmlTags<Char>>(options.fonts, *options.colors, options.html);
  }

  const Options& options_;
  FormatUse used_;
  BasicHtmlWriter<Char> writer_;
};

}  // namespace qel::convert
