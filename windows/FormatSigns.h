#pragma once

#include <windows.h>

#include <cstdint>

namespace qel::windows {

/// What stands for a format on a button.
enum class Sign : std::uint8_t {
  bold,
  italic,
  underline,
  strike_out,
  raised,
  lowered,
  small_capitals,
  font,
  color,
  plain,
  undo,
  redo,
  brush,
};

/// Draws a sign in the middle of `place`, in a square of `side` pixels.
void draw_sign(HDC context, const RECT& place, int side, Sign sign, COLORREF ink);

/// Draws the bar that stands below the sign of a colour.
void draw_color_bar(HDC context, const RECT& place, int side, COLORREF color);

}  // namespace qel::windows
