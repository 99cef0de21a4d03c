// How a box's window handles the keyboard.

#include <windows.h>

#include <algorithm>

#include "qel/base/Utf16.h"
#include "qel/platform/Keys.h"
#include "windows/BoxWindow.h"
#include "windows/Modifiers.h"

namespace qel::windows {

using namespace keys;

namespace {

bool is_control(char16_t character) { return character < u' ' || character == u'\u007F'; }

/// The character that the key being pressed generates, whatever becomes of it.
std::optional<char16_t> pending_character(HWND window) {
  MSG message;
  if (PeekMessageW(&message, window, WM_CHAR, WM_CHAR, PM_NOREMOVE) == 0) return {};
  return static_cast<char16_t>(message.wParam);
}

}  // namespace

BoxWindow::Handled BoxWindow::handle_key(UINT message, WPARAM parameter, LPARAM data) {
  const bool is_key = message >= WM_KEYFIRST && message <= WM_KEYLAST;
  if (is_key && !takes_input()) return 0;
  switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      // Text composed from several keys is reported when it is complete.
      if (parameter == VK_PROCESSKEY) return {};
      return press(message, parameter, data);
    case WM_KEYUP:
    case WM_SYSKEYUP:
      return release(message, parameter, data);
    case WM_CHAR:
      settle();
      [[fallthrough]];
    case WM_IME_CHAR:
      return take_character(static_cast<char16_t>(parameter));
    case WM_UNICHAR: {
      if (parameter == UNICODE_NOCHAR) return TRUE;
      settle();
      const auto character = static_cast<char32_t>(parameter);
      if (units_of(character) == 1) return take_character(static_cast<char16_t>(character));
      std::u16string pair(2, u'\0');
      put_character(pair, 0, character);
      keyboard_.type(pair);
      return FALSE;
    }
    case WM_SYSCHAR:
    case WM_SYSDEADCHAR:
      // Belongs to a menu.
      return DefWindowProcW(window_, message, parameter, data);
    case WM_GETDLGCODE:
      return DLGC_WANTALLKEYS | DLGC_WANTARROWS | DLGC_WANTCHARS;
    default:
      return {};
  }
}

LRESULT BoxWindow::press(UINT message, WPARAM key, LPARAM data) {
  const auto key_code = static_cast<std::int16_t>(key);
  const std::int16_t shift = held_modifiers();
  std::int16_t left = key_code;
  std::int16_t mask = shift;
  box_.listener().on_key_down(left, mask);
  if (left == 0 || window_ == nullptr) {
    drop_characters();
    return 0;
  }
  // With Ctrl, the space bar types nothing in any box, although the system says it does.
  const bool types_nothing = left == space_key && mask == ctrl_key;
  if (!types_nothing && is_about_to_type()) return 0;
  drop_characters();
  const bool is_own = left == key_code && mask == shift;
  if (box::Keyboard::leaves_box(left, mask)) {
    leave_by_tab((mask & shift_key) != 0);
  } else if (is_own && box::Keyboard::moves_by_lines(left, mask)) {
    move_natively(message, key, data);
  } else {
    act(left, mask);
    const bool is_for_menus = is_own && message == WM_SYSKEYDOWN && left != backspace_key;
    if (is_for_menus && window_ != nullptr) return DefWindowProcW(window_, message, key, data);
  }
  return 0;
}

/// Lets the window move its caret, starting where the box's is. Not every system keeps it within
/// the line that it goes to: in one too short for the caret's column it has to stop before the
/// break.
void BoxWindow::move_natively(UINT message, WPARAM key, LPARAM data) {
  const box::Selection before = box_.selected();
  const bool goes_from_caret = display_.has_other_caret();
  if (goes_from_caret) display_.put_caret(before.caret);
  const std::int16_t shift = held_modifiers();
  const bool is_vertical = (key == VK_UP || key == VK_DOWN) && shift == no_modifier;
  const LONG line = is_vertical ? display_.line_of_caret() : 0;
  act_natively(message, key, data);
  if (window_ == nullptr) return;
  if (goes_from_caret && (shift & shift_key) != 0) {
    box_.put_selection({before.anchor, box_.selected().caret});
  }
  if (!is_vertical) return;
  const LONG wanted = key == VK_UP ? std::max(line - 1, 0L) : line + 1;
  const std::size_t caret = box_.selected().caret;
  if (display_.line_of_caret() != wanted + 1 || caret == 0) return;
  box_.put_caret(step_before(box_.text(), caret), false);
}

/// Applies the key to the box; Enter or Escape, if it has no use for them, go to the dialog.
void BoxWindow::act(std::int16_t key_code, std::int16_t shift) {
  if (keyboard_.act_on_key(key_code, shift) || window_ == nullptr) return;
  if (key_code == escape_key || key_code == enter_key) leave_to_dialog(key_code);
}

LRESULT BoxWindow::release(UINT message, WPARAM key, LPARAM data) {
  auto key_code = static_cast<std::int16_t>(key);
  std::int16_t shift = held_modifiers();
  box_.listener().on_key_up(key_code, shift);
  return window_ == nullptr ? 0 : DefWindowProcW(window_, message, key, data);
}

/// A control character that comes without its key counts as the key.
LRESULT BoxWindow::take_character(char16_t character) {
  if (!is_control(character)) {
    keyboard_.type({&character, 1});
  } else if (character == backspace_key || character == enter_key) {
    keyboard_.act_on_key(static_cast<std::int16_t>(character), no_modifier);
  } else if (character == tab_key) {
    keyboard_.act_on_key(tab_key, ctrl_key);
  }
  return 0;
}

/// Whether the key being pressed types something, which comes as a separate message.
bool BoxWindow::is_about_to_type() const {
  const std::optional<char16_t> character = pending_character(window_);
  return character && !is_control(*character);
}

/// A key that is handled or cancelled generates no characters.
void BoxWindow::drop_characters() const {
  if (window_ == nullptr) return;
  MSG message;
  while (PeekMessageW(&message, window_, WM_CHAR, WM_DEADCHAR, PM_REMOVE) != 0) {
  }
  // Any left over are those with Alt, for menus, which a cancelled key does not open.
}

/// Moves the focus to the control before or after the box.
void BoxWindow::leave_by_tab(bool back) const {
  const HWND form = GetAncestor(window_, GA_ROOT);
  const HWND next = GetNextDlgTabItem(form, window_, back ? TRUE : FALSE);
  if (next != nullptr && next != window_) SetFocus(next);
}

/// Enter is for the default button of a dialog, and Escape for the one that cancels.
void BoxWindow::leave_to_dialog(std::int16_t key_code) const {
  const HWND form = GetAncestor(window_, GA_ROOT);
  const LRESULT answer = SendMessageW(form, DM_GETDEFID, 0, 0);
  if (HIWORD(answer) != DC_HASDEFID) return;
  const int id = key_code == escape_key ? IDCANCEL : LOWORD(answer);
  const HWND button = GetDlgItem(form, id);
  const WPARAM clicked = MAKEWPARAM(id, BN_CLICKED);
  if (button != nullptr) PostMessageW(form, WM_COMMAND, clicked, reinterpret_cast<LPARAM>(button));
}

}  // namespace qel::windows
