#pragma once

#include <windows.h>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "qel/platform/EditorWindow.h"

namespace qel::windows {

/// The menus of an editor window. The window that they are given to owns them; this object must
/// live as long.
class EditorMenu {
 public:
  explicit EditorMenu(const std::vector<platform::Menu>& menus);
  EditorMenu(const EditorMenu&) = delete;
  EditorMenu& operator=(const EditorMenu&) = delete;
  ~EditorMenu();

  HMENU handle() const { return bar_; }
  /// The name of the item that sends that command; empty where no item does.
  std::u16string_view name_of(UINT command) const;
  /// The command of the item of that name, and the menu that it is in; 0 and null without one.
  UINT command_of(std::u16string_view name) const;
  HMENU popup_of(std::u16string_view name) const;
  /// Brings the check marks up to date, and makes grey what cannot act now.
  void show_state(const platform::EditorListener& listener) const;

 private:
  struct Item {
    std::u16string name;
    bool has_check;
    HMENU popup;
    HBITMAP swatch;  // null without one
  };

  HMENU create_popup(const platform::Menu& menu);
  void append(HMENU popup, const platform::MenuItem& item);

  HMENU bar_;
  std::deque<Item> items_;  // a deque: the window system keeps addresses of items
};

/// Chooses the item of that name in the menus of the editor window `editor`, as a user would;
/// whether there is one. Only for windows of the caller's process.
bool choose(HWND editor, std::u16string_view name);
/// Whether a menu of that window, if opened now, would show a check mark at the item of that name.
bool shows_check(HWND editor, std::u16string_view name);

}  // namespace qel::windows
