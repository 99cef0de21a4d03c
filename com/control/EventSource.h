#pragma once

#include <oaidl.h>

#include <algorithm>
#include <functional>
#include <utility>

#include "com/control/Connections.h"
#include "qel/control/ControlEvents.h"

namespace qel::com {

/// Passes the control's events on to the sinks of a host. Arguments by reference return as the
/// sinks leave them; each sink sees what the one before it left.
class EventSource : public ControlEvents {
 public:
  /// `whole` is the object to which the sinks belong; `release_later` releases a reference to it
  /// when the current calls have returned. A sink may release the host's last reference.
  EventSource(IUnknown& whole, Connections& connections, std::function<void()> release_later,
              std::function<void()> on_change)
      : whole_(whole),
        connections_(connections),
        release_later_(std::move(release_later)),
        on_change_(std::move(on_change)) {}

  /// While frozen, events are lost: the host does not accept any. A host that freezes several times
  /// has to thaw as often.
  void freeze(bool frozen) { frozen_ = frozen ? frozen_ + 1 : std::max(frozen_ - 1, 0); }

  /// Whether a sink may turn a key into another one, which may be a shortcut for pasting.
  void put_trust(bool trusts) { trusts_ = trusts; }

  /// Calls `on_change`, which notifies fields bound to the text, before the sinks.
  void Change() override;
  void Click() override;
  void DblClick() override;
  void KeyDown(std::int16_t& KeyCode, std::int16_t& Shift) override;
  void KeyPress(std::int16_t& KeyAscii) override;
  void KeyUp(std::int16_t& KeyCode, std::int16_t& Shift) override;
  void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) override;
  void MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) override;
  void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) override;
  void OLEStartDrag(platform::DragData& Data, std::int32_t& AllowedEffects) override;
  void OLESetData(platform::DragData& Data, std::int16_t DataFormat) override;
  void OLEGiveFeedback(std::int32_t& Effect, bool& DefaultCursors) override;
  void OLEDragOver(platform::DragData& Data, std::int32_t& Effect, std::int16_t Button,
                   std::int16_t Shift, float X, float Y, std::int16_t State) override;
  void OLEDragDrop(platform::DragData& Data, std::int32_t& Effect, std::int16_t Button,
                   std::int16_t Shift, float X, float Y) override;
  void OLECompleteDrag(std::int32_t& Effect) override;

 private:
  template <class... Arguments>
  void raise(DISPID event, Arguments&&... arguments);

  IUnknown& whole_;
  Connections& connections_;
  std::function<void()> release_later_;
  std::function<void()> on_change_;
  int frozen_ = 0;
  bool trusts_ = true;
};

}  // namespace qel::com
