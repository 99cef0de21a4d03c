#pragma once

#include <cstdint>

namespace qel {

/// A colour as 0x00BBGGRR (red in the low byte). A negative value, one whose high bit is set, names
/// a system colour by its index in the low bits.
using Color = std::int32_t;

constexpr Color rgb(int red, int green, int blue) {
  return static_cast<Color>(red | (green << 8) | (blue << 16));
}
constexpr int red_of(Color color) { return color & 0xFF; }
constexpr int green_of(Color color) { return (color >> 8) & 0xFF; }
constexpr int blue_of(Color color) { return (color >> 16) & 0xFF; }

constexpr bool is_system_color(Color color) { return color < 0; }
/// The colour value that stands for the system colour `index` (0x80000005 is the window
/// background).
constexpr Color system_color(std::int32_t index) {
  return static_cast<Color>(static_cast<std::uint32_t>(index) | 0x80000000U);
}
/// The index in a system colour value: the value without its high bit.
constexpr std::int32_t system_color_index(Color color) {
  return static_cast<std::int32_t>(static_cast<std::uint32_t>(color) & 0x7FFFFFFFU);
}

}  // namespace qel
