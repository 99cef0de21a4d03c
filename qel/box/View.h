#pragma once

#include "qel/box/Change.h"
#include "qel/platform/BoxAppearance.h"
#include "qel/platform/Clipboard.h"
#include "qel/platform/WindowHandle.h"

namespace qel::box {

class Drag;

/// A window that shows a box. It learns of a change after the box has made it, and before the box's
/// listener does; it must not change the box meanwhile, except in `settle`.
class View {
 public:
  View() = default;
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  virtual ~View() = default;

  /// The view passes in what it holds back, such as text that is still being composed: the host is
  /// about to change the box or its selection, or something is dropped on it.
  virtual void settle() {}

  virtual void show(const Change& change) = 0;
  /// The selection has changed, or only the end of it at which the caret is.
  virtual void show_selection() = 0;
  virtual void show_appearance(const platform::BoxAppearance& before) = 0;

  virtual platform::WindowHandle window() = 0;
  virtual void put_owner(platform::WindowHandle owner) = 0;
  virtual platform::Clipboard& clipboard() = 0;
  /// The colour in which text without a colour of its own is shown. Text that is given this colour
  /// becomes black in the content, so that no colour scheme gets into it.
  virtual Color text_color() const { return 0; }

  /// Lets the user drag until the drop or the end without one, and reports the effect to `drag`.
  virtual void carry(Drag& drag) = 0;

  /// The box is gone. The view, which owns itself, deletes itself as soon as it can.
  virtual void close() = 0;
};

}  // namespace qel::box
