#include "qel/text/Typesetter.h"

#include <algorithm>
#include <cmath>

#include "qel/base/Scan.h"
#include "qel/model/Parser.h"
#include "qel/model/QELCode.h"
#include "qel/model/ReservedColors.h"
#include "qel/text/VisibleCharacters.h"

namespace qel {
namespace {

using style_codes::CodeState;

constexpr std::u16string_view letters = u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

constexpr float script_scale = 2.0F / 3.0F;
constexpr float small_capitals_scale = 4.0F / 5.0F;
// As parts of the ascent at full size: letters of two thirds of the size then end at its top, or
// reach below the base line by about its descent.
constexpr float superscript_rise = 1.0F / 3.0F;
constexpr float subscript_drop = 0.15F;

constexpr bool has(const CodeState& state, style_codes::AttributeBit bit) {
  return (state.attributes & bit) != 0;
}

constexpr bool is_script(const CodeState& state) {
  return has(state, style_codes::superscript_bit) || has(state, style_codes::subscript_bit);
}

/// The first character that may not be shown as it is.
std::size_t find_special(std::u16string_view run, std::size_t from) {
  return find_any<u'<', u'\\'>(run, from);
}

}  // namespace

std::u16string shown_text(std::u16string_view run) {
  std::u16string shown;
  shown.reserve(run.size());
  for (std::size_t at = 0; at < run.size();) {
    const std::size_t special = find_special(run, at);
    shown.append(run.substr(at, special - at));
    if (special == run.size()) break;
    const std::u16string_view four = run.substr(special, 4);
    const bool is_placeholder = begins_with_placeholder(four);
    if (is_placeholder || visible::is_escape_code(four)) {
      shown.append(u"/").append(four.substr(is_placeholder ? 1 : 2, 2));
      at = special + 4;
      continue;
    }
    shown.push_back(run[special]);
    at = special + 1;
  }
  return shown;
}

Typesetter::Typesetter(const platform::Canvas& canvas, const QELIndexFonts& fonts)
    : canvas_(canvas) {
  for (std::size_t i = 0; i < names_.size(); ++i) {
    names_[i] = fonts.get_Font(static_cast<std::int16_t>(i));
    if (i == 0 || names_[i].empty() || names_[i] == u"<none>") names_[i] = canvas.get_FontName();
  }
}

const platform::TextFont& Typesetter::font(const CodeState& state, bool is_small_capital) {
  const bool is_index = state.font > 0 && state.font < static_cast<std::int16_t>(names_.size());
  const std::size_t name = is_index ? static_cast<std::size_t>(state.font) : 0;
  const bool bold = has(state, style_codes::bold_bit);
  const bool italic = has(state, style_codes::italic_bit);
  const std::size_t scale =
      (is_script(state) ? script : full) + (is_small_capital ? small_capitals : full);
  auto& made = made_[((name * 2 + (bold ? 1U : 0U)) * 2 + (italic ? 1U : 0U)) * scales + scale];
  if (!made) {
    const float size = canvas_.get_FontSize() * (is_script(state) ? script_scale : 1) *
                       (is_small_capital ? small_capitals_scale : 1);
    made = platform::TextFont{names_[name], size, bold, italic};
  }
  return *made;
}

float Typesetter::text_width(std::u16string_view text, const CodeState& state) {
  float width = 0;
  for_each_part(text, state, [&](std::u16string_view part, const platform::TextFont& part_font) {
    width += canvas_.text_width(part, part_font);
  });
  return width;
}

float Typesetter::end_of_text(std::u16string_view text, const CodeState& state, float x,
                              const LineStart& line) {
  for (std::size_t at = 0;; ++at) {
    const std::size_t tab = find_any<u'\t'>(text, at);
    x += text_width(text.substr(at, tab - at), state);
    if (tab == text.size()) return x;
    x = after_tab(x, line);
    at = tab;
  }
}

float Typesetter::after_tab(float x, const LineStart& line) {
  const float distance = tab_distance();
  if (!(distance > 0)) return x;
  // Text that is hardly shorter goes on at the next stop.
  const float least = distance / 100;
  const float at = x + line.from_margin + least;
  const float stop =
      at < line.hanging_indent ? line.hanging_indent : (std::floor(at / distance) + 1) * distance;
  return std::max(x, stop - line.from_margin);
}

float Typesetter::tab_distance() {
  constexpr float letters_between = 8;
  if (!tab_distance_) {
    tab_distance_ = canvas_.text_width(letters, font({}, false)) * letters_between /
                    static_cast<float>(letters.size());
  }
  return *tab_distance_;
}

float Typesetter::markup_width(std::u16string_view markup, bool with_hidden, Way way) {
  std::u16string with_protected;
  if (way == Way::stated && find_any<u'~'>(markup, 0) != markup.size()) {
    with_protected = protect_escaped_codes(markup);
    markup = with_protected;
  }
  float width = 0;
  MarkupScanner scanner(markup, way);
  for (auto item = scanner.next(); item != MarkupScanner::Item::end; item = scanner.next()) {
    if (item == MarkupScanner::Item::line_break) continue;
    const CodeState state = scanner.state();
    if (!with_hidden && state.color == hidden_color) continue;
    const bool is_simple =
        way == Way::lossless || find_special(scanner.text(), 0) == scanner.text().size();
    width = is_simple ? end_of_text(scanner.text(), state, width, {})
                      : end_of_text(shown_text(scanner.text()), state, width, {});
  }
  return width;
}

float Typesetter::revealed_width(std::u16string_view markup) {
  return end_of_text(markup, {}, 0, {});
}

platform::FontExtent Typesetter::extent(const CodeState& state) {
  CodeState full_size = state;
  full_size.attributes &= static_cast<std::uint8_t>(
      ~unsigned{style_codes::superscript_bit | style_codes::subscript_bit});
  return canvas_.font_extent(font(full_size, false));
}

float Typesetter::rise(const CodeState& state) {
  if (!is_script(state)) return 0;
  const float ascent = extent(state).ascent;
  return has(state, style_codes::superscript_bit) ? superscript_rise * ascent
                                                  : -subscript_drop * ascent;
}

std::vector<float> Typesetter::sample_widths() const {
  std::vector<float> widths;
  for (const auto& made : made_) {
    if (made) widths.push_back(canvas_.text_width(letters, *made));
  }
  return widths;
}

}  // namespace qel
