#include "qel/rtf/RtfBodyWriter.h"

#include <algorithm>
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

/// A word of the code table.
template <class Char>
class Word {
 public:
  constexpr Word() = default;
  constexpr explicit Word(std::u16string_view word) : size_(word.size()) {
    std::transform(word.begin(), word.end(), characters_.begin(),
                   [](char16_t c) { return static_cast<Char>(c); });
  }
  constexpr std::basic_string_view<Char> view() const { return {characters_.data(), size_}; }

 private:
  std::array<Char, 12> characters_ = {};
  std::size_t size_ = 0;
};

template <class Char>
struct Toggle {
  Word<Char> on;
  Word<Char> off;
};

/// The words of the attributes, in the order of their bits; none for Unicode.
template <class Char>
constexpr std::array<Toggle<Char>, 8> toggles = [] {
  constexpr std::u16string_view letters = u"biucksp";
  std::array<Toggle<Char>, 8> table;
  for (std::size_t bit = 0; bit < letters.size(); ++bit) {
    table[bit] = {Word<Char>(rtf_word(letters[bit], u'1')),
                  Word<Char>(rtf_word(letters[bit], u'0'))};
  }
  return table;
}();

}  // namespace

std::u16string document_head(QELIndexFonts& fonts, const QELIndexColors& colors,
                             platform::MeasuringSurface& surface, Way way) {
  std::u16string head = u"{\\rtf1\\ansi\\ansicpg1252\\deff0 ";
  head.append(fonts.font_table(&surface, way)).append(colors.get_ColorTable());
  head.append(u"{\\f0\\fs").append(records::from_integer(half_points(fonts.get_FontSize())));
  return head.append(u" ");
}

template <class Char>
void BasicRtfBodyWriter<Char>::text(std::basic_string_view<Char> text,
                                    const style_codes::CodeState& state) {
  enter(state);
  append_text(out_, text);
}

template <class Char>
void BasicRtfBodyWriter<Char>::line_break(const style_codes::CodeState& state) {
  enter(state);
  out_.append(ascii<Char, "\\par ">);
}

template <class Char>
void BasicRtfBodyWriter<Char>::enter(style_codes::CodeState state) {
  if (state == last_) return;
  state = shown_state(state);
  const bool other_font = state.font != last_.font;
  const bool other_color = state.color != last_.color;
  // In the order of the codes: what ends first, and each way the attributes innermost.
  if (other_font) append_index(ascii<Char, "\\f">, last_.font, 0);
  if (other_color) append_index(ascii<Char, "\\cf">, last_.color, 0);
  for (unsigned ends = last_.attributes & ~unsigned{state.attributes}; ends != 0;) {
    const auto highest = static_cast<std::size_t>(std::bit_width(ends)) - 1;
    out_.append(toggles<Char>[highest].off.view());
    ends &= ~(1U << highest);
  }
  for (unsigned begins = state.attributes & ~unsigned{last_.attributes}; begins != 0;
       begins &= begins - 1) {
    out_.append(toggles<Char>[static_cast<std::size_t>(std::countr_zero(begins))].on.view());
  }
  if (other_color) append_index(ascii<Char, "\\cf">, state.color, state.color);
  if (other_font) append_index(ascii<Char, "\\f">, state.font, state.font);
  last_ = state;
}

/// Writes the word with the number, if the index is one that has codes.
template <class Char>
void BasicRtfBodyWriter<Char>::append_index(std::basic_string_view<Char> word, int index,
                                            int number) {
  if (index < 1 || index > 9) return;
  out_.append(word).append({static_cast<Char>('0' + number), Char{' '}});
}

template class BasicRtfBodyWriter<char>;
template class BasicRtfBodyWriter<char16_t>;

}  // namespace qel::rtf
