#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "qel/headless/RichEdit.h"

namespace qel::headless {

/// The hands of a user at a box in memory: keys and mouse do what they do in a window. Key codes
/// and masks are those of `platform/Keys.h`; each event is told to the box's listener before it
/// acts. Nothing happens in a disabled box, and nothing is changed in a read-only one.
///
/// The keys: arrows, Home, End and the page keys, by words and to the ends of the text with Ctrl,
/// selecting with Shift; Backspace and Delete, by words with Ctrl; Enter, Ctrl+Tab for a tab;
/// Ctrl+A; Ctrl+C, Ctrl+X and Ctrl+V, Ctrl+Insert, Shift+Delete and Shift+Insert; Ctrl+Z and
/// Alt+Backspace, Ctrl+Y.
class BoxUser {
 public:
  /// The box must outlive its user.
  explicit BoxUser(RichEdit& box) : box_(box) {}

  /// Presses a key and lets it go. Returns its code as it was left to the box: 0 when the listener
  /// has swallowed it.
  std::int16_t press(std::int16_t key_code, std::int16_t shift = 0);
  /// Types characters, each with its key; a line feed is Enter.
  void type(std::u16string_view text);

  /// The mouse, at points in the box's scale units. Buttons are 1 left, 2 right and 4 middle.
  void mouse_down(float x, float y, std::int16_t shift = 0, std::int16_t button = 1);
  void mouse_move(float x, float y, std::int16_t shift = 0);
  void mouse_up(float x, float y, std::int16_t shift = 0);
  void click(float x, float y, std::int16_t shift = 0);
  /// Selects the word there.
  void double_click(float x, float y);

  // The parts of this, for a window whose events are told apart.

  /// What a key does by itself: its command, or what the control character that it types stands
  /// for, of which the listener is told.
  void act_on_key(std::int16_t key_code, std::int16_t shift);
  /// The command alone, which tells of no character.
  void run_command(std::int16_t key_code, std::int16_t shift);
  /// Tells the listener of a character, and types what is left of it.
  void type_character(std::int16_t character);
  /// Selects the word around a position within the text.
  void select_word(std::size_t at);

 private:
  bool may_edit() const { return !box_.appearance().read_only; }
  std::size_t anchor() const;
  std::size_t caret() const;
  void put_caret(std::size_t position, bool selects);

  std::ptrdiff_t lines_of(std::int16_t key_code) const;
  std::size_t line_away(std::ptrdiff_t lines);
  bool move(std::int16_t key_code, bool ctrl, bool selects);

  std::int16_t stroke(std::int16_t key_code, std::int16_t shift, std::int16_t character);
  void press_character(std::int16_t key_code, std::int16_t shift);

  void erase(std::size_t to, UndoHistory::Kind kind);
  void select_all();
  void copy();
  void cut();
  void paste();
  void undo();
  void redo();

  RichEdit& box_;
  platform::Range last_selection_;  // as the user left it
  std::size_t caret_ = 0;           // the end of it that moves
  std::size_t goal_column_ = 0;     // for moves from line to line
  bool keeps_goal_ = false;
  std::int16_t button_ = 0;  // pressed
  bool may_drag_ = false;
};

}  // namespace qel::headless
