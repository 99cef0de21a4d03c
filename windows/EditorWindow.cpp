#include "windows/EditorWindow.h"

#include <algorithm>
#include <utility>

#include "qel/base/Error.h"
#include "windows/Guard.h"
#include "windows/Module.h"
#include "windows/Text.h"
#include "windows/WindowHandle.h"
#include "windows/WindowsPlatform.h"

namespace qel::windows {
namespace {

constexpr DWORD window_style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

void register_class(WNDPROC procedure) {
  WNDCLASSEXW description = {};
  description.cbSize = sizeof description;
  description.lpfnWndProc = procedure;
  description.hInstance = module_handle();
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
  description.lpszClassName = EditorWindow::class_name;
  RegisterClassExW(&description);  // fails for all but the first window
}

Font message_font() {
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof metrics;
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
  return Font(metrics.lfMessageFont);
}

SIZE inner_size(HWND window) {
  RECT area = {};
  GetClientRect(window, &area);
  return {area.right, area.bottom};
}

/// Puts the window in the middle of the work area of its owner's screen.
void put_in_middle(HWND window, SIZE size) {
  const HWND owner = GetWindow(window, GW_OWNER);
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &monitor);
  const RECT& work = monitor.rcWork;
  const LONG left = std::max(work.left, (work.left + work.right - size.cx) / 2);
  const LONG top = std::max(work.top, (work.top + work.bottom - size.cy) / 2);
  SetWindowPos(window, nullptr, left, top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

RECT in_pixels(const platform::EditorRectangle& rectangle, const platform::Screen& screen) {
  return {rectangle.left / screen.twips_per_pixel_x, rectangle.top / screen.twips_per_pixel_y,
          rectangle.width / screen.twips_per_pixel_x, rectangle.height / screen.twips_per_pixel_y};
}

/// The window of the box whose text is edited, if it has one that is shown, or else the active one.
HWND owner_of(const platform::EditorDescription& description) {
  if (description.replaced != nullptr && description.replaced->window() != 0) {
    const HWND root = GetAncestor(native_window(description.replaced->window()), GA_ROOT);
    if (root != nullptr && IsWindowVisible(root) != FALSE) return root;
  }
  return GetActiveWindow();
}

platform::Screen screen() { return WindowsPlatform::shared()->screen(); }

}  // namespace

EditorWindow::EditorWindow(const platform::EditorDescription& description)
    : menu_(description.menus), font_(message_font()) {
  register_class(procedure);
  window_ = CreateWindowExW(0, class_name, wide(description.caption), window_style, CW_USEDEFAULT,
                            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner_of(description),
                            menu_.handle(), module_handle(), this);
  if (window_ == nullptr) {
    DestroyMenu(menu_.handle());
    throw Error(Error::object_not_set, "EditorWindow", "The window cannot be made.");
  }
  try {
    box_ = WindowsPlatform::shared()->create_rich_edit(window_handle(window_));
  } catch (...) {
    DestroyWindow(window_);
    throw;
  }
  ok_ = create_button(description.ok_caption, IDOK, BS_DEFPUSHBUTTON);
  cancel_ = create_button(description.cancel_caption, IDCANCEL, BS_PUSHBUTTON);
}

EditorWindow::~EditorWindow() {
  if (window_ != nullptr) {
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    box_->put_owner(0);
    DestroyWindow(window_);
  }
  // Fails while there is another such window. A library must not leave its classes when unloaded.
  UnregisterClassW(class_name, module_handle());
}

HWND EditorWindow::create_button(const std::u16string& caption, int command, DWORD style) {
  const HWND button = CreateWindowExW(
      0, L"BUTTON", wide(caption), WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0, 0, 0, 0, window_,
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(command)), module_handle(), nullptr);
  SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(font_.handle()), FALSE);
  return button;
}

void EditorWindow::put_extent(std::int32_t width, std::int32_t height) {
  if (window_ == nullptr) return;
  const RECT wanted = in_pixels({0, 0, width, height}, screen());
  RECT outer = {0, 0, wanted.right, wanted.bottom};
  AdjustWindowRectEx(&outer, window_style, TRUE, 0);
  SIZE size = {outer.right - outer.left, outer.bottom - outer.top};
  put_in_middle(window_, size);
  // A menu may take more than one line.
  const SIZE inner = inner_size(window_);
  size.cx += wanted.right - inner.cx;
  size.cy += wanted.bottom - inner.cy;
  put_in_middle(window_, size);
}

void EditorWindow::lay_out(const platform::EditorRectangle& box,
                           const platform::EditorRectangle& ok,
                           const platform::EditorRectangle& cancel) {
  if (window_ == nullptr) return;
  const platform::Screen here = screen();
  const RECT place = in_pixels(box, here);
  platform::BoxAppearance appearance = box_->appearance();
  appearance.left = place.left;
  appearance.top = place.top;
  appearance.width = place.right;
  appearance.height = place.bottom;
  box_->put_appearance(appearance);
  const auto move = [&](HWND button, const platform::EditorRectangle& rectangle) {
    const RECT at = in_pixels(rectangle, here);
    MoveWindow(button, at.left, at.top, at.right, at.bottom, TRUE);
  };
  move(ok_, ok);
  move(cancel_, cancel);
}

