#pragma once

#include <cstdint>

#include "qel/platform/BoxListener.h"

namespace qel::box {

/// A drag from a box. The view that carries it reports at the end what the drop has done.
class Drag {
 public:
  Drag(platform::DragData& data, std::int32_t allowed_effects, platform::BoxListener*& listener)
      : data_(data), allowed_(allowed_effects), listener_(listener) {}

  platform::DragData& data() const { return data_; }
  /// A mask of `DropEffect`.
  std::int32_t allowed_effects() const { return allowed_; }

  /// Tells the source's listener what a drop would do now. If it sets `default_cursors` to false,
  /// the pointer stays as it is.
  void give_feedback(std::int32_t& effect, bool& default_cursors) const {
    listener_->on_give_feedback(effect, default_cursors);
  }

  /// Ends the drag with one of the allowed effects, or none where nothing was dropped.
  void end(std::int32_t effect) { effect_ = effect & allowed_; }
  std::int32_t effect() const { return effect_; }

 private:
  platform::DragData& data_;
  std::int32_t allowed_;
  platform::BoxListener*& listener_;
  std::int32_t effect_ = platform::no_drop;
};

}  // namespace qel::box
