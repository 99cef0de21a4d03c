#include "com/control/ControlWindow.h"

#include <richedit.h>

#include <exception>

#include "qel/base/Error.h"
#include "windows/Dpi.h"
#include "windows/Module.h"

namespace qel::com {
namespace {

constexpr UINT posted_message = WM_APP + 1;
constexpr const wchar_t* class_name = L"QELTextboxControl";

}  // namespace

/// Fails if the class is registered already, which is just as good.
void ControlWindow::register_class() {
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  description.style = CS_OWNDC | CS_DBLCLKS;
  description.lpfnWndProc = procedure;
  description.hInstance = windows::module_handle();
  description.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32513));  // the text cursor
  description.lpszClassName = class_name;
  RegisterClassExW(&description);
}

ControlWindow::ControlWindow(WindowClient& client) : client_(client) { create(); }

void ControlWindow::create() {
  register_class();
  window_ = CreateWindowExW(WS_EX_CONTROLPARENT, class_name, L"",
                            WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0, 0, 0, HWND_MESSAGE,
                            nullptr, windows::module_handle(), this);
  if (window_ == nullptr) {
    throw Error(Error::component_base, "QELTextbox", "the system has no window left");
  }
  context_ = GetDC(window_);
}

ControlWindow::~ControlWindow() {
  if (window_ == nullptr) return;
  silence();
  DestroyWindow(window_);
  // Fails while there is another window. The class must not stay registered when the library is
  // unloaded.
  UnregisterClassW(class_name, windows::module_handle());
}

void ControlWindow::put_parent(HWND parent) {
  if (parent == nullptr) ShowWindow(window_, SW_HIDE);
  SetParent(window_, parent == nullptr ? HWND_MESSAGE : parent);
}

void ControlWindow::post() {
  ++posted_;
  PostMessageW(window_, posted_message, 0, 0);
}

LRESULT CALLBACK ControlWindow::procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept {
  if (message == WM_NCCREATE) {
    const auto* const creation = reinterpret_cast<const CREATESTRUCTW*>(l);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(creation->lpCreateParams));
    static_cast<ControlWindow*>(creation->lpCreateParams)->window_ = window;
  }
  auto* const self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) return DefWindowProcW(window, message, w, l);
  try {
    return self->handle(message, w, l);
  } catch (const std::exception&) {
    MessageBeep(MB_ICONERROR);
    return 0;
  }
}

LRESULT ControlWindow::handle(UINT message, WPARAM w, LPARAM l) {
  const HWND window = window_;
  switch (message) {
    case WM_PAINT:
      paint();
      return 0;
    case WM_PRINTCLIENT:
      client_.on_paint(reinterpret_cast<HDC>(w));
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SETFOCUS:
      client_.on_focus();
      return 0;
    case WM_COMMAND:
      if (HIWORD(w) == EN_SETFOCUS) client_.on_box_focus(true);
      if (HIWORD(w) == EN_KILLFOCUS) client_.on_box_focus(false);
      return 0;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      client_.on_system_change();
      break;
    case WM_DPICHANGED:
      client_.on_dpi_change(w);
      return 0;
    case windows::dpi_changed_after_parent:
      client_.on_dpi_change(0);
      break;
    case posted_message:
      --posted_;
      client_.on_posted();
      return 0;
    case WM_DESTROY: {
      // Destroyed by others: the boxes on it have to move to another window.
      silence();
      create();
      for (int i = 0; i < posted_; ++i) PostMessageW(window_, posted_message, 0, 0);
      client_.on_destroy();
      return 0;
    }
    default:
      break;
  }
  return DefWindowProcW(window, message, w, l);
}

void ControlWindow::paint() {
  PAINTSTRUCT painting = {};
  const HDC context = BeginPaint(window_, &painting);
  client_.on_paint(context);
  EndPaint(window_, &painting);
}

}  // namespace qel::com
