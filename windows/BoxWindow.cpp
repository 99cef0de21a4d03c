#include "windows/BoxWindow.h"

// Needs the types of the other.
#include <commctrl.h>
#include <richedit.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "qel/base/Error.h"
#include "qel/base/Scan.h"
#include "qel/platform/Keys.h"
#include "windows/BoxAccessible.h"
#include "windows/DragSource.h"
#include "windows/WindowHandle.h"

namespace qel::windows {

using platform::BoxAppearance;

namespace {

constexpr UINT_PTR subclass_id = 1;
/// Far from the window's own timers.
constexpr UINT_PTR timer_id = 0x51454C;

/// The window class exists as long as its library is loaded.
void load_window_class() {
  static const HMODULE library = LoadLibraryW(L"msftedit.dll");
  if (library == nullptr) throw Error(Error::component_base, "RichEdit", "msftedit.dll is missing");
}

DWORD style_of(const BoxAppearance& appearance) {
  DWORD style = WS_CHILD | WS_CLIPSIBLINGS | ES_MULTILINE | ES_NOOLEDRAGDROP | ES_AUTOHSCROLL |
                ES_AUTOVSCROLL;
  const std::int32_t bars = appearance.multiline ? appearance.scroll_bars : 0;
  if ((bars & 1) != 0) style |= WS_HSCROLL;
  if ((bars & 2) != 0) style |= WS_VSCROLL;
  if (appearance.tab_stop) style |= WS_TABSTOP;
  if (!appearance.enabled) style |= WS_DISABLED;
  return style;
}

/// Whether a message is answered with what can be seen in the window.
bool asks_what_is_seen(UINT message) {
  constexpr UINT messages[] = {WM_PRINT, WM_PRINTCLIENT, EM_FORMATRANGE, WM_GETOBJECT};
  return std::find(std::begin(messages), std::end(messages), message) != std::end(messages);
}

/// Whether a message reads formats from the window.
bool reads_formats(UINT message) {
  return message == EM_STREAMOUT || message == EM_GETCHARFORMAT || message == EM_GETOLEINTERFACE;
}

/// Whether a change needs a new window: these styles cannot be changed in an existing one.
bool are_styles_fixed(const BoxAppearance& before, const BoxAppearance& after) {
  return before.scroll_bars != after.scroll_bars || before.multiline != after.multiline;
}

/// How much of a window's text a message may have changed. Not all the messages by which other
/// programs put text into it mark it as changed.
BoxDisplay::Touch touch_of(UINT message) {
  switch (message) {
    case WM_SETTEXT:
    case EM_SETTEXTEX:
    case EM_STREAMIN:
      return BoxDisplay::Touch::all;
    case EM_REPLACESEL:
      return BoxDisplay::Touch::part;
    default:
      return BoxDisplay::Touch::none;
  }
}

/// A message that asks for the command of a key.
struct Command {
  UINT message;
  std::int16_t key_code;
  std::int16_t shift;
};

const Command* command_of(UINT message) {
  using namespace keys;
  static constexpr Command commands[] = {
      {WM_CUT, letter_key('X'), ctrl_key},   {WM_COPY, letter_key('C'), ctrl_key},
      {WM_PASTE, letter_key('V'), ctrl_key}, {EM_PASTESPECIAL, letter_key('V'), ctrl_key},
      {WM_UNDO, letter_key('Z'), ctrl_key},  {EM_UNDO, letter_key('Z'), ctrl_key},
      {EM_REDO, letter_key('Y'), ctrl_key},  {WM_CLEAR, delete_key, no_modifier}};
  const auto* const row =
      std::find_if(std::begin(commands), std::end(commands),
                   [message](const Command& command) { return command.message == message; });
  return row == std::end(commands) ? nullptr : row;
}

}  // namespace

std::shared_ptr<box::Box> BoxWindow::create(HWND owner, platform::Clipboard& clipboard) {
  auto box = std::make_shared<box::Box>();
  box->attach(new BoxWindow(*box, clipboard));
  if (owner != nullptr) box->put_owner(window_handle(owner));
  return box;
}

BoxWindow::~BoxWindow() {
  if (window_ == nullptr) return;
  drop_target_.reset();
  drop_caret_.hide();
  RemoveWindowSubclass(window_, procedure, subclass_id);
  DestroyWindow(window_);
}

// The window.

platform::WindowHandle BoxWindow::window() {
  if (window_ == nullptr) create(owner_ == nullptr ? HWND_MESSAGE : owner_);
  return window_handle(window_);
}

void BoxWindow::create(HWND parent) {
  load_window_class();
  const BoxAppearance is = box_.appearance();
  const HWND made = CreateWindowExW(0, MSFTEDIT_CLASS, L"", style_of(is), 0, 0, 0, 0, parent,
                                    nullptr, GetModuleHandleW(nullptr), nullptr);
  if (made == nullptr) throw Error(Error::component_base, "RichEdit", "no window for the box");
  window_ = made;
  display_.attach(window_);
  display_.put_read_only(is.read_only);
  display_.put_colors(colors());
  display_.put_dpi(dpi_of(window_));
  display_.put_font(is.font_name, is.font_size);
  // Lines are wrapped at the window's edge or not at all.
  SendMessageW(window_, EM_SETTARGETDEVICE, 0, is.multiline ? 0 : 1);
  place();
  composes_ = false;
  display_.show_everything();
  SetWindowSubclass(window_, procedure, subclass_id, reinterpret_cast<DWORD_PTR>(this));
  go_on_later();
  if (!name_.empty()) BoxAccessible::announce(window_, name_);
  take_drops();
}

void BoxWindow::take_drops() {
  drop_target_.reset();
  drop_caret_.hide();
  if (window_ == nullptr || is_deaf_) return;
  drop_target_.emplace(
      window_, box_, [this](POINT at) { return display_.position_at(at); },
      [this](std::optional<POINT> at) { show_landing(at); });
}

void BoxWindow::show_landing(std::optional<POINT> at) {
  if (window_ == nullptr || !at) return drop_caret_.hide();
  drop_caret_.show(window_, display_.caret_at(display_.position_at(*at)));
}

LRESULT BoxWindow::color_drop_caret(HDC context) const {
  SetDCBrushColor(context, colors().automatic.value_or(GetSysColor(COLOR_WINDOWTEXT)));
  return reinterpret_cast<LRESULT>(GetStockObject(DC_BRUSH));
}

void BoxWindow::put_name(const std::u16string& name) {
  if (std::exchange(name_, name) == name || window_ == nullptr) return;
  BoxAccessible::announce(window_, name);
  NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window_, OBJID_CLIENT, CHILDID_SELF);
}

