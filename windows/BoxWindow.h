#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

#include "qel/box/Box.h"
#include "qel/box/Keyboard.h"
#include "qel/box/Mouse.h"
#include "windows/BoxDisplay.h"
#include "windows/DropCaret.h"
#include "windows/DropTarget.h"

namespace qel::windows {

/// A window of the system's rich edit class that shows a box, passes in what the user does, and
/// moves the caret by lines. Text composed from several keys is typed into the box; edits of the
/// window by other programs become edits of the box.
///
/// Where the window does not read formats from RTF as they are, it shows the text at once, and then
/// these formats from the beginning on, while it handles messages; a program that reads formats
/// from it gets all.
///
/// Limits of the window: a line separator and other characters at which it would end a line are
/// shown as blanks, control characters and placeholders of objects as a sign. A font's name has at
/// most 31 characters. The box itself keeps all of these.
class BoxWindow : public box::View {
 public:
  /// A new box in such a window on `owner`; with a null owner it is not shown until it is put on a
  /// window. The clipboard must outlive it.
  static std::shared_ptr<box::Box> create(HWND owner, platform::Clipboard& clipboard);
  ~BoxWindow() override;

  void settle() override;
  void show(const box::Change& change) override;
  void show_selection() override;
  void show_appearance(const platform::BoxAppearance& before) override;
  /// The window is created when it is first asked for. Some changes of the appearance replace it,
  /// as does the destruction of the owner's window.
  platform::WindowHandle window() override;
  void put_owner(platform::WindowHandle owner) override;
  platform::Clipboard& clipboard() override { return clipboard_; }
  void carry(box::Drag& drag) override;
  Color text_color() const override { return static_cast<Color>(GetSysColor(COLOR_WINDOWTEXT)); }
  /// Messages being handled hold on to the box, so there are none now.
  void close() override { delete this; }

  /// The object behind the window of a box; null for any other window.
  static BoxWindow* of(HWND window);
  /// The colours of the host that the box is in.
  void put_scheme(const Scheme& scheme);
  const Scheme& scheme() const { return scheme_; }
  /// The name of the box for those who cannot see it.
  void put_name(const std::u16string& name);
  const std::u16string& name() const { return name_; }
  /// Whether the user can do nothing in the box, although it looks as if he could.
  void put_deaf(bool is_deaf);

 private:
  /// What a message handler returns: the result, or nothing where the message is left to the
  /// window's own procedure.
  using Handled = std::optional<LRESULT>;

  BoxWindow(box::Box& box, platform::Clipboard& clipboard) : box_(box), clipboard_(clipboard) {}

  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM parameter, LPARAM data,
                                    UINT_PTR id, DWORD_PTR view);
  LRESULT handle(UINT message, WPARAM parameter, LPARAM data);
  Handled handle_own(UINT message, WPARAM parameter, LPARAM data);
  Handled handle_look(UINT message, WPARAM parameter, LPARAM data);
  LRESULT act_natively(UINT message, WPARAM parameter, LPARAM data);
  Handled compose(UINT message, WPARAM parameter, LPARAM data);

  void create(HWND parent);
  void lose();
  void place();
  void show_colors();
  void put_dpi(int dpi);
  ShownColors colors() const;
  void go_on_later();
  void take_from_window(BoxDisplay::Touch touch);
  void take_foreign_text(BoxDisplay::Touch touch);
  void end_composition();
  void take_composed_text();
  bool takes_input() const { return box_.appearance().enabled && !is_deaf_; }
  void take_drops();
  void show_landing(std::optional<POINT> at);
  LRESULT color_drop_caret(HDC context) const;

  // Keys.
  Handled handle_key(UINT message, WPARAM parameter, LPARAM data);
  LRESULT press(UINT message, WPARAM key, LPARAM data);
  LRESULT release(UINT message, WPARAM key, LPARAM data);
  LRESULT take_character(char16_t character);
  bool is_about_to_type() const;
  void drop_characters() const;
  void leave_by_tab(bool back) const;
  void leave_to_dialog(std::int16_t key_code) const;
  void move_natively(UINT message, WPARAM key, LPARAM data);
  void act(std::int16_t key_code, std::int16_t shift);

  // The mouse.
  Handled handle_mouse(UINT message, WPARAM parameter, LPARAM data);
  LRESULT press_button(UINT message, WPARAM parameter, LPARAM data);
  LRESULT double_click(LPARAM data);
  LRESULT move_mouse(UINT message, WPARAM parameter, LPARAM data);
  LRESULT release_button(UINT message, WPARAM parameter, LPARAM data);
  bool is_on_selection(POINT point) const;

  box::Box& box_;
  platform::Clipboard& clipboard_;
  box::Keyboard keyboard_{box_};
  box::Mouse mouse_{box_};
  BoxDisplay display_{box_};

  HWND window_ = nullptr;
  HWND owner_ = nullptr;
  bool composes_ = false;
  bool is_stale_ = false;  // the box has changed while something was composed
  bool is_deaf_ = false;
  Scheme scheme_;
  std::u16string name_;
  POINT pressed_at_ = {};
  std::optional<DropTarget> drop_target_;
  DropCaret drop_caret_;
};

}  // namespace qel::windows
