#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

#include "qel/control/ControlEvents.h"
#include "qel/platform/DragData.h"

namespace qel::conformance {

/// The key of that name, such as "Home", "B" or "F2".
std::int16_t key_named(std::u16string_view name);

/// The host of a text box: it logs its events, and may change keys and drags.
class Host : public ControlEvents {
 public:
  void Change() override { log("Change"); }
  void Click() override { log("Click"); }
  void DblClick() override { log("DblClick"); }
  void KeyDown(std::int16_t& KeyCode, std::int16_t& Shift) override;
  void KeyPress(std::int16_t& KeyAscii) override;
  void KeyUp(std::int16_t& KeyCode, std::int16_t& Shift) override;
  void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) override;
  void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) override;
  void OLEStartDrag(platform::DragData& Data, std::int32_t& AllowedEffects) override;
  void OLESetData(platform::DragData& Data, std::int16_t DataFormat) override;
  void OLEGiveFeedback(std::int32_t& Effect, bool& DefaultCursors) override;
  void OLEDragOver(platform::DragData& Data, std::int32_t& Effect, std::int16_t Button,
                   std::int16_t Shift, float X, float Y, std::int16_t State) override;
  void OLEDragDrop(platform::DragData& Data, std::int32_t& Effect, std::int16_t Button,
                   std::int16_t Shift, float X, float Y) override;
  void OLECompleteDrag(std::int32_t& Effect) override;

  /// The events since the last call. However often the pointer moves, equal movements over a box
  /// are logged once, and of the feedback only the last before the drag is over.
  std::string take_log();

  std::int16_t swallowed_key = -1;
  std::int16_t turned_from = -1;
  std::int16_t turned_to = 0;
  std::int32_t allowed_effects = -1;
  std::int32_t wanted_over = -1;
  std::int32_t wanted_drop = -1;
  std::u16string promised_rtf;

 private:
  using Place = std::tuple<std::int16_t, float, float>;  // the button, and where

  void log(const std::string& event) { log_ += (log_.empty() ? "" : " ") + event; }
  /// A remark for the log if data was last over the box at another place than this.
  std::string other_than_last(const Place& place) const;

  std::string log_;
  std::int32_t feedback_ = 0;
  Place last_;
};

}  // namespace qel::conformance
