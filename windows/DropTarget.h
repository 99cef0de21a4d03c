#pragma once

#include <ole2.h>
#include <windows.h>

#include <cstddef>
#include <functional>
#include <optional>

#include "qel/box/Drop.h"
#include "windows/ComObject.h"
#include "windows/OleSession.h"
#include "windows/Pointer.h"

namespace qel::windows {

/// Makes a window a target of drops on a box for as long as this lives. Data from a box of
/// this thread is passed on as it is, any other is read when it is asked for.
class DropTarget {
 public:
  /// The position in the box's text that is nearest to a point in the window.
  using PositionAt = std::function<std::size_t(POINT)>;
  /// Shows that a drop would be inserted at that point, or nowhere.
  using ShowLanding = std::function<void(std::optional<POINT>)>;

  /// The window and the box, which is shared, must outlive this; any drop target that the window
  /// had is replaced. Without OLE on the thread nothing is ever dropped.
  DropTarget(HWND window, box::Box& box, PositionAt position_at, ShowLanding show_landing);
  DropTarget(const DropTarget&) = delete;
  DropTarget& operator=(const DropTarget&) = delete;
  ~DropTarget();

  /// The object that the system calls.
  IDropTarget& target() const;

 private:
  class Target;

  OleSession session_;
  HWND window_;
  Pointer<Target> target_;
};

}  // namespace qel::windows
