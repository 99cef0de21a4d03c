#include "qel/headless/Drag.h"

#include "qel/headless/BoxView.h"

namespace qel::headless {

void Drag::over(const platform::RichEdit& target, float x, float y, std::int16_t shift) {
  box::Box& box = BoxView::of(target).box();
  if (target_.get() != &box) leave();
  constexpr std::int16_t left_button = 1;
  at_ = {left_button, shift, x, y};
  if (drop_) {
    effect_ = drop_->move(drag_.allowed_effects(), at_);
  } else {
    target_ = box.shared_from_this();
    drop_.emplace(box);
    effect_ = drop_->enter(drag_.data(), drag_.allowed_effects(), at_);
  }
  if (drop_->is_over()) give_feedback();
}

void Drag::give_feedback() {
  bool default_cursors = true;
  drag_.give_feedback(effect_, default_cursors);
}

void Drag::leave() {
  const bool was_over = drop_ && drop_->is_over();
  if (drop_) drop_->leave();
  effect_ = platform::no_drop;
  if (was_over) give_feedback();
  drop_.reset();
  target_.reset();
}

void Drag::drop() {
  if (effect_ == platform::no_drop) leave();
  if (!drop_) return;
  effect_ = drop_->drop(drag_.data(), drag_.allowed_effects(), at_,
                        [this] { return BoxView::of(*target_).position_at(at_.x, at_.y); });
  drag_.end(effect_);
  drop_.reset();
  target_.reset();
}

}  // namespace qel::headless