void EditorWindow::focus_box() {
  if (window_ != nullptr) SetFocus(native_window(box_->window()));
}

/// Gives the focus back to the part that had it; at first, to the box.
void EditorWindow::give_focus() {
  if (IsChild(window_, focus_) == FALSE) {
    focus_box();
  } else {
    SetFocus(focus_);
  }
}

void EditorWindow::show_modal(platform::EditorListener& listener) {
  if (window_ == nullptr) return;
  listener_ = &listener;
  is_open_ = true;
  focus_before_ = GetFocus();
  tell_size();
  others_.emplace(window_);
  ShowWindow(window_, SW_SHOW);
  SetActiveWindow(window_);
  run_loop();
  listener_ = nullptr;
}

void EditorWindow::run_loop() {
  while (is_open_) {
    MSG message = {};
    const BOOL result = GetMessageW(&message, nullptr, 0, 0);
    if (result <= 0) {
      // The program is ending: its own loop has to learn of it, too.
      if (result == 0) PostQuitMessage(static_cast<int>(message.wParam));
      close_by_frame();
      return;
    }
    const bool is_of_button = message.hwnd == ok_ || message.hwnd == cancel_;
    if (is_of_button && IsDialogMessageW(window_, &message) != FALSE) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

void EditorWindow::close() {
  if (!is_open_) return;
  is_open_ = false;
  others_.reset();
  const HWND owner = GetWindow(window_, GW_OWNER);
  if (GetActiveWindow() == window_ && owner != nullptr) SetActiveWindow(owner);
  ShowWindow(window_, SW_HIDE);
  if (owner != nullptr && IsChild(owner, focus_before_) != FALSE) SetFocus(focus_before_);
  // Wakes the loop, which waits for a message. The window may be about to go.
  PostThreadMessageW(GetCurrentThreadId(), WM_NULL, 0, 0);
}

void EditorWindow::close_by_frame() {
  if (!is_open_) return;
  guarded([this] {
    listener_->on_close();
    return S_OK;
  });
  close();
}

void EditorWindow::tell_size() {
  if (listener_ == nullptr) return;
  const platform::Screen here = screen();
  const SIZE size = inner_size(window_);
  listener_->on_resize(size.cx * here.twips_per_pixel_x, size.cy * here.twips_per_pixel_y);
}

/// The box, too, sends notifications as commands.
bool EditorWindow::is_own_command(UINT code, LPARAM part) const {
  return code == BN_CLICKED && (part == 0 || part == reinterpret_cast<LPARAM>(ok_) ||
                                part == reinterpret_cast<LPARAM>(cancel_));
}

void EditorWindow::handle_command(UINT command) {
  if (listener_ == nullptr) return;
  if (command == IDOK) {
    listener_->on_ok();
  } else if (command == IDCANCEL) {
    listener_->on_cancel();
  } else if (const std::u16string_view name = menu_.name_of(command); !name.empty()) {
    listener_->on_command(name);
  }
}

LRESULT EditorWindow::handle(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_COMMAND:
      if (is_own_command(HIWORD(w), l)) handle_command(LOWORD(w));
      return 0;
    case WM_INITMENUPOPUP:
      if (listener_ != nullptr) menu_.show_state(*listener_);
      return 0;
    case WM_SIZE:
      if (w != SIZE_MINIMIZED) tell_size();
      return 0;
    case WM_ACTIVATE:
      if (LOWORD(w) == WA_INACTIVE) {
        focus_ = GetFocus();
        return 0;
      }
      give_focus();
      if (listener_ != nullptr) listener_->on_activate();
      return 0;
    case WM_SETFOCUS:
      give_focus();
      return 0;
    case DM_GETDEFID:
      return MAKELRESULT(IDOK, DC_HASDEFID);
    case WM_CLOSE:
      close_by_frame();
      return 0;
    case WM_DESTROY:
      if (box_) box_->put_owner(0);
      close_by_frame();
      return 0;
    case WM_NCDESTROY:
      return DefWindowProcW(std::exchange(window_, nullptr), message, w, l);
    default:
      return DefWindowProcW(window_, message, w, l);
  }
}

LRESULT CALLBACK EditorWindow::procedure(HWND window, UINT message, WPARAM w, LPARAM l) noexcept {
  if (message == WM_NCCREATE) {
    auto* const created =
        static_cast<EditorWindow*>(reinterpret_cast<const CREATESTRUCTW*>(l)->lpCreateParams);
    created->window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(created));
  }
  auto* const self = reinterpret_cast<EditorWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (self == nullptr) return DefWindowProcW(window, message, w, l);
  LRESULT answer = 0;
  const HRESULT result = guarded([&] {
    answer = self->handle(message, w, l);
    return S_OK;
  });
  if (FAILED(result)) MessageBeep(MB_ICONERROR);
  return answer;
}

}  // namespace qel::windows
