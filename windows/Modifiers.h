#pragma once

#include <windows.h>

#include <cstdint>

#include "qel/platform/Keys.h"

namespace qel::windows {

/// The modifiers that were held when the message being handled was created.
inline std::int16_t held_modifiers() {
  const auto mask = [](int key, std::int16_t modifier) {
    return GetKeyState(key) < 0 ? int{modifier} : 0;
  };
  return static_cast<std::int16_t>(mask(VK_SHIFT, keys::shift_key) |
                                   mask(VK_CONTROL, keys::ctrl_key) | mask(VK_MENU, keys::alt_key));
}

/// The buttons in the parameter of a mouse message.
inline std::int16_t button_mask(WPARAM parameter) {
  return static_cast<std::int16_t>(((parameter & MK_LBUTTON) != 0 ? 1 : 0) |
                                   ((parameter & MK_RBUTTON) != 0 ? 2 : 0) |
                                   ((parameter & MK_MBUTTON) != 0 ? 4 : 0));
}

}  // namespace qel::windows
