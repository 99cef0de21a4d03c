#include "windows/FormatBar.h"

// Needs the types of the other.
#include <commctrl.h>

#include <algorithm>
#include <cwchar>
#include <utility>

#include "qel/base/Scan.h"
#include "qel/control/FormatCommands.h"
#include "windows/Dpi.h"
#include "windows/Module.h"
#include "windows/Text.h"

namespace qel::windows {

namespace commands = format_commands;

namespace {

// Commands of the bar alone: menus have numbers above.
constexpr UINT font_button = 50;
constexpr UINT color_button = 51;
constexpr UINT brush_button = 52;

constexpr Sign toggle_signs[] = {Sign::bold,   Sign::italic,  Sign::underline,     Sign::strike_out,
                                 Sign::raised, Sign::lowered, Sign::small_capitals};
static_assert(std::size(toggle_signs) == commands::toggles.size());

const platform::MenuItem* find_item(const std::vector<platform::Menu>& menus,
                                    std::u16string_view name) {
  for (const platform::Menu& menu : menus) {
    for (const platform::MenuItem& item : menu.items) {
      if (item.name == name) return &item;
    }
  }
  return nullptr;
}

LRESULT send(HWND window, UINT message, WPARAM parameter = 0, LPARAM data = 0) {
  return SendMessageW(window, message, parameter, data);
}

}  // namespace

FormatBar::FormatBar(HWND editor, const std::vector<platform::Menu>& menus, const EditorMenu& menu,
                     int id)
    : editor_(editor), menu_(menu) {
  create_window(id);
  const std::u16string first_font = commands::font_command(0);
  const std::u16string first_color = commands::color_command(0);
  add(menus, commands::undo.name, Sign::undo);
  add(menus, commands::redo.name, Sign::redo);
  add_separator();
  create_button({first_font, u"Font", {}, Sign::font, font_button, menu.popup_of(first_font)});
  create_button(
      {first_color, u"Colour", {}, Sign::color, color_button, menu.popup_of(first_color)});
  add_separator();
  for (std::size_t i = 0; i < commands::toggles.size(); ++i) {
    add(menus, commands::toggles[i].label.name, toggle_signs[i]);
  }
  add_separator();
  add(menus, commands::plain.name, Sign::plain);
  create_button({std::u16string(commands::plain.name),
                 u"Copy Format",
                 {},
                 Sign::brush,
                 brush_button,
                 nullptr,
                 true});
}

void FormatBar::create_window(int id) {
  const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
  InitCommonControlsEx(&classes);
  constexpr DWORD style = WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_LIST |
                          TBSTYLE_TOOLTIPS | CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN;
  window_ =
      CreateWindowExW(0, TOOLBARCLASSNAMEW, L"Format", style, 0, 0, 0, 0, editor_,
                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), module_handle(), nullptr);
  send(window_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON));
  // The texts of buttons are their names for assistive programs.
  send(window_, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_DRAWDDARROWS);
  SetWindowSubclass(window_, procedure, 1, reinterpret_cast<DWORD_PTR>(this));
}

void FormatBar::add(const std::vector<platform::Menu>& menus, std::u16string_view name, Sign sign) {
  const platform::MenuItem* const item = find_item(menus, name);
  if (item == nullptr) return;
  const std::size_t tab = std::min(item->caption.find(u'\t'), item->caption.size());
  const std::u16string key = item->caption.substr(std::min(tab + 1, item->caption.size()));
  create_button({item->name, replace_all(item->caption.substr(0, tab), u"&", u""), key, sign,
                 menu_.command_of(name), nullptr, item->has_check});
}

void FormatBar::add_separator() const {
  TBBUTTON separator = {};
  separator.fsStyle = BTNS_SEP;
  send(window_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&separator));
}

void FormatBar::create_button(const Button& button) {
  TBBUTTON created = {};
  created.iBitmap = I_IMAGENONE;
  created.idCommand = static_cast<int>(button.command);
  created.fsStyle = button.popup != nullptr ? BTNS_WHOLEDROPDOWN
                    : button.has_check      ? BTNS_CHECK
                                            : BTNS_BUTTON;
  created.iString = reinterpret_cast<INT_PTR>(wide(button.caption));
  send(window_, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&created));
  buttons_.push_back(button);
}

// Sizes.

