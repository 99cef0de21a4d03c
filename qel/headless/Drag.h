#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "qel/box/Box.h"
#include "qel/box/Drop.h"

namespace qel::headless {

/// A drag from a box of a headless platform, in the hands of its user.
class Drag {
 public:
  explicit Drag(box::Drag& drag) : drag_(drag) {}

  /// Moves over a box of the platform, to a point in its scale units, with the left button held.
  /// `shift` is the mask of modifiers: Ctrl copies what would be moved.
  void over(const platform::RichEdit& target, float x, float y, std::int16_t shift = 0);
  /// Leaves the box without dropping.
  void leave();
  /// Drops where the pointer is, or leaves if that would do nothing.
  void drop();

  platform::DragData& data() const { return drag_.data(); }
  /// What a drop would do, and after a drop what it did.
  std::int32_t effect() const { return effect_; }

 private:
  void give_feedback();

  box::Drag& drag_;
  std::shared_ptr<box::Box> target_;
  std::optional<box::Drop> drop_;
  box::DropPoint at_;
  std::int32_t effect_ = platform::no_drop;
};

}  // namespace qel::headless
