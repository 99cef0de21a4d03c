#include "qel/box/Keyboard.h"

#include <algorithm>
#include <array>
#include <utility>

#include "qel/base/Graphemes.h"
#include "qel/base/Utf16.h"
#include "qel/platform/Keys.h"

namespace qel::box {

using namespace keys;
using Kind = Box::Kind;

namespace {

using Text = std::u16string_view;

bool is_blank(char16_t character) { return character == u' ' || character == u'\t'; }

bool is_break(Text text, std::size_t at) { return text.substr(at, 2) == u"\r\n"; }

/// The beginning of the next word; breaks count as words.
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

/// The control character that the system generates for a key; 0 for none.
std::int16_t character_of_key(std::int16_t key_code, std::int16_t shift) {
  const bool is_letter = key_code >= 'A' && key_code <= 'Z';
  if (is_letter && shift == ctrl_key) return static_cast<std::int16_t>(key_code - 'A' + 1);
  constexpr std::array with_character = {backspace_key, tab_key, enter_key, escape_key};
  const bool has_character =
      std::find(with_character.begin(), with_character.end(), key_code) != with_character.end();
  // Tab types only with Ctrl.
  const bool types = key_code != tab_key || shift == ctrl_key;
  return has_character && types && (shift & alt_key) == 0 ? key_code : std::int16_t{0};
}

}  // namespace

// The caret.

bool Keyboard::move(std::int16_t key_code, std::int16_t shift) {
  const bool by_words = (shift & ctrl_key) != 0;
  const bool selects = (shift & shift_key) != 0;
  const Text text = box_.text();
  const Selection& selected = box_.selected();
  const bool leaves_selection = !selects && !by_words && !selected.is_empty();
  switch (key_code) {
    case left_key:
      if (leaves_selection) {
        box_.put_caret(selected.start(), false);
      } else {
        box_.put_caret(
            by_words ? word_before(text, selected.caret) : cluster_before(text, selected.caret),
            selects);
      }
      return true;
    case right_key:
      if (leaves_selection) {
        box_.put_caret(selected.end(), false);
      } else {
        box_.put_caret(
            by_words ? word_after(text, selected.caret) : cluster_after(text, selected.caret),
            selects);
      }
      return true;
    case home_key:
    case end_key:
      if (by_words) box_.put_caret(key_code == home_key ? 0 : text.size(), selects);
      return by_words;
    default:
      return false;
  }
}

void Keyboard::select_word(std::size_t at) {
  const Text text = box_.text();
  const auto ends_word = [](char16_t c) { return is_blank(c) || c == u'\r' || c == u'\n'; };
  std::size_t start = at;
  while (start > 0 && !ends_word(text[start - 1])) --start;
  std::size_t end = at;
  while (end < text.size() && !ends_word(text[end])) ++end;
  box_.put_selection(Selection{start, end});
}

// Keys.

bool Keyboard::act_on_key(std::int16_t key_code, std::int16_t shift) {
  typed_.clear();
  const bool is_command = run_command(key_code, shift);
  const bool is_character = press_character(key_code, shift);
  return is_command || is_character;
}

struct Keyboard::Command {
  std::int16_t key_code;
  std::int16_t shift;
  void (Keyboard::*act)();
  bool changes;
};

const Keyboard::Command* Keyboard::find(std::int16_t key_code, std::int16_t shift) {
  static constexpr std::array rows = {
      Command{letter_key('A'), ctrl_key, &Keyboard::select_all, false},
      Command{letter_key('C'), ctrl_key, &Keyboard::copy, false},
      Command{insert_key, ctrl_key, &Keyboard::copy, false},
      Command{letter_key('X'), ctrl_key, &Keyboard::cut, true},
      Command{delete_key, shift_key, &Keyboard::cut, true},
      Command{letter_key('V'), ctrl_key, &Keyboard::paste, true},
      Command{insert_key, shift_key, &Keyboard::paste, true},
      Command{letter_key('V'), ctrl_shift, &Keyboard::paste_text, true},
      Command{letter_key('Z'), ctrl_key, &Keyboard::undo, true},
      Command{backspace_key, alt_key, &Keyboard::undo, true},
      Command{letter_key('Y'), ctrl_key, &Keyboard::redo, true}};
  const auto* const row = std::find_if(rows.begin(), rows.end(), [&](const Command& candidate) {
    return candidate.key_code == key_code && candidate.shift == shift;
  });
  return row == rows.end() ? nullptr : row;
}

bool Keyboard::knows(std::int16_t key_code, std::int16_t shift) {
  const bool moves_or_erases = key_code == left_key || key_code == right_key ||
                               key_code == home_key || key_code == end_key ||
                               key_code == backspace_key || key_code == delete_key;
  return find(key_code, shift) != nullptr || (moves_or_erases && (shift & alt_key) == 0);
}

bool Keyboard::leaves_box(std::int16_t key_code, std::int16_t shift) {
  return key_code == tab_key && (shift & ~shift_key) == 0;
}

bool Keyboard::moves_by_lines(std::int16_t key_code, std::int16_t shift) {
  if ((shift & alt_key) != 0) return false;
  if (key_code == home_key || key_code == end_key) return (shift & ctrl_key) == 0;
  return key_code == page_up_key || key_code == page_down_key || key_code == up_key ||
         key_code == down_key;
}

bool Keyboard::run_command(std::int16_t key_code, std::int16_t shift) {
  box_.settle();
  if ((shift & alt_key) == 0 && move(key_code, shift)) return true;
  if (const Command* const row = find(key_code, shift)) {
    if (!row->changes || box_.may_edit()) (this->*row->act)();
    return true;
  }
  if (key_code != delete_key || (shift & alt_key) != 0) return false;
  const std::size_t caret = box_.selected().caret;
  const bool by_word = (shift & ctrl_key) != 0;
  erase_to(by_word ? word_after(box_.text(), caret) : cluster_after(box_.text(), caret),
           Kind::erasing_ahead);
  return true;
}

/// Tells of the character of a key that has one and does what it stands for. Whether it does
/// anything here.
bool Keyboard::press_character(std::int16_t key_code, std::int16_t shift) {
  const std::int16_t own = character_of_key(key_code, shift);
  if (own == 0) return false;
  std::int16_t character = own;
  box_.listener().on_key_press(character);
  if (character == 0) return true;
  const bool breaks = key_code == enter_key || key_code == tab_key;
  const auto typed = static_cast<char16_t>(character);
  if (character == own && key_code == backspace_key) {
    const std::size_t caret = box_.selected().caret;
    const bool by_word = (shift & ctrl_key) != 0;
    erase_to(by_word ? word_before(box_.text(), caret) : step_before(box_.text(), caret),
             Kind::erasing_back);
  } else if (character != own || (breaks && box_.may_break())) {
    if (box_.may_edit()) box_.type({&typed, 1});
  } else {
    return false;
  }
  return true;
}

void Keyboard::type(Text text) {
  std::u16string left = std::exchange(typed_, {});
  // A first half whose second one never came is no text.
  if (text.empty() || !is_low_surrogate(text.front())) left.clear();
  for (const char16_t unit : text) {
    auto character = static_cast<std::int16_t>(unit);
    box_.listener().on_key_press(character);
    if (character != 0) left.push_back(static_cast<char16_t>(character));
  }
  if (!box_.may_edit()) return;
  if (!left.empty() && is_high_surrogate(left.back())) {
    if (left.back() == text.back()) typed_.assign(1, left.back());
    left.pop_back();
  }
  if (!left.empty()) box_.type(left);
}

/// Erases the selection or, where nothing is selected, from the caret to a position.
void Keyboard::erase_to(std::size_t position, Kind kind) {
  if (!box_.may_edit()) return;
  const Selection& selected = box_.selected();
  if (selected.is_empty()) {
    box_.erase(Selection{selected.caret, position}.extent(), kind);
  } else {
    box_.erase(selected.extent(), Kind::other);
  }
}

void Keyboard::select_all() { box_.put_selection(Selection{0, box_.text().size()}); }

void Keyboard::copy() {
  if (box_.selected().is_empty() || box_.clipboard() == nullptr) return;
  box_.clipboard()->put(box_.get_SelText(), box_.get_SelRTF());
}

void Keyboard::cut() {
  copy();
  box_.erase(box_.selected().extent(), Kind::other);
}

void Keyboard::paste() {
  if (box_.clipboard() == nullptr) return;
  platform::DragData data = box_.clipboard()->data();
  box_.paste(data);
}

void Keyboard::paste_text() {
  if (box_.clipboard() == nullptr) return;
  platform::DragData data = box_.clipboard()->text_alone();
  box_.paste(data);
}

}  // namespace qel::box
