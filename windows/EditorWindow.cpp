#include "windows/EditorWindow.h"

#include <algorithm>
#include <utility>

#include "qel/base/Error.h"
#include "windows/BoxWindow.h"
#include "windows/Dpi.h"
#include "windows/Guard.h"
#include "windows/Modifiers.h"
#include "windows/Module.h"
#include "windows/Text.h"
#include "windows/WindowHandle.h"
#include "windows/WindowsPlatform.h"

namespace qel::windows {
namespace {

constexpr DWORD window_style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;

// Numbers of controls besides those of the buttons.
constexpr int bar_id = 10;
constexpr int pane_id = 11;

constexpr UINT_PTR bar_timer = 1;
constexpr UINT_PTR pane_timer = 2;

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

/// In pixels of a window of that resolution; the screen's are those of the system's resolution.
RECT in_pixels(const platform::EditorRectangle& rectangle, const platform::Screen& screen,
               int dpi) {
  const int system = dpi_of_screen();
  const auto x = [&](int twips) { return MulDiv(twips / screen.twips_per_pixel_x, dpi, system); };
  const auto y = [&](int twips) { return MulDiv(twips / screen.twips_per_pixel_y, dpi, system); };
  return {x(rectangle.left), y(rectangle.top), x(rectangle.width), y(rectangle.height)};
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
    : menu_(description.menus), dpi_(usual_dpi) {
  register_class(procedure);
  window_ = CreateWindowExW(0, class_name, wide(description.caption), window_style, CW_USEDEFAULT,
                            CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, owner_of(description),
                            menu_.handle(), module_handle(), this);
  if (window_ == nullptr) {
    DestroyMenu(menu_.handle());
    throw Error(Error::object_not_set, "EditorWindow", "The window cannot be made.");
  }
  try {
    create_parts(description);
  } catch (...) {
    DestroyWindow(window_);
    throw;
  }
}

/// The order is that in which Tab leads through them.
void EditorWindow::create_parts(const platform::EditorDescription& description) {
  box_ = WindowsPlatform::shared()->create_rich_edit(window_handle(window_));
  name_box(description);
  ok_ = create_button(description.ok_caption, IDOK, BS_DEFPUSHBUTTON);
  cancel_ = create_button(description.cancel_caption, IDCANCEL, BS_PUSHBUTTON);
  if (!description.pane_caption.empty()) pane_.emplace(window_, description.pane_caption, pane_id);
  if (description.has_bar) bar_.emplace(window_, description.menus, menu_, bar_id);
  dpi_ = dpi_of(window_);
  put_fonts();
}

/// The box looks like the one that it replaces, and is called what the window is.
void EditorWindow::name_box(const platform::EditorDescription& description) {
  BoxWindow* const shown = BoxWindow::of(native_window(box_->window()));
  if (shown == nullptr) return;
  shown->put_name(description.caption);
  if (description.replaced == nullptr) return;
  const BoxWindow* const replaced = BoxWindow::of(native_window(description.replaced->window()));
  if (replaced != nullptr) shown->put_scheme(replaced->scheme());
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
  return CreateWindowExW(0, L"BUTTON", wide(caption), WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, 0,
                         0, 0, 0, window_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(command)),
                         module_handle(), nullptr);
}

void EditorWindow::put_fonts() {
  const LOGFONTW font = message_font(dpi_);
  font_ = Font(font);
  for (const HWND button : {ok_, cancel_}) {
    SendMessageW(button, WM_SETFONT, reinterpret_cast<WPARAM>(font_.handle()), TRUE);
  }
  if (pane_) pane_->put_font(font, dpi_);
  if (bar_) bar_->put_font(font, dpi_);
}

/// The window has come to a screen of another resolution, which suggests a place for it.
void EditorWindow::put_dpi(int dpi, const RECT& place) {
  dpi_ = dpi;
  put_fonts();
  SendMessageW(native_window(box_->window()), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), 0);
  SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
               place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  tell_size();
}

/// What the bar and the pane take of the window's height.
LONG EditorWindow::around_form() const {
  return (bar_ ? bar_->height() : 0) + (pane_ ? pane_->height() : 0);
}

/// The part of the window that the listener lays out.
RECT EditorWindow::form() const {
  const SIZE size = inner_size(window_);
  const LONG top = bar_ ? bar_->height() : 0;
  return {0, top, size.cx, std::max(size.cy - around_form() + top, top)};
}

void EditorWindow::keep_room_for_bar(MINMAXINFO& limits) const {
  if (!bar_) return;
  RECT outer = {0, 0, bar_->width(), 0};
  AdjustWindowRectEx(&outer, window_style, TRUE, 0);
  limits.ptMinTrackSize.x = outer.right - outer.left;
}

void EditorWindow::arrange() const {
  const RECT area = form();
  if (bar_) bar_->place(area.right);
  if (pane_) pane_->place(area.bottom, area.right);
}

void EditorWindow::put_extent(std::int32_t width, std::int32_t height) {
  if (window_ == nullptr) return;
  RECT wanted = in_pixels({0, 0, width, height}, screen(), dpi_);
  wanted.bottom += around_form();
  if (bar_) wanted.right = std::max<LONG>(wanted.right, bar_->width());
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
  const LONG top = form().top;
  const RECT place = in_pixels(box, here, dpi_);
  platform::BoxAppearance appearance = box_->appearance();
  appearance.left = place.left;
  appearance.top = top + place.top;
  appearance.width = place.right;
  appearance.height = place.bottom;
  box_->put_appearance(appearance);
  const auto move = [&](HWND button, const platform::EditorRectangle& rectangle) {
    const RECT at = in_pixels(rectangle, here, dpi_);
    MoveWindow(button, at.left, top + at.top, at.right, at.bottom, TRUE);
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
  update(bar_timer);
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
    if (handle_own_key(message)) continue;
    const bool is_of_bar = bar_ && message.hwnd == bar_->window();
    const bool is_of_dialog = IsChild(window_, message.hwnd) != FALSE && !is_of_bar &&
                              message.hwnd != native_window(box_->window());
    if (is_of_dialog && IsDialogMessageW(window_, &message) != FALSE) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
    paint_after(message);
  }
}

/// Keys that lead to the bar and back, and the one that puts the brush away.
bool EditorWindow::handle_own_key(const MSG& message) {
  const bool is_own = bar_ && message.message == WM_KEYDOWN &&
                      (message.hwnd == window_ || IsChild(window_, message.hwnd) != FALSE);
  if (!is_own) return false;
  if (message.wParam == VK_F6 && held_modifiers() == 0) {
    bar_->reach();
    return true;
  }
  if (message.wParam == VK_ESCAPE && bar_->brush().is_on()) {
    bar_->brush().end();
    bar_->show_brush();
    return true;
  }
  const bool leaves = message.wParam == VK_ESCAPE || message.wParam == VK_TAB;
  if (message.hwnd != bar_->window() || !leaves) return false;
  focus_box();
  return true;
}

/// A selection is made when the button that sweeps over it, or the key, comes up.
void EditorWindow::paint_after(const MSG& message) {
  if (!bar_ || window_ == nullptr || !bar_->brush().is_on() ||
      message.hwnd != native_window(box_->window())) {
    return;
  }
  const bool selects = message.message == WM_LBUTTONUP ||
                       (message.message == WM_KEYUP && GetKeyState(VK_SHIFT) >= 0);
  if (!selects) return;
  guarded([this] {
    FormatBrush& brush = bar_->brush();
    if (brush.paint(*box_) && brush.state() == FormatBrush::State::once) brush.end();
    return S_OK;
  });
}

// What shows the state of the text.

void EditorWindow::show_state() {
  if (bar_) update_later(bar_timer, USER_TIMER_MINIMUM);
  // Converting the whole text at each key would slow typing noticeably.
  constexpr UINT pane_delay = 300;
  if (pane_ && pane_->is_open()) update_later(pane_timer, pane_delay);
}

/// Once however often it is asked for meanwhile.
void EditorWindow::update_later(UINT_PTR timer, UINT delay) {
  const UINT bit = 1U << timer;
  if (window_ == nullptr || (pending_ & bit) != 0) return;
  if (SetTimer(window_, timer, delay, nullptr) != 0) pending_ |= bit;
}

void EditorWindow::update(UINT_PTR timer) {
  KillTimer(window_, timer);
  pending_ &= ~(1U << timer);
  if (listener_ == nullptr) return;
  if (timer == bar_timer && bar_) bar_->show_state(*listener_, *box_);
  if (timer == pane_timer && pane_ && pane_->is_open()) pane_->show(listener_->pane_text());
}

/// The window grows by the pane, so that the form keeps its size.
void EditorWindow::fold_pane() {
  pane_->follow_check_box();
  update(pane_timer);
  RECT place = {};
  GetWindowRect(window_, &place);
  const int change = pane_->is_open() ? pane_->text_height() : -pane_->text_height();
  if (IsZoomed(window_) == FALSE) {
    SetWindowPos(window_, nullptr, 0, 0, place.right - place.left,
                 place.bottom - place.top + change, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  }
  tell_size();
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
  arrange();
  if (listener_ == nullptr) return;
  const platform::Screen here = screen();
  const RECT area = form();
  const int system = dpi_of_screen();
  listener_->on_resize(MulDiv(area.right, system, dpi_) * here.twips_per_pixel_x,
                       MulDiv(area.bottom - area.top, system, dpi_) * here.twips_per_pixel_y);
}

/// The box, too, sends notifications as commands.
bool EditorWindow::is_own_command(UINT code, LPARAM part) const {
  return code == BN_CLICKED &&
         (part == 0 || reinterpret_cast<HWND>(part) != native_window(box_->window()));
}

void EditorWindow::handle_command(UINT command) {
  if (listener_ == nullptr) return;
  if (command == IDOK) {
    listener_->on_ok();
  } else if (command == IDCANCEL) {
    listener_->on_cancel();
  } else if (command == pane_id) {
    fold_pane();
  } else if (bar_ && bar_->run(command, *box_)) {
    return;
  } else if (const std::u16string_view name = menu_.name_of(command); !name.empty()) {
    listener_->on_command(name);
    if (bar_) update_later(bar_timer, USER_TIMER_MINIMUM);
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
    case WM_NOTIFY: {
      const auto& report = *reinterpret_cast<const NMHDR*>(l);
      return bar_ && report.hwndFrom == bar_->window() ? bar_->answer(report) : 0;
    }
    case WM_TIMER:
      update(w);
      return 0;
    case WM_SYSCOLORCHANGE:
      if (bar_) SendMessageW(bar_->window(), message, w, l);
      if (box_) SendMessageW(native_window(box_->window()), message, w, l);
      return 0;
    case WM_DPICHANGED:
      put_dpi(HIWORD(w), *reinterpret_cast<const RECT*>(l));
      return 0;
    case WM_GETMINMAXINFO:
      keep_room_for_bar(*reinterpret_cast<MINMAXINFO*>(l));
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
