#pragma once

#include <windows.h>

#include <vector>

namespace qel::windows {

/// Disables all windows of the thread but one, for as long as it lives. Windows may be destroyed
/// meanwhile.
class DisabledWindows {
 public:
  explicit DisabledWindows(HWND but);
  DisabledWindows(const DisabledWindows&) = delete;
  DisabledWindows& operator=(const DisabledWindows&) = delete;
  ~DisabledWindows();

 private:
  std::vector<HWND> windows_;
};

}  // namespace qel::windows
