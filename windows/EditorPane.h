#pragma once

#include <windows.h>

#include <string>

#include "windows/Fonts.h"

namespace qel::windows {

/// A text below the form of an editor window that the user can look at and copy from, and a check
/// box that shows it. Both windows belong to the editor's.
class EditorPane {
 public:
  /// The check box is a control of that number; the text has the one behind.
  EditorPane(HWND editor, const std::u16string& caption, int id);

  void put_font(const LOGFONTW& font, int dpi);
  /// What both take, with the distance to the edge of the window.
  int height() const {
    return box_height_ + margin_ + (is_open() ? text_height_ + margin_ / 2 : 0);
  }
  /// How much higher the pane is when it is open.
  int text_height() const { return text_height_ + margin_ / 2; }
  void place(int top, int width) const;

  HWND check_box() const { return check_box_; }
  HWND text_window() const { return text_; }
  bool is_open() const;
  /// Shows or hides the text as the check box says.
  void follow_check_box() const;
  void show(const std::u16string& text);

 private:
  HWND check_box_;
  HWND text_;
  Font font_;
  Font fixed_font_;
  std::u16string shown_;
  int margin_ = 0;
  int box_height_ = 0;
  int text_height_ = 0;
};

}  // namespace qel::windows
