#include "qel/headless/Drag.h"

#include "qel/headless/RichEdit.h"
#include "qel/platform/Keys.h"

namespace qel::headless {

using namespace platform;

namespace {

constexpr std::int16_t left_button = 1;
constexpr std::int32_t box_drops = 2;

}  // namespace

/// Whether the target puts in by itself what is dropped on it.
bool Drag::box_takes() const {
  const BoxAppearance appearance = target_->appearance();
  return appearance.drop_mode == box_drops && appearance.enabled && !appearance.read_only;
}

/// What a listener has left as the effect: one of those allowed.
void Drag::accept(std::int32_t effect) {
  effect_ = effect & allowed_;
  if (effect_ == (copy_drop | move_drop)) effect_ = copy_drop;
}

std::int32_t Drag::suggested_effect() const {
  return box_takes() && data_.is_text() ? usual_drop(allowed_, (shift_ & keys::ctrl_key) != 0)
                                        : no_drop;
}

void Drag::tell_target(DragState state) {
  std::int32_t effect = suggested_effect();
  target_->listener().on_drag_over(data_, effect, left_button, shift_, x_, y_, state);
  accept(effect);
}

void Drag::over(RichEdit& target, float x, float y, std::int16_t shift) {
  if (target_ != nullptr && target_ != &target) leave();
  const bool enters = target_ == nullptr;
  const BoxAppearance appearance = target.appearance();
  if (appearance.drop_mode == 0 || !appearance.enabled) return;
  target_ = &target;
  x_ = x;
  y_ = y;
  shift_ = shift;
  tell_target(enters ? drag_enters : drag_moves);
  bool default_cursors = true;
  source_.listener().on_give_feedback(effect_, default_cursors);
}

void Drag::leave() {
  if (target_ == nullptr) return;
  tell_target(drag_leaves);
  target_ = nullptr;
  effect_ = no_drop;
}

void Drag::drop() {
  if (target_ == nullptr) return;
  const bool takes = box_takes();
  std::int32_t effect = effect_;
  target_->listener().on_drag_drop(data_, effect, left_button, shift_, x_, y_);
  accept(effect);
  const bool by_box = takes && effect_ != no_drop;
  stays_in_source_ = by_box && target_ == &source_;
  if (by_box && !target_->take_drop(data_, target_->position_at(x_, y_), &source_, effect_)) {
    effect_ = no_drop;
  }
  target_ = nullptr;
}

}  // namespace qel::headless
