#include "windows/BoxWindow.h"

// Needs the types of the other.
#include <commctrl.h>
#include <richedit.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "qel/base/Error.h"
#include "qel/platform/Keys.h"
#include "windows/FormatMapping.h"

namespace qel::windows {

using platform::BoxAppearance;
using richtext::Extent;

namespace {

constexpr UINT_PTR subclass_id = 1;
/// Far from those of the window's own.
constexpr UINT_PTR timer_id = 0x51454C;

/// The class of windows is there as long as its library.
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

/// Messages by which the window's formats get out of it.
bool reads_formats(UINT message) {
  constexpr UINT messages[] = {WM_PRINT,           WM_PRINTCLIENT,   EM_FORMATRANGE,
                               EM_STREAMOUT,       EM_GETCHARFORMAT, EM_GETPARAFORMAT,
                               EM_GETOLEINTERFACE, WM_GETOBJECT};
  return std::find(std::begin(messages), std::end(messages), message) != std::end(messages);
}

/// Whether the window has to be another one: these cannot be changed.
bool are_styles_fixed(const BoxAppearance& before, const BoxAppearance& after) {
  return before.scroll_bars != after.scroll_bars || before.multiline != after.multiline;
}

/// What may have become of a window's text. Other programs put text into it by messages not all of
/// which mark it as changed.
BoxDisplay::Touch touch_of(UINT message) {
  switch (message) {
    case WM_SETTEXT:
    case EM_SETTEXTEX:
    case EM_STREAMIN:
      return BoxDisplay::Touch::all;
    case EM_REPLACESEL:
    case EM_PASTESPECIAL:
      return BoxDisplay::Touch::part;
    default:
      return BoxDisplay::Touch::none;
  }
}

/// A message that asks for what a key does.
struct Command {
  UINT message;
  std::int16_t key_code;
  std::int16_t shift;
};

const Command* command_of(UINT message) {
  using namespace keys;
  static constexpr Command commands[] = {
      {WM_CUT, letter_key('X'), ctrl_key},   {WM_COPY, letter_key('C'), ctrl_key},
      {WM_PASTE, letter_key('V'), ctrl_key}, {WM_CLEAR, delete_key, no_modifier},
      {WM_UNDO, letter_key('Z'), ctrl_key},  {EM_UNDO, letter_key('Z'), ctrl_key},
      {EM_REDO, letter_key('Y'), ctrl_key}};
  const auto* const row =
      std::find_if(std::begin(commands), std::end(commands),
                   [message](const Command& command) { return command.message == message; });
  return row == std::end(commands) ? nullptr : row;
}

}  // namespace

/// While one of these lives, the window handles a message and must not go.
class BoxWindow::Busy {
 public:
  explicit Busy(BoxWindow& box) : box_(box) { ++box_.busy_; }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;
  ~Busy() {
    if (--box_.busy_ == 0 && box_.is_closed_) box_.destroy();
  }

