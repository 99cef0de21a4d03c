#include "qt/platform/KeyMapping.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace qel::qt {

using namespace keys;

namespace {

struct KeyRow {
  int qt_key;
  std::int16_t key_code;
};

constexpr KeyRow named_keys[] = {
    {Qt::Key_Backspace, backspace_key},
    {Qt::Key_Tab, tab_key},
    {Qt::Key_Backtab, tab_key},
    {Qt::Key_Return, enter_key},
    {Qt::Key_Enter, enter_key},
    {Qt::Key_Shift, 16},
    {Qt::Key_Control, 17},
    {Qt::Key_Alt, 18},
    {Qt::Key_Pause, 19},
    {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, escape_key},
    {Qt::Key_Space, 32},
    {Qt::Key_PageUp, page_up_key},
    {Qt::Key_PageDown, page_down_key},
    {Qt::Key_End, end_key},
    {Qt::Key_Home, home_key},
    {Qt::Key_Left, left_key},
    {Qt::Key_Up, up_key},
    {Qt::Key_Right, right_key},
    {Qt::Key_Down, down_key},
    {Qt::Key_Print, 44},
    {Qt::Key_Insert, insert_key},
    {Qt::Key_Delete, delete_key},
    {Qt::Key_Meta, 91},
    {Qt::Key_Menu, 93},
    {Qt::Key_NumLock, 144},
    {Qt::Key_ScrollLock, 145},
};

/// The keys of signs on the keyboard that the key codes were made for.
constexpr KeyRow sign_keys[] = {
    {Qt::Key_Exclam, '1'},
    {Qt::Key_At, '2'},
    {Qt::Key_NumberSign, '3'},
    {Qt::Key_Dollar, '4'},
    {Qt::Key_Percent, '5'},
    {Qt::Key_AsciiCircum, '6'},
    {Qt::Key_Ampersand, '7'},
    {Qt::Key_Asterisk, '8'},
    {Qt::Key_ParenLeft, '9'},
    {Qt::Key_ParenRight, '0'},
    {Qt::Key_Semicolon, 186},
    {Qt::Key_Colon, 186},
    {Qt::Key_Equal, 187},
    {Qt::Key_Plus, 187},
    {Qt::Key_Comma, 188},
    {Qt::Key_Less, 188},
    {Qt::Key_Minus, 189},
    {Qt::Key_Underscore, 189},
    {Qt::Key_Period, 190},
    {Qt::Key_Greater, 190},
    {Qt::Key_Slash, 191},
    {Qt::Key_Question, 191},
    {Qt::Key_QuoteLeft, grave_accent_key},
    {Qt::Key_AsciiTilde, grave_accent_key},
    {Qt::Key_BracketLeft, 219},
    {Qt::Key_BraceLeft, 219},
    {Qt::Key_Backslash, 220},
    {Qt::Key_Bar, 220},
    {Qt::Key_BracketRight, 221},
    {Qt::Key_BraceRight, 221},
    {Qt::Key_Apostrophe, apostrophe_key},
    {Qt::Key_QuoteDbl, apostrophe_key},
};

constexpr KeyRow keypad_keys[] = {
    {Qt::Key_Asterisk, 106}, {Qt::Key_Plus, 107},  {Qt::Key_Minus, 109},
    {Qt::Key_Period, 110},   {Qt::Key_Comma, 110}, {Qt::Key_Slash, 111},
};

constexpr std::int16_t first_keypad_digit = 96;

template <std::size_t Size>
std::int16_t find(const KeyRow (&rows)[Size], int qt_key) {
  const auto row = std::find_if(std::begin(rows), std::end(rows),
                                [qt_key](const KeyRow& r) { return r.qt_key == qt_key; });
  return row == std::end(rows) ? std::int16_t{0} : row->key_code;
}

template <std::size_t Size>
int find_qt_key(const KeyRow (&rows)[Size], std::int16_t key_code) {
  const auto row = std::find_if(std::begin(rows), std::end(rows),
                                [key_code](const KeyRow& r) { return r.key_code == key_code; });
  return row == std::end(rows) ? 0 : row->qt_key;
}

std::int16_t key_code_of(const QKeyEvent& event) {
  const int key = event.key();
  const bool is_digit = key >= Qt::Key_0 && key <= Qt::Key_9;
  if (event.modifiers().testFlag(Qt::KeypadModifier)) {
    if (is_digit) return static_cast<std::int16_t>(first_keypad_digit + key - Qt::Key_0);
    if (const std::int16_t code = find(keypad_keys, key); code != 0) return code;
  }
  const bool is_letter = key >= Qt::Key_A && key <= Qt::Key_Z;
  if (is_digit || is_letter) return static_cast<std::int16_t>(key);
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return function_key(key - Qt::Key_F1 + 1);
  if (const std::int16_t code = find(named_keys, key); code != 0) return code;
  if (const std::int16_t code = find(sign_keys, key); code != 0) return code;
  return event.text().isEmpty() ? std::int16_t{0} : character_packet_key;
}

/// Whether a code unit can be typed, as control characters cannot.
bool is_typed(QChar unit) {
  return unit.isPrint() || unit.isSurrogate() || unit.category() == QChar::Other_Format ||
         unit.category() == QChar::Other_PrivateUse;
}

}  // namespace