void FormatBar::put_font(const LOGFONTW& font, int dpi) {
  font_ = Font(font);
  send(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font_.handle()), TRUE);
  constexpr int side = 20;
  constexpr int around = 8;
  constexpr int arrow = 16;
  constexpr int name_width = 110;
  constexpr int gap = 8;
  side_ = scaled(side, dpi);
  const int button = scaled(side + around, dpi);
  send(window_, TB_SETBITMAPSIZE, 0, MAKELPARAM(0, 0));
  send(window_, TB_SETBUTTONSIZE, 0, MAKELPARAM(button, button));
  const auto count = static_cast<int>(send(window_, TB_BUTTONCOUNT));
  for (int i = 0; i < count; ++i) {
    TBBUTTONINFOW info = {};
    info.cbSize = sizeof info;
    info.dwMask = TBIF_BYINDEX | TBIF_COMMAND | TBIF_STYLE;
    send(window_, TB_GETBUTTONINFOW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&info));
    int width = side + around;
    if ((info.fsStyle & BTNS_SEP) != 0) width = gap;
    if ((info.fsStyle & BTNS_WHOLEDROPDOWN) != 0) width += arrow;
    if (info.idCommand == static_cast<int>(font_button)) width += name_width;
    info.dwMask = TBIF_BYINDEX | TBIF_SIZE;
    info.cx = static_cast<WORD>(scaled(width, dpi));
    send(window_, TB_SETBUTTONINFOW, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&info));
  }
  height_ = button + scaled(around / 2, dpi);
}

int FormatBar::width() const {
  RECT last = {};
  send(window_, TB_GETITEMRECT, static_cast<WPARAM>(send(window_, TB_BUTTONCOUNT) - 1),
       reinterpret_cast<LPARAM>(&last));
  return last.right;
}

void FormatBar::place(int width) const { MoveWindow(window_, 0, 0, width, height_, TRUE); }

// State.

void FormatBar::show_state(const platform::EditorListener& listener,
                           const platform::RichEdit& box) {
  for (const Button& button : buttons_) {
    const bool is_enabled = listener.is_enabled(button.name);
    send(window_, TB_ENABLEBUTTON, button.command, is_enabled ? TRUE : FALSE);
    if (!button.has_check || button.command == brush_button) continue;
    const bool is_on = is_enabled && listener.is_checked(button.name);
    send(window_, TB_CHECKBUTTON, button.command, is_on ? TRUE : FALSE);
  }
  if (!listener.is_enabled(commands::plain.name)) brush_.end();
  show_brush();
  std::u16string name = box.get_SelFontName().value_or(u"");
  const std::optional<Color> color = box.get_SelColor();
  if (name == font_name_ && color == color_) return;
  font_name_ = std::move(name);
  color_ = color;
  InvalidateRect(window_, nullptr, TRUE);
}

void FormatBar::show_brush() const {
  send(window_, TB_CHECKBUTTON, brush_button, brush_.is_on() ? TRUE : FALSE);
}

const FormatBar::Button* FormatBar::find(UINT command) const {
  const auto found =
      std::find_if(buttons_.begin(), buttons_.end(),
                   [command](const Button& button) { return button.command == command; });
  return found == buttons_.end() ? nullptr : &*found;
}

// What it reports.

LRESULT FormatBar::answer(const NMHDR& report) {
  switch (report.code) {
    case NM_CUSTOMDRAW:
      return draw(report);
    case TBN_DROPDOWN:
      open(static_cast<UINT>(reinterpret_cast<const NMTOOLBARW&>(report).iItem));
      return TBDDRET_DEFAULT;
    case TBN_GETINFOTIPW:
      tell_tip(report);
      return 0;
    default:
      return 0;
  }
}

