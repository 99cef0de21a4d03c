#include "qel/box/Drop.h"

#include "qel/box/Box.h"
#include "qel/platform/Keys.h"

namespace qel::box {

using namespace platform;

namespace {

/// Reduces the effect that a listener left to one that is allowed. Of two, the copy loses nothing.
std::int32_t one_of(std::int32_t effect, std::int32_t allowed) {
  const std::int32_t left = effect & allowed & (copy_drop | move_drop);
  return left == (copy_drop | move_drop) ? std::int32_t{copy_drop} : left;
}

}  // namespace

bool Drop::is_open() const {
  return box_.appearance().drop_mode != drops_are_refused && box_.appearance().enabled;
}

/// Whether the box itself inserts what is dropped on it.
bool Drop::takes() const { return box_.appearance().drop_mode == box_drops && box_.may_edit(); }

std::int32_t Drop::suggested_effect(std::int32_t allowed_effects) const {
  if (!takes() || !data_->is_text()) return no_drop;
  return usual_drop(allowed_effects & (copy_drop | move_drop), (at_.shift & keys::ctrl_key) != 0);
}

std::int32_t Drop::tell(std::int32_t allowed_effects, DragState state) {
  std::int32_t effect = suggested_effect(allowed_effects);
  box_.listener().on_drag_over(*data_, effect, at_.buttons, at_.shift, at_.x, at_.y, state);
  effect_ = one_of(effect, allowed_effects);
  return effect_;
}

std::int32_t Drop::enter(DragData& data, std::int32_t allowed_effects, DropPoint at) {
  data_ = nullptr;
  if (!is_open()) return no_drop;
  data_ = &data;
  at_ = at;
  return tell(allowed_effects, drag_enters);
}

std::int32_t Drop::move(std::int32_t allowed_effects, DropPoint at) {
  if (!is_over() || !is_open()) return no_drop;
  at_ = at;
  return tell(allowed_effects, drag_moves);
}

void Drop::leave() {
  if (!is_over()) return;
  DragData& data = *data_;
  data_ = nullptr;
  effect_ = no_drop;
  if (!is_open()) return;
  std::int32_t effect = no_drop;
  box_.listener().on_drag_over(data, effect, at_.buttons, at_.shift, at_.x, at_.y, drag_leaves);
}

std::int32_t Drop::drop(DragData& data, std::int32_t allowed_effects, DropPoint at,
                        const std::function<std::size_t()>& position) {
  const bool was_over = is_over();
  data_ = &data;
  // The button released by the drop still counts.
  at.buttons = static_cast<std::int16_t>(at.buttons | at_.buttons);
  at_ = at;
  std::int32_t effect = was_over ? effect_ : suggested_effect(allowed_effects);
  const bool is_open_now = is_open();
  const bool by_box = takes();
  data_ = nullptr;
  effect_ = no_drop;
  if (!is_open_now) return no_drop;
  box_.listener().on_drag_drop(data, effect, at_.buttons, at_.shift, at_.x, at_.y);
  effect = one_of(effect, allowed_effects);
  if (!by_box || effect == no_drop) return effect;
  // A point in the window means a position only while nothing is being composed.
  box_.settle();
  // The listener may have ended editing.
  if (!box_.may_edit()) return no_drop;
  const std::int32_t became = box_.take_drop(data, position(), effect);
  return became == no_drop || (became & allowed_effects) != 0 ? became : effect;
}

}  // namespace qel::box
