#pragma once

#include <windows.h>

namespace qel::com {

/// Receives what happens to the window of a control.
class WindowClient {
 public:
  virtual ~WindowClient() = default;
  virtual void on_paint(HDC context) = 0;
  /// The window has got the focus, or a box on it has got or lost it.
  virtual void on_focus() = 0;
  virtual void on_box_focus(bool gained) = 0;
  /// The colours, fonts or styles of the system have changed.
  virtual void on_system_change() = 0;
  /// The resolution of the screen has changed, to that in a parameter of `WM_DPICHANGED`, or 0 for
  /// what the system says of the window.
  virtual void on_dpi_change(WPARAM told) = 0;
  /// The window is destroyed with its parent.
  virtual void on_destroy() = 0;
  /// The call that `post` asked for; it may destroy the window.
  virtual void on_posted() = 0;
};

/// The window of a control and the parent of its boxes. As long as the host does not show it, it
/// has no visible parent and cannot be seen.
class ControlWindow {
 public:
  /// Raises if the system has no window left. The client has to outlive this object.
  explicit ControlWindow(WindowClient& client);
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;
  ~ControlWindow();

  HWND handle() const { return window_; }
  /// Moves it to another parent; null hides it.
  void put_parent(HWND parent);
  /// The device context, which stays the same as long as the window.
  HDC context() const { return context_; }
  /// Tells the client nothing from now on.
  void silence() { SetWindowLongPtrW(window_, GWLP_USERDATA, 0); }
  /// Calls the client later, when the current calls have returned.
  void post();

 private:
  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept;
  LRESULT handle(UINT message, WPARAM w, LPARAM l);
  void paint();
  static void register_class();
  void create();

  WindowClient& client_;
  HWND window_ = nullptr;
  HDC context_ = nullptr;
  int posted_ = 0;
};

}  // namespace qel::com
