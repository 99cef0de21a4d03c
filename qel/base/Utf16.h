#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Characters of a text in UTF-16. A lone surrogate is a character of its own.
namespace qel {

constexpr bool is_high_surrogate(char32_t unit) { return (unit & 0xFFFFFC00U) == 0xD800U; }
constexpr bool is_low_surrogate(char32_t unit) { return (unit & 0xFFFFFC00U) == 0xDC00U; }

/// How many code units the character takes: 1 or 2.
constexpr std::size_t units_of(char32_t character) { return character > 0xFFFFU ? 2 : 1; }

/// The pair that a character beyond U+FFFF is.
constexpr char16_t high_surrogate_of(char32_t character) {
  return static_cast<char16_t>(0xD7C0U + (character >> 10U));
}
constexpr char16_t low_surrogate_of(char32_t character) {
  return static_cast<char16_t>(0xDC00U + (character & 0x3FFU));
}

/// The character that begins at `at`, which lies within the text.
constexpr char32_t character_at(std::u16string_view text, std::size_t at) {
  const char32_t unit = text[at];
  if (!is_high_surrogate(unit) || at + 1 >= text.size() || !is_low_surrogate(text[at + 1])) {
    return unit;
  }
  return 0x10000U + ((unit - 0xD800U) << 10U) + (static_cast<char32_t>(text[at + 1]) - 0xDC00U);
}

/// The same; `at` moves past it, and a lone surrogate reads as U+FFFD.
constexpr char32_t next_character(std::u16string_view text, std::size_t& at) {
  const char32_t character = character_at(text, at);
  at += units_of(character);
  return (character & 0xFFFFF800U) == 0xD800U ? U'\uFFFD' : character;
}

/// Whether a surrogate pair begins at `at`, which lies within the text.
constexpr bool is_pair_at(std::u16string_view text, std::size_t at) {
  return units_of(character_at(text, at)) == 2;
}

/// The position one step after or before `at`, as a caret moves: CR LF is one step, and so is a
/// surrogate pair. Neither leaves the text.
constexpr std::size_t step_after(std::u16string_view text, std::size_t at) {
  if (at >= text.size()) return text.size();
  return at + (text.substr(at, 2) == u"\r\n" || is_pair_at(text, at) ? 2 : 1);
}
constexpr std::size_t step_before(std::u16string_view text, std::size_t at) {
  if (at < 2) return 0;
  return at - (text.substr(at - 2, 2) == u"\r\n" || is_pair_at(text, at - 2) ? 2 : 1);
}

/// Writes the character over one that takes as many code units.
inline void put_character(std::u16string& text, std::size_t at, char32_t character) {
  if (units_of(character) == 1) {
    text[at] = static_cast<char16_t>(character);
    return;
  }
  text[at] = high_surrogate_of(character);
  text[at + 1] = low_surrogate_of(character);
}

/// The text with each character mapped to one that takes as many code units.
template <class Mapping>
std::u16string map_characters(std::u16string_view text, Mapping mapping) {
  std::u16string mapped(text);
  for (std::size_t at = 0; at < mapped.size();) {
    const char32_t character = character_at(mapped, at);
    put_character(mapped, at, mapping(character));
    at += units_of(character);
  }
  return mapped;
}

}  // namespace qel
