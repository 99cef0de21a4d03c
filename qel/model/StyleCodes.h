#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "qel/model/iStyle.h"

/// The code builders of `iStyle` as the decoder and the encoder use them: they work on the few
/// bytes of a style that have codes, and append to a buffer.
namespace qel::style_codes {

enum class CodeSet : std::uint8_t {
  current,
  v6,
  lossless,  ///< the current codes, but no font goes where a colour comes on
};

/// The attributes with a code, as bits in the order in which they are switched on.
enum AttributeBit : std::uint8_t {
  bold_bit = 1,
  italic_bit = 2,
  underline_bit = 4,
  small_caps_bit = 8,
  strike_through_bit = 16,
  subscript_bit = 32,
  superscript_bit = 64,
  unicode_bit = 128,
};

/// The part of a style that has codes.
struct CodeState {
  std::uint8_t attributes = 0;  ///< `AttributeBit`s
  std::int16_t font = 0;
  std::int16_t color = 0;

  friend bool operator==(const CodeState&, const CodeState&) = default;
};

/// The bit of the attribute whose codes have this letter; 0 for a letter that no attribute has.
constexpr unsigned attribute_bit(char16_t letter) {
  switch (letter) {
    case u'b':
      return bold_bit;
    case u'i':
      return italic_bit;
    case u'u':
      return underline_bit;
    case u'c':
      return small_caps_bit;
    case u'k':
      return strike_through_bit;
    case u's':
      return subscript_bit;
    case u'p':
      return superscript_bit;
    case u't':
      return unicode_bit;
    default:
      return 0;
  }
}

CodeState state_of(const iStyle& style);
/// A default style with these attributes, font and colour.
iStyle style_of(const CodeState& state);

// What follows is for texts in UTF-16 and in UTF-8.

/// A code that restates a part of the state, and that every reader of markup knows.
template <class Char>
std::basic_string_view<Char> code_of_no_effect(const CodeState& state);
/// The same, with a code that a tilde before it does not make text.
template <class Char>
std::basic_string_view<Char> code_behind_tilde(const CodeState& state);

template <class Char>
void append_on(std::basic_string<Char>& out, const CodeState& state, CodeSet set);
template <class Char>
void append_off(std::basic_string<Char>& out, const CodeState& state, CodeSet set);
template <class Char>
void append_different_on(std::basic_string<Char>& out, const CodeState& state,
                         const CodeState& last, CodeSet set);
/// `next` is null after the last run: everything is switched off.
template <class Char>
void append_different_off(std::basic_string<Char>& out, const CodeState& state,
                          const CodeState* next, CodeSet set);

}  // namespace qel::style_codes
