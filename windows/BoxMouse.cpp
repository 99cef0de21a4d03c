// A box's window under the mouse.

#include <windows.h>
#include <windowsx.h>

#include <cstdlib>

#include "windows/BoxWindow.h"
#include "windows/Modifiers.h"

namespace qel::windows {

namespace {

constexpr std::int32_t box_drags = 1;
constexpr std::int16_t left_button = 1;
constexpr std::int16_t right_button = 2;
constexpr std::int16_t middle_button = 4;

POINT point_in(LPARAM data) { return {GET_X_LPARAM(data), GET_Y_LPARAM(data)}; }

/// The button that a message is about; 0 for none that the box knows.
std::int16_t button_of(UINT message) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
      return left_button;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_RBUTTONUP:
      return right_button;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_MBUTTONUP:
      return middle_button;
    default:
      return 0;
  }
}

}  // namespace

BoxWindow::Handled BoxWindow::handle_mouse(UINT message, WPARAM parameter, LPARAM data) {
  if (!appearance_.enabled) return 0;
  switch (message) {
    case WM_LBUTTONDBLCLK:
      return double_click(data);
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_MBUTTONDBLCLK:
      return press_button(message, parameter, data);
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
      return release_button(message, parameter, data);
    case WM_MOUSEMOVE:
      return move_mouse(message, parameter, data);
    default:
      return {};
  }
}

LRESULT BoxWindow::press_button(UINT message, WPARAM parameter, LPARAM data) {
  const POINT at = point_in(data);
  after_double_click_ = false;
  may_drag_from_.reset();
  const std::int16_t shift = held_modifiers();
  listener_->on_mouse_down(button_of(message), shift, static_cast<float>(at.x),
                           static_cast<float>(at.y));
  if (is_closed_ || window_ == nullptr) return 0;
  const bool on_selection =
      message == WM_LBUTTONDOWN && shift == keys::no_modifier && is_on_selection(at);
  if (on_selection && appearance_.drag_mode == box_drags) {
    may_drag_from_ = at;
    SetFocus(window_);
    SetCapture(window_);
    return 0;
  }
  // The window would begin a drag of its own.
  if (on_selection) select({position_at(at), 0});
  return act_natively(message, parameter, data);
}

LRESULT BoxWindow::double_click(LPARAM data) {
  after_double_click_ = true;
  listener_->on_double_click();
  if (is_closed_ || window_ == nullptr) return 0;
  SetFocus(window_);
  hands_.select_word(static_cast<std::size_t>(position_at(point_in(data))));
  show();
  return 0;
}

LRESULT BoxWindow::move_mouse(UINT message, WPARAM parameter, LPARAM data) {
  const POINT at = point_in(data);
  listener_->on_mouse_move(button_mask(parameter), held_modifiers(), static_cast<float>(at.x),
                           static_cast<float>(at.y));
  if (is_closed_ || window_ == nullptr) return 0;
  // The button may have come up where nobody saw it.
  if ((parameter & MK_LBUTTON) == 0) may_drag_from_.reset();
  if (!may_drag_from_) return act_natively(message, parameter, data);
  const bool is_far = std::abs(at.x - may_drag_from_->x) >= GetSystemMetrics(SM_CXDRAG) ||
                      std::abs(at.y - may_drag_from_->y) >= GetSystemMetrics(SM_CYDRAG);
  if (!is_far) return 0;
  may_drag_from_.reset();
  ReleaseCapture();
  start_drag();
  return 0;
}

LRESULT BoxWindow::release_button(UINT message, WPARAM parameter, LPARAM data) {
  const POINT at = point_in(data);
  const std::int16_t button = button_of(message);
  LRESULT result = 0;
  if (may_drag_from_) {
    may_drag_from_.reset();
    ReleaseCapture();
    select({position_at(at), 0});
  } else {
    result = act_natively(message, parameter, data);
  }
  listener_->on_mouse_up(button, held_modifiers(), static_cast<float>(at.x),
                         static_cast<float>(at.y));
  const bool clicks = button == left_button && !after_double_click_;
  after_double_click_ = false;
  if (clicks) listener_->on_click();
  return result;
}

/// Whether the point is on a selected character.
bool BoxWindow::is_on_selection(POINT point) const {
  const platform::Range selected = content_.selection();
  if (selected.length == 0) return false;
  const POINT first = point_of(selected.start);
  const POINT last = point_of(selected.start + selected.length);
  const std::int32_t at = position_at(point);
  const bool is_before =
      point.y < first.y || (point.y < last.y && at == selected.start && point.x < first.x);
  const bool is_behind = at >= selected.start + selected.length && point.x >= last.x;
  return at >= selected.start && at <= selected.start + selected.length && !is_before && !is_behind;
}

}  // namespace qel::windows
