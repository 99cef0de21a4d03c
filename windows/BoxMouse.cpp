// How a box's window handles the mouse.

#include <windows.h>
#include <windowsx.h>

#include <cstdlib>

#include "windows/BoxWindow.h"
#include "windows/Modifiers.h"

namespace qel::windows {

namespace {

constexpr std::int16_t left_button = 1;
constexpr std::int16_t right_button = 2;
constexpr std::int16_t middle_button = 4;

POINT point_in(LPARAM data) { return {GET_X_LPARAM(data), GET_Y_LPARAM(data)}; }

box::Mouse::Event event_of(std::int16_t button, POINT at) {
  return {button, held_modifiers(), static_cast<float>(at.x), static_cast<float>(at.y)};
}

bool is_far(POINT from, POINT to) {
  return std::abs(to.x - from.x) >= GetSystemMetrics(SM_CXDRAG) ||
         std::abs(to.y - from.y) >= GetSystemMetrics(SM_CYDRAG);
}

/// The button that a message is about; 0 for one that the box does not know.
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
  if (!takes_input()) return 0;
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
  settle();
  const POINT at = point_in(data);
  const bool places = mouse_.press(event_of(button_of(message), at), is_on_selection(at));
  if (window_ == nullptr) return 0;
  if (!places) {
    pressed_at_ = at;
    SetFocus(window_);
    SetCapture(window_);
    return 0;
  }
  if (message == WM_LBUTTONDOWN) {
    const std::int16_t shift = held_modifiers();
    if (shift == keys::no_modifier && is_on_selection(at)) {
      // Otherwise the window would begin a drag of its own.
      box_.put_caret(display_.position_at(at), false);
    } else if ((shift & keys::shift_key) != 0 && display_.has_other_caret()) {
      display_.put_caret(box_.selected().anchor);
    }
  }
  return act_natively(message, parameter, data);
}

LRESULT BoxWindow::double_click(LPARAM data) {
  settle();
  mouse_.double_click();
  if (window_ == nullptr) return 0;
  SetFocus(window_);
  keyboard_.select_word(display_.position_at(point_in(data)));
  return 0;
}

LRESULT BoxWindow::move_mouse(UINT message, WPARAM parameter, LPARAM data) {
  const POINT at = point_in(data);
  const bool drags = mouse_.may_drag() && is_far(pressed_at_, at);
  if (drags) ReleaseCapture();
  const bool selects = mouse_.move(event_of(button_mask(parameter), at), drags);
  return selects && window_ != nullptr ? act_natively(message, parameter, data) : 0;
}

LRESULT BoxWindow::release_button(UINT message, WPARAM parameter, LPARAM data) {
  const POINT at = point_in(data);
  LRESULT result = 0;
  if (mouse_.release()) {
    ReleaseCapture();
    box_.put_caret(display_.position_at(at), false);
  } else {
    result = act_natively(message, parameter, data);
  }
  mouse_.released(event_of(button_of(message), at));
  return result;
}

/// Whether the point is on a selected character.
bool BoxWindow::is_on_selection(POINT point) const {
  const richtext::Extent selected = box_.selected().extent();
  if (selected.length() == 0) return false;
  const POINT first = display_.point_of(selected.start);
  const POINT last = display_.point_of(selected.end);
  const std::size_t at = display_.position_at(point);
  const bool is_before =
      point.y < first.y || (point.y < last.y && at == selected.start && point.x < first.x);
  const bool is_behind = at >= selected.end && point.x >= last.x;
  return at >= selected.start && at <= selected.end && !is_before && !is_behind;
}

}  // namespace qel::windows
