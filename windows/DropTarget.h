#pragma once

#include <ole2.h>
#include <windows.h>

#include <cstddef>
#include <functional>

#include "qel/box/Drop.h"
#include "windows/ComObject.h"
#include "windows/OleSession.h"
#include "windows/Pointer.h"

namespace qel::windows {

/// Makes a window a target of drops on a box for as long as this lives. Data that a box of this
/// thread drags comes as it is, all other data is read when it is asked for.
class DropTarget {
 public:
  /// The position in the box's text that is nearest to a point in the window.
  using PositionAt = std::function<std::size_t(POINT)>;

  /// The window and the box, which is shared, have to outlive this; what else the window was a
  /// target for ends. Without OLE on the thread nothing is ever dropped.
  DropTarget(HWND window, box::Box& box, PositionAt position_at);
  DropTarget(const DropTarget&) = delete;
  DropTarget& operator=(const DropTarget&) = delete;
  ~DropTarget();

  /// What the system calls.
  IDropTarget& target() const;

 private:
  class Target;

  OleSession session_;
  HWND window_;
  Pointer<Target> target_;
};

}  // namespace qel::windows
