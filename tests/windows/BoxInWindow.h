#pragma once

#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <algorithm>
#include <cstdint>
#include <string>

#include "qel/platform/RichEdit.h"
#include "windows/WindowHandle.h"

namespace qel::test {

inline HWND window_of(const platform::RichEdit& box) {
  return windows::native_window(box.window());
}

/// The point in the window of the character at a position of the box.
inline POINT point_of(const platform::RichEdit& box, std::int32_t position) {
  const std::u16string before = box.get_Text().substr(0, static_cast<std::size_t>(position));
  // A break takes one position in the window.
  const LPARAM native = position - std::count(before.begin(), before.end(), u'\n');
  POINTL point = {0, 0};
  SendMessageW(window_of(box), EM_POSFROMCHAR, reinterpret_cast<WPARAM>(&point), native);
  return {point.x, point.y};
}

}  // namespace qel::test
