#pragma once

#include <windows.h>

#include <memory>
#include <optional>

#include "qel/platform/EditorWindow.h"
#include "windows/DisabledWindows.h"
#include "windows/EditorMenu.h"
#include "windows/EditorPane.h"
#include "windows/Fonts.h"
#include "windows/FormatBar.h"

namespace qel::windows {

/// The large editor's window, owned by that of the box it replaces, or else by the thread's active
/// window. While it is shown, the thread's other windows do not react to the user. Supports the
/// whole interface except fonts in menus.
///
/// The form that the listener lays out stands below the bar and above the pane; its pixels are
/// those of a screen of the usual resolution. F6 leads to the bar, and Escape back.
///
/// Escape is the second button. Closing by the frame is reported as such, and so is the end of the
/// owner or of the program, after which the box lives on while somebody holds it. Menu items show
/// their shortcuts, whose keys the listener gets from the box. A failing listener causes a sound.
class EditorWindow : public platform::EditorWindow {
 public:
  static constexpr const wchar_t* class_name = L"QELTextEditor";

  /// Raises when the system cannot create another window.
  explicit EditorWindow(const platform::EditorDescription& description);
  EditorWindow(const EditorWindow&) = delete;
  EditorWindow& operator=(const EditorWindow&) = delete;
  ~EditorWindow() override;

  std::shared_ptr<platform::RichEdit> box() const override { return box_; }
  void put_extent(std::int32_t width, std::int32_t height) override;
  void lay_out(const platform::EditorRectangle& box, const platform::EditorRectangle& ok,
               const platform::EditorRectangle& cancel) override;
  void focus_box() override;
  void show_state() override;
  void show_modal(platform::EditorListener& listener) override;
  void close() override;

  /// The window itself; null once it is gone.
  HWND window() const { return window_; }

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept;
  LRESULT handle(UINT message, WPARAM w, LPARAM l);
  HWND create_button(const std::u16string& caption, int command, DWORD style);
  bool is_own_command(UINT code, LPARAM part) const;
  void handle_command(UINT command);
  void create_parts(const platform::EditorDescription& description);
  void name_box(const platform::EditorDescription& description);
  void put_fonts();
  void put_dpi(int dpi, const RECT& place);
  RECT form() const;
  LONG around_form() const;
  void keep_room_for_bar(MINMAXINFO& limits) const;
  void arrange() const;
  void tell_size();
  void update_later(UINT_PTR timer, UINT delay);
  void update(UINT_PTR timer);
  void fold_pane();
  bool handle_own_key(const MSG& message);
  void paint_after(const MSG& message);
  void close_by_frame();
  void give_focus();
  void run_loop();

  HWND window_ = nullptr;
  EditorMenu menu_;
  Font font_;
  std::shared_ptr<platform::RichEdit> box_;
  std::optional<FormatBar> bar_;
  std::optional<EditorPane> pane_;
  int dpi_;
  unsigned pending_ = 0;  // updates, by timer
  HWND ok_ = nullptr;
  HWND cancel_ = nullptr;
  HWND focus_ = nullptr;  // had the focus when the window was last active
  platform::EditorListener* listener_ = nullptr;
  bool is_open_ = false;
  std::optional<DisabledWindows> others_;  // while it is open
  HWND focus_before_ = nullptr;
};

}  // namespace qel::windows
