#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/box/Box.h"

namespace qel::box {

/// The keys of a box; its listener is told of characters before they act. Key codes and masks are
/// those of `platform/Keys.h`. Nothing changes in a box that may not be edited.
///
/// The keys: Left and Right by clusters of characters and, with Ctrl, by words, which blanks
/// divide; Ctrl+Home and Ctrl+End; all of these select with Shift. Backspace erases one character,
/// so that a wrong accent can be typed again, Delete a whole cluster, and both a word with Ctrl;
/// Enter, and Ctrl+Tab for a tab, where there are several lines; Ctrl+A; Ctrl+C, Ctrl+X and Ctrl+V,
/// Ctrl+Insert, Shift+Delete and Shift+Insert; Ctrl+Shift+V, which pastes text alone; Ctrl+Z and
/// Alt+Backspace, Ctrl+Y. Keys that depend on how lines are laid out are the view's.
class Keyboard {
 public:
  /// The box must outlive this.
  explicit Keyboard(Box& box) : box_(box) {}

  /// Does what a key does by itself: runs its command, tells the listener of the control character
  /// that it types, if any, and acts on that. Whether the box has a use for the key.
  bool act_on_key(std::int16_t key_code, std::int16_t shift);
  /// Runs the key's command only, and reports no character. Whether there is one.
  bool run_command(std::int16_t key_code, std::int16_t shift);
  /// Whether the key is one of those above, whatever its effect now.
  static bool knows(std::int16_t key_code, std::int16_t shift);
  /// Whether the key goes to the next control or the one before; the view moves the focus.
  static bool leaves_box(std::int16_t key_code, std::int16_t shift);
  /// Whether the key moves the caret in a way that depends on the layout of lines.
  static bool moves_by_lines(std::int16_t key_code, std::int16_t shift);
  /// Tells the listener of each code unit, and types those it leaves as one edit. The first half of
  /// a surrogate pair waits for the second.
  void type(std::u16string_view text);
  /// Selects the word around a position, which may be the end of the text.
  void select_word(std::size_t at);

 private:
  struct Command;
  static const Command* find(std::int16_t key_code, std::int16_t shift);

  bool move(std::int16_t key_code, std::int16_t shift);
  bool press_character(std::int16_t key_code, std::int16_t shift);
  void erase_to(std::size_t position, Box::Kind kind);
  void select_all();
  void copy();
  void cut();
  void paste();
  void paste_text();
  void undo() { box_.undo(); }
  void redo() { box_.redo(); }

  Box& box_;
  std::u16string typed_;  // the first half of a pair
};

}  // namespace qel::box
