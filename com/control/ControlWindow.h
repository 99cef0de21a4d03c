#pragma once

#include <windows.h>

namespace qel::com {

/// What a control does with what happens to its window.
class WindowClient {
 public:
  virtual ~WindowClient() = default;
  virtual void on_paint(HDC context) = 0;
  /// The window has the focus, or a box on it gets or loses it.
  virtual void on_focus() = 0;
  virtual void on_box_focus(bool gained) = 0;
  /// The colours, fonts or styles of the system are others.
  virtual void on_system_change() = 0;
  /// The window goes because the one on which it lies does.
  virtual void on_destroy() = 0;
  /// What was asked for by `post`; it may end the window.
  virtual void on_posted() = 0;
};

/// The window of a control, on which its boxes lie. As long as the host shows it nowhere, it lies
/// on none and cannot be seen.
class ControlWindow {
 public:
  /// Raises where the system has no window left. The client has to outlive this.
  explicit ControlWindow(WindowClient& client);
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;
  ~ControlWindow();

  HWND handle() const { return window_; }
  /// Moves it onto another window; null takes it off.
  void put_parent(HWND parent);
  /// Its context is the same as long as the window is.
  HDC context() const { return context_; }
  /// Tells the client nothing any more.
  void silence() { SetWindowLongPtrW(window_, GWLP_USERDATA, 0); }
  /// Has the client called later, when what runs now is over.
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
