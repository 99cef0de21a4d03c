#pragma once

#include <cstdint>

#include "qel/platform/DragData.h"

namespace qel {

/// The host's side of a control's events. Each is raised when the visible box raises the event of
/// the same name, before the control's own handling. An argument passed by reference may be
/// changed: a key code or character set to 0 is not handled any further. The mask `Shift` is 1
/// Shift, 2 Ctrl and 4 Alt; `Button` is 1 left, 2 right and 4 middle; positions are in the box's
/// scale units.
class ControlEvents {
 public:
  virtual ~ControlEvents() = default;

  virtual void Change() {}
  /// The selection, the format of the next character typed, or what can be undone has changed, or
  /// another box has become the current one. Raised after the change, also for the host's own.
  virtual void SelectionChanged() {}
  virtual void Click() {}
  virtual void DblClick() {}
  virtual void KeyDown(std::int16_t& /*KeyCode*/, std::int16_t& /*Shift*/) {}
  virtual void KeyPress(std::int16_t& /*KeyAscii*/) {}
  virtual void KeyUp(std::int16_t& /*KeyCode*/, std::int16_t& /*Shift*/) {}
  virtual void MouseDown(std::int16_t /*Button*/, std::int16_t /*Shift*/, float /*X*/,
                         float /*Y*/) {}
  virtual void MouseMove(std::int16_t /*Button*/, std::int16_t /*Shift*/, float /*X*/,
                         float /*Y*/) {}
  virtual void MouseUp(std::int16_t /*Button*/, std::int16_t /*Shift*/, float /*X*/, float /*Y*/) {}

  // Drag and drop, as in `platform::BoxListener`.

  virtual void OLEStartDrag(platform::DragData& /*Data*/, std::int32_t& /*AllowedEffects*/) {}
  virtual void OLESetData(platform::DragData& /*Data*/, std::int16_t /*DataFormat*/) {}
  virtual void OLEGiveFeedback(std::int32_t& /*Effect*/, bool& /*DefaultCursors*/) {}
  virtual void OLEDragOver(platform::DragData& /*Data*/, std::int32_t& /*Effect*/,
                           std::int16_t /*Button*/, std::int16_t /*Shift*/, float /*X*/,
                           float /*Y*/, std::int16_t /*State*/) {}
  virtual void OLEDragDrop(platform::DragData& /*Data*/, std::int32_t& /*Effect*/,
                           std::int16_t /*Button*/, std::int16_t /*Shift*/, float /*X*/,
                           float /*Y*/) {}
  virtual void OLECompleteDrag(std::int32_t& /*Effect*/) {}
};

}  // namespace qel
