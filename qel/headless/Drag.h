#pragma once

#include <cstdint>

#include "qel/platform/DragData.h"

namespace qel::headless {

class RichEdit;

/// What is being dragged from a box in memory, as the user's hand has it.
class Drag {
 public:
  Drag(RichEdit& source, platform::DragData& data, std::int32_t allowed_effects)
      : source_(source), data_(data), allowed_(allowed_effects) {}

  /// Moves over a box, to a point in its scale units. `shift` is the mask of modifiers: Ctrl copies
  /// what would be moved.
  void over(RichEdit& target, float x, float y, std::int16_t shift = 0);
  /// Leaves the box without dropping.
  void leave();
  /// Drops where the pointer is.
  void drop();
  /// Says what has become of the data where somebody else has carried and dropped it.
  void end(std::int32_t effect, bool stays_in_source) {
    effect_ = effect;
    stays_in_source_ = stays_in_source;
  }

  platform::DragData& data() const { return data_; }
  std::int32_t allowed_effects() const { return allowed_; }

  /// What a drop would do, and after a drop what it has done.
  std::int32_t effect() const { return effect_; }
  /// Whether the source itself has put the data where it was dropped.
  bool stays_in_source() const { return stays_in_source_; }

 private:
  bool box_takes() const;
  std::int32_t suggested_effect() const;
  void accept(std::int32_t effect);
  void tell_target(platform::DragState state);

  RichEdit& source_;
  platform::DragData& data_;
  std::int32_t allowed_;
  RichEdit* target_ = nullptr;
  std::int32_t effect_ = platform::no_drop;
  float x_ = 0;
  float y_ = 0;
  std::int16_t shift_ = 0;
  bool stays_in_source_ = false;
};

}  // namespace qel::headless
