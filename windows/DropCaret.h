#pragma once

#include <windows.h>

namespace qel::windows {

/// A line in a window that shows where a drop would land. The system's own caret belongs to the
/// window with the focus, which is another one while something is dragged.
class DropCaret {
 public:
  DropCaret() = default;
  DropCaret(const DropCaret&) = delete;
  DropCaret& operator=(const DropCaret&) = delete;
  ~DropCaret() { hide(); }

  /// The parent gives it its colour when asked by `WM_CTLCOLORSTATIC`.
  void show(HWND parent, const RECT& place);
  void hide();

 private:
  HWND window_ = nullptr;
};

}  // namespace qel::windows
