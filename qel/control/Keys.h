#pragma once

#include <cstdint>

#include "qel/richtext/CodePage.h"

/// The window system's numbers for keys, and the mask of modifiers.
namespace qel::keys {

enum Modifiers : std::int16_t { no_modifier = 0, shift_key = 1, ctrl_key = 2, alt_key = 4 };
constexpr std::int16_t ctrl_shift = ctrl_key | shift_key;

constexpr std::int16_t enter_key = 13;
constexpr std::int16_t delete_key = 46;
constexpr std::int16_t grave_accent_key = 192;
constexpr std::int16_t apostrophe_key = 222;
constexpr std::int16_t first_function_key = 112;

/// F1 and so on.
constexpr std::int16_t function_key(int number) {
  return static_cast<std::int16_t>(first_function_key + number - 1);
}
constexpr std::int16_t letter_key(char capital) { return static_cast<std::int16_t>(capital); }

/// The character for a box where `typed` may have become the code of a typographic quote in code
/// page 1252: boxes take characters.
inline std::int16_t character_of(std::int16_t code, std::int16_t typed) {
  const bool is_quote = code != typed && code >= 0x91 && code <= 0x94;
  if (!is_quote) return code;
  return static_cast<std::int16_t>(richtext::decode_western(static_cast<std::uint8_t>(code)));
}

}  // namespace qel::keys