void BoxWindow::put_deaf(bool is_deaf) {
  if (std::exchange(is_deaf_, is_deaf) != is_deaf) take_drops();
}

/// Somebody else destroys the window: what happens to its text now does not change the box.
void BoxWindow::lose() {
  window_ = nullptr;
  owner_ = nullptr;
  composes_ = false;
  mouse_.forget_drag();
  drop_target_.reset();
  drop_caret_.hide();
  display_.attach(nullptr);
}

void BoxWindow::put_owner(platform::WindowHandle owner) {
  owner_ = native_window(owner);
  if (window_ == nullptr) {
    if (owner_ != nullptr) create(owner_);
    return;
  }
  if (owner_ == nullptr) ShowWindow(window_, SW_HIDE);
  SetParent(window_, owner_ == nullptr ? HWND_MESSAGE : owner_);
  // The system does not tell that the owner is on a screen of another resolution.
  const int dpi = dpi_of(window_);
  if (owner_ != nullptr && dpi != display_.dpi()) put_dpi(dpi);
  place();
}

void BoxWindow::show_appearance(const BoxAppearance& before) {
  if (window_ == nullptr) return;
  const BoxAppearance is = box_.appearance();
  if (are_styles_fixed(before, is)) {
    const bool had_focus = GetFocus() == window_;
    const HWND old = window_;
    create(owner_ == nullptr ? HWND_MESSAGE : owner_);
    SetWindowPos(window_, old, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (had_focus) SetFocus(window_);
    DestroyWindow(old);
    return;
  }
  if (before.read_only != is.read_only) display_.put_read_only(is.read_only);
  if (before.back_color != is.back_color) show_colors();
  if (before.font_name != is.font_name || before.font_size != is.font_size) {
    display_.put_font(is.font_name, is.font_size);
  }
  place();
}

BoxWindow* BoxWindow::of(HWND window) {
  // Import libraries lack it, and older versions have it without a name.
  constexpr WORD ordinal = 411;
  using Find = BOOL WINAPI(HWND, SUBCLASSPROC, UINT_PTR, DWORD_PTR*);
  static auto* const find = reinterpret_cast<Find*>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"comctl32.dll"), MAKEINTRESOURCEA(ordinal))));
  DWORD_PTR view = 0;
  const bool is_box = find != nullptr && find(window, procedure, subclass_id, &view) != FALSE;
  return is_box ? reinterpret_cast<BoxWindow*>(view) : nullptr;
}

