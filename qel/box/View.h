#pragma once

#include "qel/box/Change.h"
#include "qel/platform/BoxAppearance.h"
#include "qel/platform/Clipboard.h"
#include "qel/platform/WindowHandle.h"

namespace qel::box {

class Drag;

/// A window that shows a box. It is told what has changed when the box has it already, and before
/// the box's listener is told; it changes nothing in the box meanwhile.
class View {
 public:
  View() = default;
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  virtual ~View() = default;

  virtual void show(const Change& change) = 0;
  /// Another part of the content is selected, or the same one from its other end.
  virtual void show_selection() = 0;
  virtual void show_appearance(const platform::BoxAppearance& before) = 0;

  virtual platform::WindowHandle window() = 0;
  virtual void put_owner(platform::WindowHandle owner) = 0;
  virtual platform::Clipboard& clipboard() = 0;
  /// The colour in which text without one of its own is shown. Text that is given this colour has
  /// none, so that no colour scheme gets into the content: it is black there.
  virtual Color text_color() const { return 0; }

  /// Lets the user drag that until it is dropped somewhere, and tells it the end.
  virtual void carry(Drag& drag) = 0;

  /// The box is gone, and the view goes as soon as it can: it belongs to itself.
  virtual void close() = 0;
};

}  // namespace qel::box
