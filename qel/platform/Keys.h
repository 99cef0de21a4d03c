#pragma once

#include <cstdint>

/// The window system's key codes, and the mask of modifiers.
namespace qel::keys {

enum Modifiers : std::int16_t { no_modifier = 0, shift_key = 1, ctrl_key = 2, alt_key = 4 };
constexpr std::int16_t ctrl_shift = ctrl_key | shift_key;

constexpr std::int16_t backspace_key = 8;
constexpr std::int16_t tab_key = 9;
constexpr std::int16_t enter_key = 13;
constexpr std::int16_t escape_key = 27;
constexpr std::int16_t space_key = 32;
constexpr std::int16_t page_up_key = 33;
constexpr std::int16_t page_down_key = 34;
constexpr std::int16_t end_key = 35;
constexpr std::int16_t home_key = 36;
constexpr std::int16_t left_key = 37;
constexpr std::int16_t up_key = 38;
constexpr std::int16_t right_key = 39;
constexpr std::int16_t down_key = 40;
constexpr std::int16_t insert_key = 45;
constexpr std::int16_t delete_key = 46;
constexpr std::int16_t grave_accent_key = 192;
constexpr std::int16_t apostrophe_key = 222;
/// A character that comes without a key of its own.
constexpr std::int16_t character_packet_key = 231;
constexpr std::int16_t first_function_key = 112;

/// F1 and so on.
constexpr std::int16_t function_key(int number) {
  return static_cast<std::int16_t>(first_function_key + number - 1);
}
constexpr std::int16_t letter_key(char capital) { return static_cast<std::int16_t>(capital); }

}  // namespace qel::keys
