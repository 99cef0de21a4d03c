#pragma once

#include <windows.h>

#include "qel/platform/WindowHandle.h"

/// A window handle of the platform is an HWND.
namespace qel::windows {

inline HWND native_window(platform::WindowHandle handle) { return reinterpret_cast<HWND>(handle); }
inline platform::WindowHandle window_handle(HWND window) {
  return reinterpret_cast<platform::WindowHandle>(window);
}

}  // namespace qel::windows
