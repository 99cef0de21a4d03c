#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qel/base/Color.h"
#include "qel/control/FormatBrush.h"
#include "qel/platform/EditorWindow.h"
#include "windows/EditorMenu.h"
#include "windows/Fonts.h"
#include "windows/FormatSigns.h"

namespace qel::windows {

/// A tool bar with the formats of an editor window, whose buttons send the commands of its menus:
/// undo and redo, the fonts and the colours, the formats that are on or off, plain, and a brush
/// that gives the format of the selection to what is selected next; after a double click to all
/// that is selected, until Escape.
///
/// Clicks leave the focus where it is. While the bar has it, arrows, Home and End lead through the
/// buttons, Down opens a menu, and Enter or the space bar chooses.
class FormatBar {
 public:
  /// The commands are those of `menus`, of which `menu` was made, which must outlive this. The bar
  /// is a control of that number.
  FormatBar(HWND editor, const std::vector<platform::Menu>& menus, const EditorMenu& menu, int id);

  void put_font(const LOGFONTW& font, int dpi);
  int height() const { return height_; }
  int width() const;
  void place(int width) const;

  HWND window() const { return window_; }
  /// Shows the state of the selection.
  void show_state(const platform::EditorListener& listener, const platform::RichEdit& box);
  /// Answers what the bar reports.
  LRESULT answer(const NMHDR& report);
  /// Acts on a command that is the bar's own; whether it was one.
  bool run(UINT command, const platform::RichEdit& box);
  /// Moves the focus to the bar, to the button that had it.
  void reach();

  FormatBrush& brush() { return brush_; }
  void show_brush() const;

 private:
  struct Button {
    std::u16string name;     // of its command, or of the first command of its menu
    std::u16string caption;  // without the sign of a letter
    std::u16string key;
    Sign sign;
    UINT command;
    HMENU popup = nullptr;  // opened by the button
    bool has_check = false;
  };

  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM parameter, LPARAM data,
                                    UINT_PTR id, DWORD_PTR bar);
  void add(const std::vector<platform::Menu>& menus, std::u16string_view name, Sign sign);
  void create_window(int id);
  void add_separator() const;
  void create_button(const Button& button);
  LRESULT draw(const NMHDR& report) const;
  void tell_tip(const NMHDR& report) const;
  void open(UINT command) const;
  const Button* find(UINT command) const;
  bool handle_key(WPARAM key);
  void go(int from, int step);
  UINT hot_command() const;
  void choose_hot() const;
  bool is_reachable(int place) const;

  HWND editor_;
  HWND window_ = nullptr;
  const EditorMenu& menu_;
  std::vector<Button> buttons_;  // a separator stands before some of them
  FormatBrush brush_;
  DWORD brushed_at_ = 0;  // when its button was last pressed
  Font font_;
  int height_ = 0;
  int side_ = 0;  // of a sign
  int last_ = 0;  // the button that had the focus
  std::u16string font_name_;
  std::optional<Color> color_;
};

}  // namespace qel::windows
