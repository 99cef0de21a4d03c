#include "qel/box/Mouse.h"

#include <utility>

#include "qel/box/Box.h"
#include "qel/platform/Keys.h"

namespace qel::box {

namespace {

constexpr std::int16_t left_button = 1;

}  // namespace

bool Mouse::press(const Event& event, bool on_selection) {
  after_double_click_ = false;
  box_.listener().on_mouse_down(event.button, event.shift, event.x, event.y);
  may_drag_ = on_selection && event.button == left_button && event.shift == keys::no_modifier &&
              box_.appearance().drag_mode == platform::box_drags;
  return !may_drag_;
}

bool Mouse::move(const Event& event, bool is_far) {
  box_.listener().on_mouse_move(event.button, event.shift, event.x, event.y);
  // The button may have come up where nobody saw it.
  if ((event.button & left_button) == 0) may_drag_ = false;
  if (!may_drag_) return true;
  if (is_far) {
    may_drag_ = false;
    box_.start_drag();
  }
  return false;
}

void Mouse::released(const Event& event) {
  box_.listener().on_mouse_up(event.button, event.shift, event.x, event.y);
  const bool clicks = event.button == left_button && !after_double_click_;
  after_double_click_ = false;
  if (clicks) box_.listener().on_click();
}

void Mouse::double_click() {
  after_double_click_ = true;
  box_.listener().on_double_click();
}

}  // namespace qel::box
