// Dragging from a box's window, and onto it.

#include "qel/base/Scoped.h"
#include "qel/headless/Drag.h"
#include "windows/BoxWindow.h"
#include "windows/DragSource.h"

namespace qel::windows {

void BoxWindow::start_drag() { content_.start_drag(); }

void BoxWindow::carry(headless::Drag& what) {
  const Scoped carrying(carries_, true);
  stays_in_source_ = false;
  const std::int32_t effect =
      drag(what.data(), what.allowed_effects(), [this](std::int32_t& now, bool& default_cursors) {
        listener_->on_give_feedback(now, default_cursors);
      });
  what.end(effect, stays_in_source_);
}

bool BoxWindow::take_drop(platform::DragData& data, POINT at, std::int32_t effect) {
  const auto held = shared_from_this();
  stays_in_source_ = carries_;
  const bool has_text =
      content_.take_drop(data, position_at(at), carries_ ? &content_ : nullptr, effect);
  if (window_ != nullptr) {
    show();
    SetFocus(window_);
  }
  return has_text;
}

}  // namespace qel::windows
