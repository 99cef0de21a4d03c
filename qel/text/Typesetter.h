#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qel/base/CaseMapping.h"
#include "qel/model/QELCode.h"
#include "qel/model/StyleCodes.h"
#include "qel/platform/Canvas.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel {

/// The characters of a run as a reader sees them: an escaped code, in either spelling, shows as the
/// code itself.
std::u16string shown_text(std::u16string_view run);

/// Where a line begins, for the stops of its tabs: they are counted from the margin.
struct LineStart {
  float from_margin = 0;
  float hanging_indent = 0;  ///< of its paragraph: the first stop
};

/// Decides which font a run is set in, and measures it. Text in font 0 has the font that the canvas
/// had when this object was made.
class Typesetter {
 public:
  /// Both have to outlive this object; the fonts must not change.
  Typesetter(const platform::Canvas& canvas, const QELIndexFonts& fonts);

  /// Calls `visit(text, font)` with each part of `text` that is in one font: small capitals are
  /// made of capitals of two sizes.
  template <class Visit>
  void for_each_part(std::u16string_view text, const style_codes::CodeState& state, Visit visit);

  /// Width of a text without tabs as a reader sees it.
  float text_width(std::u16string_view text, const style_codes::CodeState& state);
  /// Where text ends that begins at `x` of its line.
  float end_of_text(std::u16string_view text, const style_codes::CodeState& state, float x,
                    const LineStart& line);
  /// Where text goes on behind a tab at `x` of its line: at the hanging indent, and every 8 average
  /// letters of the canvas's font.
  float after_tab(float x, const LineStart& line);
  /// Width of markup with its codes applied, at the beginning of a line without an indent; without
  /// text in colour 2 unless `with_hidden`.
  float markup_width(std::u16string_view markup, bool with_hidden, Way way);
  /// Width of the same text with the codes shown.
  float revealed_width(std::u16string_view markup);

  /// The extent of a run's font at its full size, even where the run is drawn smaller.
  platform::FontExtent extent(const style_codes::CodeState& state);
  /// How far the base line of a run lies above that of its line, in canvas units.
  float rise(const style_codes::CodeState& state);

  /// How wide some letters are now in each font that was asked for: what was measured before holds
  /// as long as these stay the same.
  std::vector<float> sample_widths() const;

 private:
  enum Scale : std::size_t { full, script, small_capitals, small_capitals_in_script, scales };

  const platform::TextFont& font(const style_codes::CodeState& state, bool is_small_capital);

  float tab_distance();

  const platform::Canvas& canvas_;
  std::optional<float> tab_distance_;
  std::array<std::u16string, 10> names_;
  // By font, weight, slant and scale.
  std::array<std::optional<platform::TextFont>, std::size_t{10} * 2 * 2 * scales> made_;
};

template <class Visit>
void Typesetter::for_each_part(std::u16string_view text, const style_codes::CodeState& state,
                               Visit visit) {
  if ((state.attributes & style_codes::small_caps_bit) == 0) {
    visit(text, font(state, false));
    return;
  }
  const std::u16string capitals = to_upper(text);
  const std::u16string_view shown = capitals;
  std::size_t begin = 0;
  for (std::size_t at = 1; at <= text.size(); ++at) {
    const bool is_small = text[begin] != shown[begin];
    const bool goes_on = at < text.size() && (text[at] != shown[at]) == is_small;
    if (goes_on) continue;
    visit(shown.substr(begin, at - begin), font(state, is_small));
    begin = at;
  }
}

}  // namespace qel