void BoxWindow::put_scheme(const Scheme& scheme) {
  if (scheme_ == scheme) return;
  scheme_ = scheme;
  show_colors();
}

ShownColors BoxWindow::colors() const {
  Scheme scheme = scheme_;
  scheme.has_high_contrast = scheme.has_high_contrast || has_high_contrast();
  return shown_colors(box_.appearance().back_color, scheme);
}

/// What is in the window has another size then, and lines are wrapped elsewhere.
void BoxWindow::put_dpi(int dpi) {
  display_.put_dpi(dpi);
  drop_caret_.hide();
  InvalidateRect(window_, nullptr, TRUE);
}

/// Also when the colours of the system change, as they do for high contrast.
void BoxWindow::show_colors() {
  if (window_ == nullptr || !display_.put_colors(colors())) return;
  const std::size_t size = box_.text().size();
  show({box::Change::Kind::formats, {0, size}, size});
}

/// Updates the position of the window, and what the user may do in it.
void BoxWindow::place() {
  const BoxAppearance is = box_.appearance();
  SetWindowPos(window_, nullptr, is.left, is.top, std::max(is.width, 0), std::max(is.height, 0),
               SWP_NOZORDER | SWP_NOACTIVATE);
  const LONG_PTR style = GetWindowLongPtrW(window_, GWL_STYLE) & ~LONG_PTR{WS_TABSTOP};
  SetWindowLongPtrW(window_, GWL_STYLE, style | (is.tab_stop ? WS_TABSTOP : 0));
  EnableWindow(window_, is.enabled ? TRUE : FALSE);
  ShowWindow(window_, is.visible && owner_ != nullptr ? SW_SHOWNA : SW_HIDE);
}

// Showing the box, and taking over edits.

/// Types what has been composed so far.
void BoxWindow::settle() {
  if (!composes_ || window_ == nullptr) return;
  const HWND window = window_;
  if (const HIMC input = ImmGetContext(window)) {
    ImmNotifyIME(input, NI_COMPOSITIONSTR, CPS_COMPLETE, 0);
    ImmReleaseContext(window, input);
  }
  if (composes_) end_composition();
}

void BoxWindow::show(const box::Change& change) {
  is_stale_ = composes_;
  if (window_ == nullptr || composes_) return;
  display_.show(change);
  go_on_later();
}

void BoxWindow::show_selection() {
  if (window_ != nullptr && !composes_) display_.show_selection();
}

/// Goes on with the formats when no input from keys or the mouse is waiting.
void BoxWindow::go_on_later() {
  constexpr UINT soon = 10;
  if (!display_.is_complete()) SetTimer(window_, timer_id, soon, nullptr);
}

void BoxWindow::take_from_window(BoxDisplay::Touch touch) {
  if (window_ == nullptr || composes_) return;
  if (touch == BoxDisplay::Touch::none && display_.is_touched()) touch = BoxDisplay::Touch::part;
  if (touch != BoxDisplay::Touch::none) take_foreign_text(touch);
  if (window_ == nullptr) return;
  const std::optional<box::Selection> selected = display_.take_selection();
  if (!selected) return;
  box_.put_selection(*selected);
  // The window's caret may have stopped within a character.
  display_.show_selection();
}

void BoxWindow::take_foreign_text(BoxDisplay::Touch touch) {
  const auto edit = display_.take_text(touch);
  go_on_later();
  if (edit) box_.take_edit(edit->extent, edit->text);
}

/// Types what was composed, which is in the window only.
void BoxWindow::take_composed_text() {
  const auto edit = display_.take_text(BoxDisplay::Touch::part);
  go_on_later();
  if (!edit || !box_.may_edit()) return;
  auto [extent, text] = *edit;
  // Of the places where the same letters give the same text, it was the caret's.
  const std::size_t caret = box_.selected().start();
  const bool may_move = extent.length() == 0 && box_.selected().is_empty() && caret < extent.start;
  if (may_move) {
    const std::u16string passed = box_.text().substr(caret, extent.start - caret);
    const std::u16string from_caret = passed + text;
    if (from_caret.ends_with(passed)) {
      extent = {caret, caret};
      text.assign(from_caret, 0, text.size());
    }
  }
  box_.put_selection({extent.start, extent.end});
  keyboard_.type(replace_all(text, u"\r\n", u"\r"));
}

