#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qel/platform/RichEdit.h"

namespace qel::platform {

/// An entry of a menu. One without a name is a separator.
struct MenuItem {
  std::u16string name;       ///< identifies it to the listener
  std::u16string caption;    ///< "&" before the letter that chooses it; a shortcut after a TAB
  bool has_check = false;    ///< shows whether it is on (`EditorListener::is_checked`)
  std::u16string font = {};  ///< a window may show the caption in this font; none if empty
  std::optional<Color> swatch = std::nullopt;  ///< a window may show this colour beside it
};

struct Menu {
  std::u16string caption;
  std::vector<MenuItem> items;
};

/// What an editor window looks like. Its first button is the default one.
struct EditorDescription {
  std::u16string caption;
  std::u16string ok_caption;
  std::u16string cancel_caption;
  std::vector<Menu> menus;
  /// Caption of a pane that a window may offer; it shows `EditorListener::pane_text` as it is.
  std::u16string pane_caption;
  /// The box whose text is edited, for a window that takes over its size, options and owner; null
  /// for none.
  const RichEdit* replaced = nullptr;
  /// Whether a window may offer the formats of its menus in a bar as well.
  bool has_bar = false;
};

/// In twips, from the inner top left corner of the window.
struct EditorRectangle {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;

  friend bool operator==(const EditorRectangle&, const EditorRectangle&) = default;
};

/// Decides what happens in an editor window.
class EditorListener {
 public:
  virtual ~EditorListener() = default;
  /// The window comes to the front.
  virtual void on_activate() = 0;
  /// The inner extent has changed; in twips.
  virtual void on_resize(std::int32_t width, std::int32_t height) = 0;
  virtual void on_ok() = 0;
  virtual void on_cancel() = 0;
  /// The user closes the window by its frame; it closes after this call.
  virtual void on_close() = 0;
  /// The user chose the menu item of that name.
  virtual void on_command(std::u16string_view name) = 0;
  /// Whether that menu item is on for the selection.
  virtual bool is_checked(std::u16string_view /*name*/) const { return false; }
  /// Whether that menu item can act now.
  virtual bool is_enabled(std::u16string_view /*name*/) const { return true; }
  /// Whether closing the window now, other than by its first button, would lose what the user has
  /// done, and a window that can ask should.
  virtual bool has_edits() const { return false; }
  /// What the pane shows for the text as it is now.
  virtual std::u16string pane_text() const { return {}; }
};

/// The window of the large editor: a box, two buttons and menus. It decides nothing itself.
class EditorWindow {
 public:
  EditorWindow() = default;
  EditorWindow(const EditorWindow&) = delete;
  EditorWindow& operator=(const EditorWindow&) = delete;
  virtual ~EditorWindow() = default;

  virtual std::shared_ptr<RichEdit> box() const = 0;
  virtual void put_extent(std::int32_t width, std::int32_t height) = 0;
  virtual void lay_out(const EditorRectangle& box, const EditorRectangle& ok,
                       const EditorRectangle& cancel) = 0;
  virtual void focus_box() = 0;
  /// The text, its formats or the selection have changed, so parts of the window that show them are
  /// out of date.
  virtual void show_state() {}
  /// Shows the window and returns when it is closed.
  virtual void show_modal(EditorListener& listener) = 0;
  virtual void close() = 0;
};

/// The size of the screen in pixels, and of a pixel in twips.
struct Screen {
  std::int32_t width = 0;
  std::int32_t height = 0;
  std::int32_t twips_per_pixel_x = 15;
  std::int32_t twips_per_pixel_y = 15;
};

}  // namespace qel::platform
