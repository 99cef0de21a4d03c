#include "windows/DisabledWindows.h"

namespace qel::windows {
namespace {

BOOL CALLBACK collect(HWND window, LPARAM windows) noexcept {
  auto& list = *reinterpret_cast<std::vector<HWND>*>(windows);
  if (IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE) list.push_back(window);
  return TRUE;
}

}  // namespace

DisabledWindows::DisabledWindows(HWND but) {
  EnumThreadWindows(GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&windows_));
  std::erase(windows_, but);
  for (const HWND window : windows_) EnableWindow(window, FALSE);
}

DisabledWindows::~DisabledWindows() {
  for (const HWND window : windows_) {
    if (IsWindow(window) != FALSE) EnableWindow(window, TRUE);
  }
}

}  // namespace qel::windows
