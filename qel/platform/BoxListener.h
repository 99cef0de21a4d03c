#pragma once

#include <cstdint>

namespace qel::platform {

/// Whoever is told of a box's events. The arguments are the window system's: key codes, a mask of 1
/// Shift, 2 Ctrl and 4 Alt, mouse buttons as a mask of 1 left, 2 right and 4 middle, positions in
/// the box's scale units. An argument passed by reference may be changed: a key code or character
/// set to 0 is not handled by the box any more. The character of a key press is a UTF-16 code unit.
class BoxListener {
 public:
  virtual ~BoxListener() = default;

  virtual void on_change() {}
  virtual void on_click() {}
  virtual void on_double_click() {}
  virtual void on_key_down(std::int16_t& /*key_code*/, std::int16_t& /*shift*/) {}
  virtual void on_key_press(std::int16_t& /*character*/) {}
  virtual void on_key_up(std::int16_t& /*key_code*/, std::int16_t& /*shift*/) {}
  virtual void on_mouse_down(std::int16_t /*button*/, std::int16_t /*shift*/, float /*x*/,
                             float /*y*/) {}
  virtual void on_mouse_move(std::int16_t /*button*/, std::int16_t /*shift*/, float /*x*/,
                             float /*y*/) {}
  virtual void on_mouse_up(std::int16_t /*button*/, std::int16_t /*shift*/, float /*x*/,
                           float /*y*/) {}
};

}  // namespace qel::platform
