#include "qel/model/StyleCodes.h"

#include <array>
#include <bit>
#include <cstddef>

#include "qel/base/Ascii.h"

namespace qel::style_codes {
namespace {

struct Attribute {
  bool iStyle::*field;
  char letter;
};

/// In the order of their bits, from the lowest, in which they are switched on; they are switched
/// off in reverse.
constexpr std::array attributes = {
    Attribute{&iStyle::Bold, 'b'},        Attribute{&iStyle::Italic, 'i'},
    Attribute{&iStyle::Underline, 'u'},   Attribute{&iStyle::SmallCaps, 'c'},
    Attribute{&iStyle::StrikeThru, 'k'},  Attribute{&iStyle::Subscript, 's'},
    Attribute{&iStyle::Superscript, 'p'}, Attribute{&iStyle::Unicode, 't'},
};

unsigned in_set(unsigned bits, CodeSet set) {
  constexpr unsigned not_in_v6 = strike_through_bit | unicode_bit;
  return set == CodeSet::v6 ? bits & ~not_in_v6 : bits;
}

bool is_index(std::int16_t index) { return index >= 1 && index <= 9; }

template <class Char>
void append_code(std::basic_string<Char>& out, char letter, int digit) {
  const std::array<Char, 3> code = {'/', static_cast<Char>(letter), static_cast<Char>('0' + digit)};
  out.append(code.data(), code.size());
}

template <class Char>
void append_attributes_on(std::basic_string<Char>& out, unsigned bits) {
  for (; bits != 0; bits &= bits - 1) {
    append_code(out, attributes[static_cast<std::size_t>(std::countr_zero(bits))].letter, 1);
  }
}

template <class Char>
void append_attributes_off(std::basic_string<Char>& out, unsigned bits) {
  while (bits != 0) {
    const auto highest = static_cast<std::size_t>(std::bit_width(bits)) - 1;
    append_code(out, attributes[highest].letter, 0);
    bits &= ~(1U << highest);
  }
}

/// In v6, colour 2 has a letter of its own and colours from 3 on have none.
char color_letter(std::int16_t color, CodeSet set) {
  if (set != CodeSet::v6 || color == 1) return 'y';
  return color == 2 ? 'z' : '\0';
}

template <class Char>
void append_color_on(std::basic_string<Char>& out, std::int16_t color, CodeSet set) {
  const char letter = color_letter(color, set);
  if (is_index(color) && letter != 0) append_code(out, letter, letter == 'z' ? 1 : color);
}

template <class Char>
void append_color_off(std::basic_string<Char>& out, std::int16_t color, CodeSet set) {
  const char letter = color_letter(color, set);
  if (is_index(color) && letter != 0) append_code(out, letter, 0);
}

template <class Char>
void append_font_on(std::basic_string<Char>& out, std::int16_t font, CodeSet set) {
  if (!is_index(font) || (set == CodeSet::v6 && font > 2)) return;
  append_code(out, 'f', font);
}

// No v6 code switches fonts 3 to 9 on, yet they are switched off in v6 too.
template <class Char>
void append_font_off(std::basic_string<Char>& out, std::int16_t font) {
  if (is_index(font)) append_code(out, 'f', 0);
}

}  // namespace

CodeState state_of(const iStyle& style) {
  unsigned bits = 0;
  for (std::size_t i = 0; i < attributes.size(); ++i) {
    if (style.*attributes[i].field) bits |= 1U << i;
  }
  return {static_cast<std::uint8_t>(bits), style.FontID, style.ColorID};
}

iStyle style_of(const CodeState& state) {
  iStyle style;
  for (std::size_t i = 0; i < attributes.size(); ++i) {
    style.*attributes[i].field = (state.attributes >> i & 1U) != 0;
  }
  style.FontID = state.font;
  style.ColorID = state.color;
  return style;
}

template <class Char>
void append_on(std::basic_string<Char>& out, const CodeState& state, CodeSet set) {
  append_attributes_on(out, in_set(state.attributes, set));
  append_color_on(out, state.color, set);
  append_font_on(out, state.font, set);
}

template <class Char>
void append_off(std::basic_string<Char>& out, const CodeState& state, CodeSet set) {
  append_font_off(out, state.font);
  append_color_off(out, state.color, set);
  append_attributes_off(out, in_set(state.attributes, set));
}

template <class Char>
void append_different_on(std::basic_string<Char>& out, const CodeState& state,
                         const CodeState& last, CodeSet set) {
  append_attributes_on(out, in_set(state.attributes & ~unsigned{last.attributes}, set));
  // Where a colour is on and the font stays, the font is switched off and not on again. A font out
  // of range has no codes, so it is not switched off either.
  if (set == CodeSet::current && state.color != 0 && is_index(last.font) &&
      state.font == last.font) {
    append_code(out, 'f', 0);
  }
  if (state.color != last.color) append_color_on(out, state.color, set);
  if (state.font != last.font) append_font_on(out, state.font, set);
}

template <class Char>
void append_different_off(std::basic_string<Char>& out, const CodeState& state,
                          const CodeState* next, CodeSet set) {
  if (next == nullptr) {
    append_off(out, state, set);
    return;
  }
  if (state.font != next->font) append_font_off(out, state.font);
  if (state.color != next->color) append_color_off(out, state.color, set);
  append_attributes_off(out, in_set(state.attributes & ~unsigned{next->attributes}, set));
}

template <class Char>
std::basic_string_view<Char> code_of_no_effect(const CodeState& state) {
  return (state.attributes & bold_bit) != 0 ? ascii<Char, "/b1"> : ascii<Char, "/b0">;
}

template <class Char>
std::basic_string_view<Char> code_behind_tilde(const CodeState& state) {
  return (state.attributes & small_caps_bit) != 0 ? ascii<Char, "/c1"> : ascii<Char, "/c0">;
}

template std::string_view code_of_no_effect(const CodeState&);
template std::u16string_view code_of_no_effect(const CodeState&);
template std::string_view code_behind_tilde(const CodeState&);
template std::u16string_view code_behind_tilde(const CodeState&);
template void append_on(std::string&, const CodeState&, CodeSet);
template void append_on(std::u16string&, const CodeState&, CodeSet);
template void append_off(std::string&, const CodeState&, CodeSet);
template void append_off(std::u16string&, const CodeState&, CodeSet);
template void append_different_on(std::string&, const CodeState&, const CodeState&, CodeSet);
template void append_different_on(std::u16string&, const CodeState&, const CodeState&, CodeSet);
template void append_different_off(std::string&, const CodeState&, const CodeState*, CodeSet);
template void append_different_off(std::u16string&, const CodeState&, const CodeState*, CodeSet);

}  // namespace qel::style_codes
