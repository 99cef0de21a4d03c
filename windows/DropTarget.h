#pragma once

#include <ole2.h>
#include <windows.h>

#include <cstdint>

#include "qel/platform/BoxAppearance.h"
#include "qel/platform/BoxListener.h"
#include "windows/ComObject.h"
#include "windows/OleSession.h"
#include "windows/Pointer.h"

namespace qel::windows {

/// A box on which data can be dropped. Points are in pixels from the inner top left corner of its
/// window.
class DropClient {
 public:
  virtual ~DropClient() = default;
  /// Who is told; asked for anew each time.
  virtual platform::BoxListener& drop_listener() = 0;
  /// How the box is now: `drop_mode`, `enabled` and `read_only` decide.
  virtual const platform::BoxAppearance& drop_appearance() const = 0;
  /// Puts the data into the text at that point; whether there was any text in it.
  virtual bool take_drop(platform::DragData& data, POINT at, std::int32_t effect) = 0;
  /// Shows where the box would put what is over it.
  virtual void show_drop_place(POINT /*at*/) {}
  /// Nothing is over the box any more, or the box would not take it.
  virtual void hide_drop_place() {}
};

/// Makes a window a target of drops for as long as this lives. The listener is told as the box's
/// events say; in mode 2 the client then takes what the listener leaves. Data that a box of this
/// thread drags comes as it is, all other data is read when it is asked for.
class DropTarget {
 public:
  /// Both have to outlive this; what else the window was a target for ends. Without OLE on the
  /// thread nothing is ever dropped.
  DropTarget(HWND window, DropClient& client);
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
