#include "qel/rtf/RtfBodyWriter.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>

#include "qel/base/Error.h"
#include "qel/base/Records.h"
#include "qel/rtf/CodeTable.h"

namespace qel::rtf {
namespace {

std::int64_t half_points(float points) {
  const double size = std::nearbyint(static_cast<double>(points) * 2);
  // NaN fails this comparison too.
  if (!(size >= 0 && size <= std::numeric_limits<std::int16_t>::max())) {
    throw Error(Error::overflow, "RTFParser",
                "QELToRTF: FontSize " + std::to_string(points) + " is no size that RTF can hold");
  }
  return static_cast<std::int64_t>(size);
}

struct Toggle {
  std::u16string_view on;
  std::u16string_view off;
};

/// The words of the attributes, in the order of their bits; none for Unicode.
constexpr std::array<Toggle, 8> toggles = [] {
  constexpr std::u16string_view letters = u"biucksp";
  std::array<Toggle, 8> table;
  for (std::size_t bit = 0; bit < letters.size(); ++bit) {
    table[bit] = {rtf_word(letters[bit], u'1'), rtf_word(letters[bit], u'0')};
  }
  return table;
}();
constexpr std::u16string_view font_word = u"\\f";
constexpr std::u16string_view color_word = u"\\cf";

}  // namespace

std::u16string document_head(QELIndexFonts& fonts, const QELIndexColors& colors,
                             platform::MeasuringSurface& surface, Way way) {
  std::u16string head = u"{\\rtf1\\ansi\\ansicpg1252\\deff0 ";
  head.append(fonts.font_table(&surface, way)).append(colors.get_ColorTable());
  head.append(u"{\\f0\\fs").append(records::from_integer(half_points(fonts.get_FontSize())));
  return head.append(u" ");
}

void RtfBodyWriter::text(std::u16string_view text, const style_codes::CodeState& state) {
  enter(state);
  append_text(out_, text);
}

void RtfBodyWriter::line_break(const style_codes::CodeState& state) {
  enter(state);
  out_.append(u"\\par ");
}

void RtfBodyWriter::enter(style_codes::CodeState state) {
  if (state == last_) return;
  state = shown_state(state);
  const bool other_font = state.font != last_.font;
  const bool other_color = state.color != last_.color;
  // In the order of the codes: what ends first, and each way the attributes innermost.
  if (other_font) append_index(font_word, last_.font, 0);
  if (other_color) append_index(color_word, last_.color, 0);
  for (unsigned ends = last_.attributes & ~unsigned{state.attributes}; ends != 0;) {
    const auto highest = static_cast<std::size_t>(std::bit_width(ends)) - 1;
    out_.append(toggles[highest].off);
    ends &= ~(1U << highest);
  }
  for (unsigned begins = state.attributes & ~unsigned{last_.attributes}; begins != 0;
       begins &= begins - 1) {
    out_.append(toggles[static_cast<std::size_t>(std::countr_zero(begins))].on);
  }
  if (other_color) append_index(color_word, state.color, state.color);
  if (other_font) append_index(font_word, state.font, state.font);
  last_ = state;
}

/// Writes the word with the number, if the index is one that has codes.
void RtfBodyWriter::append_index(std::u16string_view word, int index, int number) {
  if (index < 1 || index > 9) return;
  out_.append(word).append({static_cast<char16_t>(u'0' + number), u' '});
}

}  // namespace qel::rtf
