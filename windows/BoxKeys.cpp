// A box's window at the keyboard.

#include <windows.h>

#include <algorithm>
#include <iterator>

#include "qel/base/Utf16.h"
#include "qel/platform/Keys.h"
#include "windows/BoxWindow.h"
#include "windows/Modifiers.h"

namespace qel::windows {

using namespace keys;

namespace {

/// Keys that move the caret: the window knows its lines and the direction of its text.
bool moves_caret(std::int16_t key_code) { return key_code >= page_up_key && key_code <= down_key; }

/// Whether a key only leaves what is selected, for the end where it points.
bool leaves_selection(std::int16_t key_code, std::int16_t shift, platform::Range selected) {
  const bool is_step = key_code == left_key || key_code == right_key;
  return is_step && shift == no_modifier && selected.length != 0;
}

bool is_control(char16_t character) { return character < u' ' || character == u'\u007F'; }

/// Whether the range begins or ends between the halves of a character.
bool cuts_character(std::u16string_view text, platform::Range range) {
  const auto is_cut = [text](std::int32_t position) {
    const auto at = static_cast<std::size_t>(position);
    return at > 0 && at < text.size() && is_pair_at(text, at - 1);
  };
  return is_cut(range.start) || is_cut(range.start + range.length);
}

/// The character that was made of the key that is being pressed, whatever becomes of it.
std::optional<char16_t> pending_character(HWND window) {
  MSG message;
  if (PeekMessageW(&message, window, WM_CHAR, WM_CHAR, PM_NOREMOVE) == 0) return {};
  return static_cast<char16_t>(message.wParam);
}

}  // namespace

BoxWindow::Handled BoxWindow::handle_key(UINT message, WPARAM parameter, LPARAM data) {
  const bool is_key = message >= WM_KEYFIRST && message <= WM_KEYLAST;
  if (is_key && !appearance_.enabled) return 0;
  switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      // What is composed from several keys is told of when it is there.
      if (parameter == VK_PROCESSKEY) return {};
      return press(message, parameter, data);
    case WM_KEYUP:
    case WM_SYSKEYUP:
      return release(message, parameter, data);
    case WM_CHAR:
    case WM_IME_CHAR:
      return take_character(static_cast<char16_t>(parameter));
    case WM_UNICHAR: {
      if (parameter == UNICODE_NOCHAR) return TRUE;
      std::u16string units(units_of(static_cast<char32_t>(parameter)), u'\0');
      put_character(units, 0, static_cast<char32_t>(parameter));
      for (const char16_t unit : units) take_character(unit);
      return FALSE;
    }
    case WM_SYSCHAR:
    case WM_SYSDEADCHAR:
      // A menu's.
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
  listener_->on_key_down(left, mask);
  if (left == 0 || is_closed_) {
    drop_characters();
    return 0;
  }
  if (is_about_to_type()) return 0;
  drop_characters();
  const bool is_own = left == key_code && mask == shift;
  const bool is_native = is_own && moves_caret(left) && (mask & alt_key) == 0 &&
                         !leaves_selection(left, mask, content_.selection());
  if (left == tab_key && (mask & ~shift_key) == 0) {
    leave_by_tab((mask & shift_key) != 0);
  } else if (is_native) {
    move_natively(message, key, data);
  } else {
    act(left, mask);
    const bool is_for_menus = is_own && message == WM_SYSKEYDOWN && left != backspace_key;
    if (is_for_menus && window_ != nullptr) return DefWindowProcW(window_, message, key, data);
  }
  return 0;
}

/// Lets the window move the caret. Not every system's stays in the line that it goes to: one that
/// is too short for the place of the caret ends before its break. Nor does every one step over both
/// halves of a character.
void BoxWindow::move_natively(UINT message, WPARAM key, LPARAM data) {
  const bool is_vertical = (key == VK_UP || key == VK_DOWN) && held_modifiers() == no_modifier;
  const LONG line = is_vertical ? display_.line_of_caret() : 0;
  act_natively(message, key, data);
  const bool is_step = key == VK_LEFT || key == VK_RIGHT;
  if (is_step && window_ != nullptr && cuts_character(content_.text(), content_.selection())) {
    act_natively(message, key, data);
  }
  if (!is_vertical || window_ == nullptr) return;
  const LONG wanted = key == VK_UP ? std::max(line - 1, 0L) : line + 1;
  const platform::Range caret = content_.selection();
  if (display_.line_of_caret() != wanted + 1 || caret.start == 0) return;
  const auto before = step_before(content_.text(), static_cast<std::size_t>(caret.start));
  select({static_cast<std::int32_t>(before), 0});
}

/// Does what the key does in the box.
void BoxWindow::act(std::int16_t key_code, std::int16_t shift) {
  hands_.act_on_key(key_code, shift);
  if (is_closed_) return;
  show();
  const bool is_unused =
      key_code == escape_key || (key_code == enter_key && !appearance_.multiline);
  if (is_unused) leave_to_dialog(key_code);
}

LRESULT BoxWindow::release(UINT message, WPARAM key, LPARAM data) {
  auto key_code = static_cast<std::int16_t>(key);
  std::int16_t shift = held_modifiers();
  listener_->on_key_up(key_code, shift);
  return window_ == nullptr ? 0 : DefWindowProcW(window_, message, key, data);
}

/// A control character that comes without its key is as good as the key.
LRESULT BoxWindow::take_character(char16_t character) {
  if (!is_control(character)) {
    hands_.type_character(static_cast<std::int16_t>(character));
  } else if (character == backspace_key || character == enter_key) {
    hands_.act_on_key(static_cast<std::int16_t>(character), no_modifier);
  } else if (character == tab_key) {
    hands_.act_on_key(tab_key, ctrl_key);
  }
  show();
  return 0;
}

/// Whether the key that is being pressed types something, which comes as a message of its own.
bool BoxWindow::is_about_to_type() const {
  const std::optional<char16_t> character = pending_character(window_);
  return character && !is_control(*character);
}

/// A key that is handled or cancelled makes no characters.
void BoxWindow::drop_characters() const {
  if (window_ == nullptr) return;
  MSG message;
  while (PeekMessageW(&message, window_, WM_CHAR, WM_DEADCHAR, PM_REMOVE) != 0) {
  }
  // What is left of those with Alt is for menus, which a cancelled key does not open.
}

/// To the control before or after the box.
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