LRESULT FormatBar::draw(const NMHDR& report) const {
  const NMCUSTOMDRAW& drawn = reinterpret_cast<const NMTBCUSTOMDRAW&>(report).nmcd;
  if (drawn.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
  if (drawn.dwDrawStage == CDDS_ITEMPREPAINT) return CDRF_NOTIFYPOSTPAINT;
  const Button* const button = find(static_cast<UINT>(drawn.dwItemSpec));
  if (drawn.dwDrawStage != CDDS_ITEMPOSTPAINT || button == nullptr) return CDRF_DODEFAULT;
  const bool is_enabled = (drawn.uItemState & CDIS_DISABLED) == 0;
  const COLORREF ink = GetSysColor(is_enabled ? COLOR_BTNTEXT : COLOR_GRAYTEXT);
  RECT place = drawn.rc;
  const LONG margin = side_ / 5;
  if (button->popup != nullptr) place.right = place.left + side_ + 2 * margin;
  draw_sign(drawn.hdc, place, side_, button->sign, ink);
  if (button->command == color_button) {
    const bool is_plain = !is_enabled || color_.value_or(0) == 0;
    draw_color_bar(drawn.hdc, place, side_, is_plain ? ink : static_cast<COLORREF>(*color_));
  }
  if (button->command == font_button && is_enabled) {
    RECT name = {place.right, drawn.rc.top, drawn.rc.right - 4 * margin, drawn.rc.bottom};
    const SelectedFont font(drawn.hdc, font_.handle());
    SetBkMode(drawn.hdc, TRANSPARENT);
    SetTextColor(drawn.hdc, ink);
    DrawTextW(drawn.hdc, wide(font_name_), static_cast<int>(font_name_.size()), &name,
              DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
  }
  return CDRF_DODEFAULT;
}

void FormatBar::tell_tip(const NMHDR& report) const {
  const auto& tip = reinterpret_cast<const NMTBGETINFOTIPW&>(report);
  const Button* const button = find(static_cast<UINT>(tip.iItem));
  if (button == nullptr || tip.cchTextMax <= 0) return;
  std::u16string text = button->caption;
  if (!button->key.empty()) text += u" (" + button->key + u")";
  if (button->command == font_button && !font_name_.empty()) text += u": " + font_name_;
  if (button->command == brush_button) {
    text += u": what is selected next gets it (double click: until Escape)";
  }
  text.resize(std::min(text.size(), static_cast<std::size_t>(tip.cchTextMax - 1)));
  std::wcscpy(tip.pszText, wide(text));
}

/// Opens a button's menu below it.
void FormatBar::open(UINT command) const {
  const Button* const button = find(command);
  if (button == nullptr || button->popup == nullptr) return;
  TPMPARAMS around = {};
  around.cbSize = sizeof around;
  send(window_, TB_GETRECT, command, reinterpret_cast<LPARAM>(&around.rcExclude));
  MapWindowPoints(window_, nullptr, reinterpret_cast<POINT*>(&around.rcExclude), 2);
  TrackPopupMenuEx(button->popup, TPM_LEFTALIGN | TPM_TOPALIGN | TPM_VERTICAL,
                   around.rcExclude.left, around.rcExclude.bottom, editor_, &around);
}

/// A second press soon after the first is a double click.
bool FormatBar::run(UINT command, const platform::RichEdit& box) {
  if (command != brush_button) return false;
  const DWORD now = GetTickCount();
  const bool is_second = now - std::exchange(brushed_at_, now) <= GetDoubleClickTime();
  const bool is_once = brush_.state() == FormatBrush::State::once;
  if (!brush_.is_on()) {
    brush_.begin(box, FormatBrush::State::once);
  } else if (is_once && is_second) {
    brush_.begin(box, FormatBrush::State::until_ended);
  } else {
    brush_.end();
  }
  show_brush();
  return true;
}

// Keys.

bool FormatBar::is_reachable(int place) const {
  TBBUTTON button = {};
  send(window_, TB_GETBUTTON, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&button));
  return (button.fsStyle & BTNS_SEP) == 0 && (button.fsState & TBSTATE_ENABLED) != 0;
}

/// Goes on in steps to the next button that can be chosen, from that place on, round the ends.
void FormatBar::go(int from, int step) {
  const auto count = static_cast<int>(send(window_, TB_BUTTONCOUNT));
  for (int i = 0; i < count; ++i) {
    const int place = ((from + i * step) % count + count) % count;
    if (!is_reachable(place)) continue;
    last_ = place;
    send(window_, TB_SETHOTITEM, static_cast<WPARAM>(place));
    return;
  }
}

void FormatBar::reach() {
  SetFocus(window_);
  go(last_, 1);
}

/// The command of the button that has the focus; 0 where that cannot be chosen.
UINT FormatBar::hot_command() const {
  TBBUTTON button = {};
  send(window_, TB_GETBUTTON, static_cast<WPARAM>(last_), reinterpret_cast<LPARAM>(&button));
  return is_reachable(last_) ? static_cast<UINT>(button.idCommand) : 0;
}

void FormatBar::choose_hot() const {
  const Button* const button = find(hot_command());
  if (button == nullptr) return;
  if (button->popup != nullptr) return open(button->command);
  const WPARAM clicked = MAKEWPARAM(button->command, BN_CLICKED);
  send(editor_, WM_COMMAND, clicked, reinterpret_cast<LPARAM>(window_));
}

bool FormatBar::handle_key(WPARAM key) {
  const auto count = static_cast<int>(send(window_, TB_BUTTONCOUNT));
  switch (key) {
    case VK_LEFT:
      go(last_ - 1, -1);
      return true;
    case VK_RIGHT:
      go(last_ + 1, 1);
      return true;
    case VK_HOME:
      go(0, 1);
      return true;
    case VK_END:
      go(count - 1, -1);
      return true;
    case VK_DOWN:
      open(hot_command());
      return true;
    case VK_RETURN:
    case VK_SPACE:
      choose_hot();
      return true;
    default:
      return false;
  }
}

LRESULT CALLBACK FormatBar::procedure(HWND window, UINT message, WPARAM parameter, LPARAM data,
                                      UINT_PTR id, DWORD_PTR bar) {
  auto& self = *reinterpret_cast<FormatBar*>(bar);
  if (message == WM_NCDESTROY) RemoveWindowSubclass(window, procedure, id);
  if (message == WM_KEYDOWN && self.handle_key(parameter)) return 0;
  // Its own procedure would look for a button of that letter, or sound.
  if (message == WM_CHAR) return 0;
  const LRESULT result = DefSubclassProc(window, message, parameter, data);
  if (message == WM_SETFOCUS) self.go(self.last_, 1);
  if (message == WM_KILLFOCUS) send(window, TB_SETHOTITEM, static_cast<WPARAM>(-1));
  return result;
}

}  // namespace qel::windows
