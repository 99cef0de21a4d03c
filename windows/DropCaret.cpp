#include "windows/DropCaret.h"

#include <utility>

#include "windows/Module.h"

namespace qel::windows {

void DropCaret::show(HWND parent, const RECT& place) {
  if (window_ == nullptr) {
    window_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_DISABLED, 0, 0, 0, 0, parent,
                              nullptr, module_handle(), nullptr);
  }
  SetWindowPos(window_, HWND_TOP, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOACTIVATE | SWP_SHOWWINDOW);
  // The text may have been painted over it.
  InvalidateRect(window_, nullptr, TRUE);
}

/// It may have gone with its parent.
void DropCaret::hide() {
  const HWND window = std::exchange(window_, nullptr);
  if (IsWindow(window) != FALSE) DestroyWindow(window);
}

}  // namespace qel::windows