Stroke stroke_of(const QKeyEvent& event) {
  Stroke stroke = {key_code_of(event), shift_mask(event.modifiers())};
  if (event.key() == Qt::Key_Backtab) stroke.shift |= shift_key;
  if (event.type() != QEvent::KeyPress) return stroke;
  // A modifier counts as held from its own press on.
  if (event.key() == Qt::Key_Shift) stroke.shift |= shift_key;
  if (event.key() == Qt::Key_Control) stroke.shift |= ctrl_key;
  if (event.key() == Qt::Key_Alt) stroke.shift |= alt_key;
  return stroke;
}

int qt_key_of(std::int16_t key_code) {
  const bool is_own = (key_code >= 'A' && key_code <= 'Z') || (key_code >= '0' && key_code <= '9');
  if (is_own) return key_code;
  if (key_code >= first_function_key && key_code < function_key(25)) {
    return Qt::Key_F1 + key_code - first_function_key;
  }
  const int named = find_qt_key(named_keys, key_code);
  return named != 0 ? named : find_qt_key(sign_keys, key_code);
}

std::int16_t shift_mask(Qt::KeyboardModifiers modifiers) {
  return static_cast<std::int16_t>((modifiers.testFlag(Qt::ShiftModifier) ? shift_key : 0) |
                                   (modifiers.testFlag(Qt::ControlModifier) ? ctrl_key : 0) |
                                   (modifiers.testFlag(Qt::AltModifier) ? alt_key : 0));
}

Qt::KeyboardModifiers modifiers_of(std::int16_t shift) {
  Qt::KeyboardModifiers modifiers;
  modifiers.setFlag(Qt::ShiftModifier, (shift & shift_key) != 0);
  modifiers.setFlag(Qt::ControlModifier, (shift & ctrl_key) != 0);
  modifiers.setFlag(Qt::AltModifier, (shift & alt_key) != 0);
  return modifiers;
}

std::int16_t button_mask(Qt::MouseButtons buttons) {
  return static_cast<std::int16_t>((buttons.testFlag(Qt::LeftButton) ? 1 : 0) |
                                   (buttons.testFlag(Qt::RightButton) ? 2 : 0) |
                                   (buttons.testFlag(Qt::MiddleButton) ? 4 : 0));
}

QString typed_text(const QKeyEvent& event) {
  const std::int16_t mask = shift_mask(event.modifiers()) & (ctrl_key | alt_key);
  const QString text = event.text();
  // Ctrl and Alt together may be AltGr, which types a third character; the key's own letter is not
  // one.
  const int key = event.key();
  const bool is_letter =
      key >= Qt::Key_A && key <= Qt::Key_Z && text.compare(QChar(key), Qt::CaseInsensitive) == 0;
  const bool is_third = mask == (ctrl_key | alt_key) && !is_letter;
  const bool may_type = mask == 0 || is_third;
  const bool is_text = std::all_of(text.begin(), text.end(), is_typed);
  return may_type && is_text ? text : QString();
}

}  // namespace qel::qt
