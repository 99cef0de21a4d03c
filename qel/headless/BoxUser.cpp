#include "qel/headless/BoxUser.h"

#include <algorithm>
#include <array>
#include <utility>

#include "qel/base/Utf16.h"
#include "qel/platform/Keys.h"

namespace qel::headless {

using namespace keys;
using Kind = UndoHistory::Kind;

namespace {

using Text = std::u16string_view;

constexpr std::int16_t left_button = 1;

bool is_blank(char16_t character) { return character == u' ' || character == u'\t'; }

bool is_break(Text text, std::size_t at) { return text.substr(at, 2) == u"\r\n"; }

std::size_t line_start(Text text, std::size_t at) {
  const std::size_t line_feed = at == 0 ? Text::npos : text.rfind(u'\n', at - 1);
  return line_feed == Text::npos ? 0 : line_feed + 1;
}

std::size_t line_end(Text text, std::size_t at) {
  return std::min(text.find(u'\r', at), text.size());
}

/// Begin of the next word; breaks count as words.
std::size_t word_after(Text text, std::size_t at) {
  if (at < text.size() && is_break(text, at)) return at + 2;
  while (at < text.size() && !is_blank(text[at]) && text[at] != u'\r') ++at;
  while (at < text.size() && is_blank(text[at])) ++at;
  return at;
}

std::size_t word_before(Text text, std::size_t at) {
  if (at >= 2 && is_break(text, at - 2)) return at - 2;
  while (at > 0 && is_blank(text[at - 1])) --at;
  while (at > 0 && !is_blank(text[at - 1]) && text[at - 1] != u'\n') --at;
  return at;
}

/// The character that the system makes of a key; 0 for none.
std::int16_t character_of_key(std::int16_t key_code, std::int16_t shift) {
  const bool is_letter = key_code >= 'A' && key_code <= 'Z';
  if (is_letter && shift == ctrl_key) return static_cast<std::int16_t>(key_code - 'A' + 1);
  constexpr std::array with_character = {backspace_key, tab_key, enter_key, escape_key};
  const bool has_character =
      std::find(with_character.begin(), with_character.end(), key_code) != with_character.end();
  // Tab alone leaves the box.
  const bool leaves = key_code == tab_key && shift != ctrl_key;
  return has_character && !leaves && (shift & alt_key) == 0 ? key_code : std::int16_t{0};
}

/// The key of a character, and the modifiers that it takes.
std::pair<std::int16_t, std::int16_t> key_of_character(char16_t character) {
  const auto code = static_cast<std::int16_t>(character);
  if (character >= u'a' && character <= u'z') {
    return {static_cast<std::int16_t>(code - u'a' + u'A'), no_modifier};
  }
  if (character >= u'A' && character <= u'Z') return {code, shift_key};
  const bool has_key = (character >= u'0' && character <= u'9') || character == u' ';
  return {has_key ? code : character_packet_key, no_modifier};
}

}  // namespace

// The caret.

std::size_t BoxUser::caret() const {
  const platform::Range selection = box_.selection();
  const std::int32_t end = selection.start + selection.length;
  return selection == last_selection_ ? caret_ : static_cast<std::size_t>(end);
}

std::size_t BoxUser::anchor() const {
  const platform::Range selection = box_.selection();
  const auto start = static_cast<std::size_t>(selection.start);
  return caret() == start ? start + static_cast<std::size_t>(selection.length) : start;
}

void BoxUser::put_caret(std::size_t position, bool selects) {
  const std::size_t fixed = selects ? anchor() : position;
  const std::size_t start = std::min(fixed, position);
  box_.select({static_cast<std::int32_t>(start),
               static_cast<std::int32_t>(std::max(fixed, position) - start)});
  last_selection_ = box_.selection();
  caret_ = position;
  keeps_goal_ = false;
}

/// The place in a line above or below.
std::size_t BoxUser::line_away(std::ptrdiff_t lines) {
  const Text text = box_.text();
  const std::size_t here = caret();
  std::size_t start = line_start(text, here);
  if (!keeps_goal_) goal_column_ = here - start;
  for (; lines > 0 && line_end(text, start) < text.size(); --lines)
    start = line_end(text, start) + 2;
  for (; lines < 0 && start > 0; ++lines) start = line_start(text, start - 2);
  return std::min(start + goal_column_, line_end(text, start));
}

/// Lines that a key moves by; 0 for one that does not.
std::ptrdiff_t BoxUser::lines_of(std::int16_t key_code) const {
  const float lines_shown = static_cast<float>(box_.appearance().height) / RichEdit::line_height;
  const auto page = static_cast<std::ptrdiff_t>(std::max(1.0F, lines_shown));
  switch (key_code) {
    case up_key:
      return -1;
    case down_key:
      return 1;
    case page_up_key:
      return -page;
    case page_down_key:
      return page;
    default:
      return 0;
  }
}

bool BoxUser::move(std::int16_t key_code, bool ctrl, bool selects) {
  if (const std::ptrdiff_t lines = lines_of(key_code); lines != 0) {
    put_caret(line_away(lines), selects);
    keeps_goal_ = true;
    return true;
  }
  const Text text = box_.text();
  const std::size_t here = caret();
  const bool leaves_selection = !selects && !ctrl && box_.get_SelLength() != 0;
  switch (key_code) {
    case left_key:
      if (leaves_selection) {
        put_caret(std::min(here, anchor()), false);
      } else {
        put_caret(ctrl ? word_before(text, here) : step_before(text, here), selects);
      }
      return true;
    case right_key:
      if (leaves_selection) {
        put_caret(std::max(here, anchor()), false);
      } else {
        put_caret(ctrl ? word_after(text, here) : step_after(text, here), selects);
      }
      return true;
    case home_key:
      put_caret(ctrl ? 0 : line_start(text, here), selects);
      return true;
    case end_key:
      put_caret(ctrl ? text.size() : line_end(text, here), selects);
      return true;
    default:
      return false;
  }
}

// Keys.

std::int16_t BoxUser::press(std::int16_t key_code, std::int16_t shift) {
  return stroke(key_code, shift, 0);
}

void BoxUser::type(std::u16string_view text) {
  for (const char16_t character : text) {
    if (character == u'\n') {
      press(enter_key);
      continue;
    }
    const auto [key_code, shift] = key_of_character(character);
    stroke(key_code, shift, static_cast<std::int16_t>(character));
  }
}

std::int16_t BoxUser::stroke(std::int16_t key_code, std::int16_t shift, std::int16_t character) {
  if (!box_.appearance().enabled) return key_code;
  std::int16_t left = key_code;
  std::int16_t mask = shift;
  box_.listener().on_key_down(left, mask);
  if (left != 0 && character != 0) {
    type_character(character);
  } else if (left != 0) {
    act_on_key(left, mask);
  }
  box_.listener().on_key_up(key_code, shift);
  return left;
}

void BoxUser::act_on_key(std::int16_t key_code, std::int16_t shift) {
  run_command(key_code, shift);
  press_character(key_code, shift);
}

void BoxUser::run_command(std::int16_t key_code, std::int16_t shift) {
  const bool ctrl = (shift & ctrl_key) != 0;
  if ((shift & alt_key) == 0 && move(key_code, ctrl, (shift & shift_key) != 0)) return;
  struct Row {
    std::int16_t key_code;
    std::int16_t shift;
    void (BoxUser::*act)();
    bool changes;
  };
  static constexpr std::array rows = {Row{letter_key('A'), ctrl_key, &BoxUser::select_all, false},
                                      Row{letter_key('C'), ctrl_key, &BoxUser::copy, false},
                                      Row{insert_key, ctrl_key, &BoxUser::copy, false},
                                      Row{letter_key('X'), ctrl_key, &BoxUser::cut, true},
                                      Row{delete_key, shift_key, &BoxUser::cut, true},
                                      Row{letter_key('V'), ctrl_key, &BoxUser::paste, true},
                                      Row{insert_key, shift_key, &BoxUser::paste, true},
                                      Row{letter_key('Z'), ctrl_key, &BoxUser::undo, true},
                                      Row{backspace_key, alt_key, &BoxUser::undo, true},
                                      Row{letter_key('Y'), ctrl_key, &BoxUser::redo, true}};
  const auto row = std::find_if(rows.begin(), rows.end(), [&](const Row& candidate) {
    return candidate.key_code == key_code && candidate.shift == shift;
  });
  if (row != rows.end()) {
    if (!row->changes || may_edit()) (this->*row->act)();
  } else if (key_code == delete_key && may_edit()) {
    erase(ctrl ? word_after(box_.text(), caret()) : step_after(box_.text(), caret()),
          Kind::erasing_ahead);
  }
}

/// Tells of the character of a key that has one and does what it stands for.
void BoxUser::press_character(std::int16_t key_code, std::int16_t shift) {
  const std::int16_t own = character_of_key(key_code, shift);
  if (own == 0) return;
  std::int16_t character = own;
  box_.listener().on_key_press(character);
  const bool multiline = box_.appearance().multiline;
  if (character == 0 || !may_edit()) return;
  if (character != own) {
    box_.type(static_cast<char16_t>(character));
  } else if (key_code == backspace_key) {
    const bool by_word = (shift & ctrl_key) != 0;
    erase(by_word ? word_before(box_.text(), caret()) : step_before(box_.text(), caret()),
          Kind::erasing_back);
  } else if (multiline && (key_code == enter_key || key_code == tab_key)) {
    box_.type(static_cast<char16_t>(own));
  }
}

void BoxUser::type_character(std::int16_t character) {
  box_.listener().on_key_press(character);
  if (character != 0 && may_edit()) box_.type(static_cast<char16_t>(character));
}

/// Erases the selection, or where nothing is selected what lies between the caret and `to`.
void BoxUser::erase(std::size_t to, Kind kind) {
  const platform::Range selection = box_.selection();
  if (selection.length != 0) {
    box_.erase(selection, Kind::other);
    return;
  }
  const std::size_t start = std::min(to, caret());
  const std::size_t end = std::max(to, caret());
  box_.erase({static_cast<std::int32_t>(start), static_cast<std::int32_t>(end - start)}, kind);
}

void BoxUser::select_all() { box_.select({0, static_cast<std::int32_t>(box_.text().size())}); }

void BoxUser::copy() {
  if (box_.get_SelLength() != 0) box_.clipboard().put(box_.get_SelText(), box_.get_SelRTF());
}

void BoxUser::cut() {
  copy();
  box_.erase(box_.selection(), Kind::other);
}

void BoxUser::paste() { box_.insert(box_.clipboard().rtf(), box_.clipboard().text()); }

void BoxUser::undo() { box_.undo(); }

void BoxUser::redo() { box_.redo(); }

// The mouse.

void BoxUser::mouse_down(float x, float y, std::int16_t shift, std::int16_t button) {
  if (!box_.appearance().enabled) return;
  button_ = button;
  box_.listener().on_mouse_down(button, shift, x, y);
  if (button != left_button) return;
  const auto at = static_cast<std::size_t>(box_.position_at(x, y));
  const bool on_selection = at > std::min(anchor(), caret()) && at < std::max(anchor(), caret());
  may_drag_ = on_selection && box_.appearance().drag_mode != 0 && shift == no_modifier;
  if (!may_drag_) put_caret(at, (shift & shift_key) != 0);
}

void BoxUser::mouse_move(float x, float y, std::int16_t shift) {
  if (!box_.appearance().enabled) return;
  box_.listener().on_mouse_move(button_, shift, x, y);
  if (button_ != left_button) return;
  if (std::exchange(may_drag_, false)) {
    // The drag takes the pointer with it: this box does not see the button come up.
    button_ = 0;
    box_.start_drag();
  } else {
    put_caret(static_cast<std::size_t>(box_.position_at(x, y)), true);
  }
}

void BoxUser::mouse_up(float x, float y, std::int16_t shift) {
  const std::int16_t button = std::exchange(button_, std::int16_t{0});
  if (button == 0) return;
  if (std::exchange(may_drag_, false)) {
    put_caret(static_cast<std::size_t>(box_.position_at(x, y)), false);
  }
  box_.listener().on_mouse_up(button, shift, x, y);
  if (button == left_button) box_.listener().on_click();
}

void BoxUser::click(float x, float y, std::int16_t shift) {
  mouse_down(x, y, shift);
  mouse_up(x, y, shift);
}

void BoxUser::double_click(float x, float y) {
  if (!box_.appearance().enabled) return;
  click(x, y);
  box_.listener().on_double_click();
  select_word(static_cast<std::size_t>(box_.position_at(x, y)));
  box_.listener().on_mouse_up(left_button, no_modifier, x, y);
}

void BoxUser::select_word(std::size_t at) {
  const Text text = box_.text();
  const auto ends_word = [](char16_t c) { return is_blank(c) || c == u'\r' || c == u'\n'; };
  std::size_t start = at;
  while (start > 0 && !ends_word(text[start - 1])) --start;
  std::size_t end = at;
  while (end < text.size() && !ends_word(text[end])) ++end;
  put_caret(start, false);
  put_caret(end, true);
}

}  // namespace qel::headless
