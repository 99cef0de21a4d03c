#pragma once

#include <windows.h>

#include <vector>

namespace qel::windows {

/// Keeps the user from all windows of the thread but one, for as long as this lives. Windows may go
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
