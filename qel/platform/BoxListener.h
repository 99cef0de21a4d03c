#pragma once

#include <cstdint>

#include "qel/platform/DragData.h"

namespace qel::platform {

/// Receives the events of a box. The arguments are the window system's: key codes, a mask of 1
/// Shift, 2 Ctrl and 4 Alt, mouse buttons as a mask of 1 left, 2 right and 4 middle, positions in
/// the box's scale units. A listener may change an argument passed by reference: the box no longer
/// handles a key code or character set to 0. The character of a key press is a UTF-16 code unit.
class BoxListener {
 public:
  virtual ~BoxListener() = default;

  virtual void on_change() {}
  /// The selection, the caret, the format of the next character typed, or what can be undone has
  /// changed; after `on_change` where the text has.
  virtual void on_selection() {}
  virtual void on_click() {}
  virtual void on_double_click() {}
  virtual void on_key_down(std::int16_t& /*key_code*/, std::int16_t& /*shift*/) {}
  virtual void on_key_press(std::int16_t& /*character*/) {}
  virtual void on_key_up(std::int16_t& /*key_code*/, std::int16_t& /*shift*/) {}
  virtual void on_mouse_down(std::int16_t /*button*/, std::int16_t /*shift*/, float /*x*/,
                             float /*y*/) {}
  virtual void on_mouse_move(std::int16_t /*button*/, std::int16_t /*shift*/, float /*x*/,
                             float /*y*/) {}
  virtual void on_mouse_up(std::int16_t /*button*/, std::int16_t /*shift*/, float /*x*/,
                           float /*y*/) {}

  /// Text from elsewhere is about to replace the selection: pasted by a key of the box or the
  /// middle button, or dropped. A listener that puts it in itself returns true.
  virtual bool on_paste(DragData& /*data*/) { return false; }

  // Drag and drop. Effects are a mask of `DropEffect`, states are `DragState`s. The data belongs to
  // the source and is valid during the call only.

  /// A drag from the box begins with the selection as its data; allowing no effect calls it off.
  virtual void on_start_drag(DragData& /*data*/, std::int32_t& /*allowed_effects*/) {}
  /// A target wants data in a format in which it is only promised.
  virtual void on_set_data(DragData& /*data*/, std::int16_t /*format*/) {}
  /// A drop now would have this effect; with `default_cursors` false the pointer stays as it is.
  virtual void on_give_feedback(std::int32_t& /*effect*/, bool& /*default_cursors*/) {}
  /// Data is over the box. `effect` is left at what a drop there would do.
  virtual void on_drag_over(DragData& /*data*/, std::int32_t& /*effect*/, std::int16_t /*button*/,
                            std::int16_t /*shift*/, float /*x*/, float /*y*/,
                            std::int16_t /*state*/) {}
  /// Data is dropped on the box. `effect` is left at what the drop has done.
  virtual void on_drag_drop(DragData& /*data*/, std::int32_t& /*effect*/, std::int16_t /*button*/,
                            std::int16_t /*shift*/, float /*x*/, float /*y*/) {}
  /// A drag from the box is over.
  virtual void on_complete_drag(std::int32_t& /*effect*/) {}
};

}  // namespace qel::platform