 private:
  BoxWindow& box_;
};

BoxWindow::BoxWindow(platform::Clipboard& clipboard) : content_(*this, clipboard) {
  content_.listen(&teller_);
}

// The window.

HWND BoxWindow::window() {
  if (window_ == nullptr && !is_closed_) create(owner_ == nullptr ? HWND_MESSAGE : owner_);
  return window_;
}

void BoxWindow::create(HWND parent) {
  load_window_class();
  window_ = CreateWindowExW(0, MSFTEDIT_CLASS, L"", style_of(appearance_), 0, 0, 0, 0, parent,
                            nullptr, GetModuleHandleW(nullptr), nullptr);
  if (window_ == nullptr) {
    throw Error(Error::component_base, "RichEdit", "no window for the box");
  }
  SetWindowSubclass(window_, procedure, subclass_id, reinterpret_cast<DWORD_PTR>(this));
  display_.attach(window_);
  display_.put_read_only(appearance_.read_only);
  display_.put_background(appearance_.back_color);
  display_.put_font(appearance_.font_name, appearance_.font_size);
  // Lines are wrapped at the window's edge or not at all.
  SendMessageW(window_, EM_SETTARGETDEVICE, 0, appearance_.multiline ? 0 : 1);
  place();
  show();
  drop_target_.emplace(window_, static_cast<DropClient&>(*this));
}

void BoxWindow::destroy() {
  if (window_ != nullptr) DestroyWindow(window_);
}

void BoxWindow::close() {
  listener_ = &nobody_;
  is_closed_ = true;
  if (busy_ == 0) {
    destroy();
  } else if (window_ != nullptr) {
    ShowWindow(window_, SW_HIDE);
    SetParent(window_, HWND_MESSAGE);
  }
}

void BoxWindow::put_owner(HWND owner) {
  owner_ = owner;
  if (window_ == nullptr) {
    if (owner != nullptr) create(owner);
    return;
  }
  if (owner == nullptr) ShowWindow(window_, SW_HIDE);
  SetParent(window_, owner == nullptr ? HWND_MESSAGE : owner);
  place();
}

void BoxWindow::put_appearance(const BoxAppearance& appearance) {
  const BoxAppearance before = std::exchange(appearance_, appearance);
  content_.put_appearance(appearance);
  if (window_ == nullptr) return;
  if (are_styles_fixed(before, appearance)) {
    const bool had_focus = GetFocus() == window_;
    const HWND old = window_;
    create(owner_ == nullptr ? HWND_MESSAGE : owner_);
    SetWindowPos(window_, old, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    if (had_focus) SetFocus(window_);
    DestroyWindow(old);
    return;
  }
  if (before.read_only != appearance.read_only) display_.put_read_only(appearance.read_only);
  if (before.back_color != appearance.back_color) display_.put_background(appearance.back_color);
  if (before.font_name != appearance.font_name || before.font_size != appearance.font_size) {
    display_.put_font(appearance.font_name, appearance.font_size);
  }
  place();
  show();
}

/// Where the window is, and what can be done with it.
void BoxWindow::place() {
  const BoxAppearance& is = appearance_;
  SetWindowPos(window_, nullptr, is.left, is.top, std::max(is.width, 0), std::max(is.height, 0),
               SWP_NOZORDER | SWP_NOACTIVATE);
  const LONG_PTR style = GetWindowLongPtrW(window_, GWL_STYLE) & ~LONG_PTR{WS_TABSTOP};
  SetWindowLongPtrW(window_, GWL_STYLE, style | (is.tab_stop ? WS_TABSTOP : 0));
  EnableWindow(window_, is.enabled ? TRUE : FALSE);
  ShowWindow(window_, is.visible && owner_ != nullptr ? SW_SHOWNA : SW_HIDE);
}

// What the window shows, and what is taken from it.

void BoxWindow::show(BoxDisplay::Patience patience) {
  if (window_ == nullptr || composes_) return;
  display_.show(content_.document(), selected(), patience);
  // When no key and nothing of the mouse waits.
  constexpr UINT soon = 10;
  if (!display_.is_complete()) {
    SetTimer(window_, timer_id, soon, nullptr);
  } else if (goes_on_) {
    KillTimer(window_, timer_id);
  }
  goes_on_ = !display_.is_complete();
}

Extent BoxWindow::selected() const {
  const platform::Range range = content_.selection();
  const auto start = static_cast<std::size_t>(range.start);
  return {start, start + static_cast<std::size_t>(range.length)};
}

void BoxWindow::select(platform::Range range) {
  content_.select(range);
  if (window_ != nullptr && !composes_) display_.show_selection(selected());
}

void BoxWindow::take_from_window(BoxDisplay::Touch touch) {
  if (window_ == nullptr || composes_ || is_closed_) return;
  if (touch == BoxDisplay::Touch::none && display_.is_touched()) touch = BoxDisplay::Touch::part;
  if (touch != BoxDisplay::Touch::none) take_foreign_text(touch);
  if (window_ == nullptr || is_closed_) return;
  const std::optional<Extent> selected = display_.take_selection();
  if (!selected) return;
  content_.select(
      {static_cast<std::int32_t>(selected->start), static_cast<std::int32_t>(selected->length())});
}

/// What was composed, or put in by another program: the listener is told of its characters.
void BoxWindow::take_foreign_text(BoxDisplay::Touch touch) {
  const BoxDisplay::ForeignChange change = display_.take_text(touch);
  if (change.extent.length() == 0 && change.text.empty()) return show();
  std::u16string left;
  for (const char16_t unit : change.text) {
    if (unit == u'\n') continue;
    auto character = static_cast<std::int16_t>(unit);
    listener_->on_key_press(character);
    if (character != 0) left.push_back(static_cast<char16_t>(character));
  }
  if (!appearance_.read_only && appearance_.enabled) {
    const Extent extent = change.extent;
    content_.select(
        {static_cast<std::int32_t>(extent.start), static_cast<std::int32_t>(extent.length())});
    content_.put_text(platform::Scope::selection, left);
  }
  show();
}

// Messages.

LRESULT CALLBACK BoxWindow::procedure(HWND window, UINT message, WPARAM parameter, LPARAM data,
                                      UINT_PTR id, DWORD_PTR box) {
  const auto self = reinterpret_cast<BoxWindow*>(box)->shared_from_this();
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, procedure, id);
  if (message == WM_DESTROY && self->window_ == window) {
    // What it does with its text now is no change of the box.
    self->window_ = nullptr;
    self->owner_ = nullptr;
    self->drop_target_.reset();
    self->display_.attach(nullptr);
  }
  if (self->window_ != window || self->display_.is_busy()) {
    return DefSubclassProc(window, message, parameter, data);
  }
  try {
    return self->handle(message, parameter, data);
  } catch (const std::exception&) {
    // There is nobody above who could be told.
    MessageBeep(MB_ICONERROR);
    return 0;
  }
}

LRESULT BoxWindow::handle(UINT message, WPARAM parameter, LPARAM data) {
  const Busy busy(*this);
  if (const Handled result = handle_own(message, parameter, data)) return *result;
  return act_natively(message, parameter, data);
}

/// Lets the window's own procedure act, and takes over what has come of it.
LRESULT BoxWindow::act_natively(UINT message, WPARAM parameter, LPARAM data) {
  const LRESULT result = DefSubclassProc(window_, message, parameter, data);
  take_from_window(touch_of(message));
  return result;
}

BoxWindow::Handled BoxWindow::handle_own(UINT message, WPARAM parameter, LPARAM data) {
  if (is_closed_) return {};
  if (message == WM_TIMER && parameter == timer_id) {
    show();
    return 0;
  }
  if (!display_.is_complete() && reads_formats(message)) show(BoxDisplay::Patience::all);
  if (const Handled handled = compose(message, parameter, data)) return handled;
  if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
    return handle_mouse(message, parameter, data);
  }
  if (message == WM_CLEAR && content_.get_SelLength() == 0) return 0;
  if (const Command* const command = command_of(message)) {
    hands_.run_command(command->key_code, command->shift);
    show();
    return TRUE;
  }
  // Nobody is told whether there is anything to be undone; undoing nothing does no harm.
  if (message == EM_CANUNDO || message == EM_CANREDO) return appearance_.read_only ? FALSE : TRUE;
  // The box has a font of its own.
  if (message == WM_SETFONT) return 0;
  return handle_key(message, parameter, data);
}

/// While text is composed it is the window's alone.
BoxWindow::Handled BoxWindow::compose(UINT message, WPARAM parameter, LPARAM data) {
  if (message == WM_IME_STARTCOMPOSITION) composes_ = true;
  const bool ends = message == WM_IME_ENDCOMPOSITION || message == WM_KILLFOCUS;
  if (!composes_ || !ends) return {};
  const LRESULT result = DefSubclassProc(window_, message, parameter, data);
  composes_ = false;
  take_from_window(BoxDisplay::Touch::part);
  return result;
}

}  // namespace qel::windows
