#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "qel/platform/DragData.h"

namespace qel::box {

class Box;

/// The state of the mouse while something is dragged over a box: the buttons and modifiers held,
/// and the position in the box's scale units.
struct DropPoint {
  std::int16_t buttons = 0;
  std::int16_t shift = 0;
  float x = 0;
  float y = 0;
};

/// The box's side of a drag over it: asks the listener what a drop would do and, where the box
/// handles drops itself, inserts what is dropped. The members return one of the effects that the
/// source allows, or none.
class Drop {
 public:
  /// The box must outlive this.
  explicit Drop(Box& box) : box_(box) {}

  /// Data enters the box; it must live until it leaves or is dropped.
  std::int32_t enter(platform::DragData& data, std::int32_t allowed_effects, DropPoint at);
  std::int32_t move(std::int32_t allowed_effects, DropPoint at);
  /// The listener is told the last position; it has nothing to decide.
  void leave();
  /// `data` may be more complete than the data that entered. `position` finds the position in the
  /// text if the box needs it.
  std::int32_t drop(platform::DragData& data, std::int32_t allowed_effects, DropPoint at,
                    const std::function<std::size_t()>& position);

  /// Whether anything is being dragged over the box.
  bool is_over() const { return data_ != nullptr; }
  /// Whether a drop now would insert into the box's text.
  bool would_insert() const { return effect_ != platform::no_drop && takes(); }

 private:
  bool is_open() const;
  bool takes() const;
  std::int32_t tell(std::int32_t allowed_effects, platform::DragState state);
  std::int32_t suggested_effect(std::int32_t allowed_effects) const;

  Box& box_;
  platform::DragData* data_ = nullptr;
  std::int32_t effect_ = platform::no_drop;
  DropPoint at_;
};

}  // namespace qel::box