void BoxWindow::carry(box::Drag& drag) { windows::carry(drag); }

// Messages.

LRESULT CALLBACK BoxWindow::procedure(HWND window, UINT message, WPARAM parameter, LPARAM data,
                                      UINT_PTR id, DWORD_PTR view) {
  auto& self = *reinterpret_cast<BoxWindow*>(view);
  // A listener may let go of the box, and this window goes with it.
  const auto held = self.box_.weak_from_this().lock();
  if (message == WM_DESTROY) {
    RemoveWindowSubclass(window, procedure, id);
    if (self.window_ == window) self.lose();
  }
  if (self.window_ != window || self.display_.is_busy()) {
    return DefSubclassProc(window, message, parameter, data);
  }
  try {
    return self.handle(message, parameter, data);
  } catch (const std::exception&) {
    // There is no caller to report the error to.
    MessageBeep(MB_ICONERROR);
    return 0;
  }
}

LRESULT BoxWindow::handle(UINT message, WPARAM parameter, LPARAM data) {
  if (const Handled result = handle_own(message, parameter, data)) return *result;
  return act_natively(message, parameter, data);
}

/// Lets the window's own procedure act, and takes over its result.
LRESULT BoxWindow::act_natively(UINT message, WPARAM parameter, LPARAM data) {
  const LRESULT result = DefSubclassProc(window_, message, parameter, data);
  take_from_window(touch_of(message));
  return result;
}

BoxWindow::Handled BoxWindow::handle_own(UINT message, WPARAM parameter, LPARAM data) {
  if (message == WM_TIMER && parameter == timer_id) {
    if (!composes_) display_.put_more_formats();
    if (display_.is_complete()) KillTimer(window_, timer_id);
    return 0;
  }
  if (asks_what_is_seen(message) && !composes_) display_.put_visible_formats();
  if (reads_formats(message) && !composes_) {
    display_.put_formats_for_reader(message == EM_GETCHARFORMAT);
  }
  if (const Handled handled = compose(message, parameter, data)) return handled;
  if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
    return handle_mouse(message, parameter, data);
  }
  if (message == WM_CLEAR && box_.selected().is_empty()) return 0;
  if (const Command* const command = command_of(message)) {
    keyboard_.run_command(command->key_code, command->shift);
    return TRUE;
  }
  if (message == EM_CANUNDO) return box_.can_undo() ? TRUE : FALSE;
  if (message == EM_CANREDO) return box_.can_redo() ? TRUE : FALSE;
  if (const Handled handled = handle_look(message, parameter, data)) return handled;
  return handle_key(message, parameter, data);
}

/// What has to do with how the box looks, and what it tells those who cannot see it.
BoxWindow::Handled BoxWindow::handle_look(UINT message, WPARAM parameter, LPARAM data) {
  switch (message) {
    case WM_CTLCOLORSTATIC:
      return color_drop_caret(reinterpret_cast<HDC>(parameter));
    case WM_GETOBJECT:
      if (static_cast<LONG>(data) != OBJID_CLIENT) return {};
      return BoxAccessible::answer(window_, box_.weak_from_this(), parameter);
    case WM_SETFONT:
      // The box has a font of its own.
      return 0;
    case WM_DPICHANGED:
      // Owners pass it on; the other one comes from the system and tells no number.
      put_dpi(HIWORD(parameter));
      return 0;
    case dpi_changed_after_parent:
      put_dpi(dpi_of(window_));
      return {};
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
      show_colors();
      return {};
    default:
      return {};
  }
}

/// Text being composed is in the window alone. Where the box has changed meanwhile it is lost,
/// since its place can no longer be told.
BoxWindow::Handled BoxWindow::compose(UINT message, WPARAM parameter, LPARAM data) {
  if (message == WM_IME_STARTCOMPOSITION) {
    display_.put_typing_format();
    composes_ = true;
    is_stale_ = false;
  }
  const bool ends = message == WM_IME_ENDCOMPOSITION || message == WM_KILLFOCUS;
  if (!composes_ || !ends) return {};
  const LRESULT result = DefSubclassProc(window_, message, parameter, data);
  if (composes_) end_composition();
  return result;
}

void BoxWindow::end_composition() {
  composes_ = false;
  if (std::exchange(is_stale_, false)) {
    display_.show_everything();
    go_on_later();
  } else {
    take_composed_text();
  }
}

}  // namespace qel::windows
