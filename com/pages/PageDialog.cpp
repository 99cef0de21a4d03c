#include "com/pages/PageDialog.h"

#include <commdlg.h>

#include <algorithm>
#include <exception>
#include <utility>

#include "com/control/Choices.h"
#include "com/pages/PageIds.h"
#include "qel/base/Error.h"
#include "windows/Colors.h"
#include "windows/Module.h"
#include "windows/Text.h"

namespace qel::com {
namespace {

const Setting* setting_with(int id) {
  const auto all = all_settings();
  const auto place =
      std::find_if(all.begin(), all.end(), [&](const Setting& each) { return each.id == id; });
  return place == all.end() ? nullptr : &*place;
}

int CALLBACK add_font(const LOGFONTW* font, const TEXTMETRICW* /*metrics*/, DWORD /*type*/,
                      LPARAM list) {
  const auto box = reinterpret_cast<HWND>(list);
  const auto name = reinterpret_cast<LPARAM>(font->lfFaceName);
  const auto none = static_cast<WPARAM>(-1);
  const bool is_for_columns = font->lfFaceName[0] == L'@';
  if (!is_for_columns && SendMessageW(box, CB_FINDSTRINGEXACT, none, name) == CB_ERR) {
    SendMessageW(box, CB_ADDSTRING, 0, name);
  }
  return TRUE;
}

void show_fonts(HWND list) {
  const HDC screen = GetDC(nullptr);
  LOGFONTW all = {};
  all.lfCharSet = DEFAULT_CHARSET;
  EnumFontFamiliesExW(screen, &all, add_font, reinterpret_cast<LPARAM>(list), 0);
  ReleaseDC(nullptr, screen);
}

std::u16string text_in(HWND control) {
  std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(control)) + 1, u'\0');
  const int size = GetWindowTextW(control, reinterpret_cast<wchar_t*>(text.data()),
                                  static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(size));
  return text;
}

/// The text of a number as programs write it, whatever sign stands for the point in the user's
/// country.
std::u16string with_point(std::u16string number) {
  std::replace(number.begin(), number.end(), u',', u'.');
  return number;
}

/// What is chosen in a list: its text has not reached the control while it tells of the choice.
std::u16string chosen_in(HWND list) {
  const auto at = static_cast<WPARAM>(SendMessageW(list, CB_GETCURSEL, 0, 0));
  const LRESULT size = SendMessageW(list, CB_GETLBTEXTLEN, at, 0);
  if (size == CB_ERR) return {};
  std::u16string text(static_cast<std::size_t>(size) + 1, u'\0');
  SendMessageW(list, CB_GETLBTEXT, at, reinterpret_cast<LPARAM>(text.data()));
  text.pop_back();
  return text;
}

COLORREF seen(const Value& color) { return windows::color_value(in_type<std::int32_t>(color)); }

/// A check box has a third state only as long as the text boxes differ.
void show_check(HWND box, const Value& value) {
  const bool differs = value.type() == VT_EMPTY;
  SendMessageW(box, BM_SETSTYLE, differs ? BS_AUTO3STATE : BS_AUTOCHECKBOX, TRUE);
  WPARAM state = BST_INDETERMINATE;
  if (!differs) state = in_type<bool>(value) ? BST_CHECKED : BST_UNCHECKED;
  SendMessageW(box, BM_SETCHECK, state, 0);
}

void show_choice(HWND list, const Value& value) {
  WPARAM chosen = static_cast<WPARAM>(-1);
  const LRESULT count = SendMessageW(list, CB_GETCOUNT, 0, 0);
  for (LRESULT i = 0; i < count && value.type() != VT_EMPTY; ++i) {
    const auto at = static_cast<WPARAM>(i);
    const LRESULT number = SendMessageW(list, CB_GETITEMDATA, at, 0);
    if (number == in_type<std::int32_t>(value)) chosen = at;
  }
  SendMessageW(list, CB_SETCURSEL, chosen, 0);
}

}  // namespace

PageDialog::PageDialog(HWND parent, const SharedSettings& settings, std::function<void()> changed)
    : settings_(settings), changed_(std::move(changed)) {
  CreateDialogParamW(windows::module_handle(), MAKEINTRESOURCEW(QEL_PAGE), parent, procedure,
                     reinterpret_cast<LPARAM>(this));
  if (dialog_ == nullptr) {
    throw Error(Error::component_base, "QEL", "the system has no window left");
  }
  for (const Setting& setting : all_settings()) {
    if (setting.kind == SettingKind::choice) show_choices(setting);
    if (setting.kind == SettingKind::text) show_fonts(control(setting));
  }
  show_settings();
}

PageDialog::~PageDialog() {
  if (dialog_ == nullptr) return;
  SetWindowLongPtrW(dialog_, DWLP_USER, 0);
  DestroyWindow(dialog_);
}

// What the controls show.

void PageDialog::show_choices(const Setting& setting) const {
  for (const Choice& choice : choices_of(setting.property())) {
    const auto text = reinterpret_cast<LPARAM>(choice.text.c_str());
    const LRESULT at = SendMessageW(control(setting), CB_ADDSTRING, 0, text);
    SendMessageW(control(setting), CB_SETITEMDATA, static_cast<WPARAM>(at), choice.value);
  }
  SendMessageW(control(setting), CB_SETDROPPEDWIDTH, 250, 0);
}

void PageDialog::show_settings() {
  changes_.clear();
  is_showing_ = true;
  for (const Setting& setting : all_settings()) show(setting, settings_.get(setting));
  is_showing_ = false;
  InvalidateRect(dialog_, nullptr, TRUE);
}

void PageDialog::show(const Setting& setting, const Value& value) {
  shown_[setting.id] = value;
  if (value.type() != VT_EMPTY) preview_.put(setting, value);
  switch (setting.kind) {
    case SettingKind::boolean:
      return show_check(control(setting), value);
    case SettingKind::choice:
      return show_choice(control(setting), value);
    case SettingKind::text:
    case SettingKind::number: {
      const std::u16string text =
          value.type() == VT_EMPTY ? std::u16string() : in_type<std::u16string>(value);
      SetWindowTextW(control(setting), windows::wide(text));
      return;
    }
    case SettingKind::color:
      InvalidateRect(GetDlgItem(dialog_, setting.id + QEL_PAGE_SWATCH), nullptr, TRUE);
      return;
  }
}

void PageDialog::put_focus(const Setting& setting) const { SetFocus(control(setting)); }

void PageDialog::draw_item(const DRAWITEMSTRUCT& item) {
  if (item.CtlID == QEL_PAGE_PREVIEW) return preview_.draw(item.hDC, item.rcItem);
  const Value color = shown_[static_cast<int>(item.CtlID) - QEL_PAGE_SWATCH];
  if (color.type() == VT_EMPTY) {
    FillRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_BTNFACE));
    return;
  }
  const HBRUSH brush = CreateSolidBrush(seen(color));
  FillRect(item.hDC, &item.rcItem, brush);
  DeleteObject(brush);
}

// What the user does.

void PageDialog::change(const Setting& setting, const Value& value) {
  shown_[setting.id] = value;
  changes_[setting.id] = value;
  preview_.put(setting, value);
  InvalidateRect(GetDlgItem(dialog_, QEL_PAGE_PREVIEW), nullptr, FALSE);
  changed_();
}

void PageDialog::on_command(int id, UINT notice) {
  const Setting* const setting = setting_with(id);
  if (setting == nullptr || is_showing_) return;
  const HWND from = control(*setting);
  const bool is_click = notice == BN_CLICKED;
  switch (setting->kind) {
    case SettingKind::boolean: {
      const LRESULT state = SendMessageW(from, BM_GETCHECK, 0, 0);
      // The third state can be chosen again: it leaves the boxes as they are.
      if (is_click && state == BST_INDETERMINATE) changes_.erase(id);
      if (is_click && state != BST_INDETERMINATE) change(*setting, Value::of(state == BST_CHECKED));
      return;
    }
    case SettingKind::choice: {
      const auto at = static_cast<WPARAM>(SendMessageW(from, CB_GETCURSEL, 0, 0));
      const auto number = static_cast<std::int32_t>(SendMessageW(from, CB_GETITEMDATA, at, 0));
      if (notice == CBN_SELCHANGE) change(*setting, Value::of(number));
      return;
    }
    case SettingKind::text:
      if (notice == CBN_SELCHANGE) change(*setting, Value::of(chosen_in(from)));
      if (notice == CBN_EDITCHANGE) change(*setting, Value::of(text_in(from)));
      return;
    case SettingKind::number:
      if (notice == EN_CHANGE) change(*setting, Value::of(with_point(text_in(from))));
      return;
    case SettingKind::color:
      if (is_click) choose_color(*setting);
      return;
  }
}

void PageDialog::choose_color(const Setting& setting) {
  const Value before = shown_[setting.id];
  CHOOSECOLORW choice = {};
  choice.lStructSize = sizeof choice;
  choice.hwndOwner = dialog_;
  choice.rgbResult = before.type() == VT_EMPTY ? 0 : seen(before);
  choice.lpCustColors = own_colors_.data();
  choice.Flags = CC_RGBINIT | CC_FULLOPEN;
  if (ChooseColorW(&choice) == FALSE) return;
  change(setting, Value::of(static_cast<std::int32_t>(choice.rgbResult)));
  InvalidateRect(GetDlgItem(dialog_, setting.id + QEL_PAGE_SWATCH), nullptr, TRUE);
}

void PageDialog::apply() {
  const auto changes = changes_;
  for (const auto& [id, value] : changes) {
    const Setting& setting = *setting_with(id);
    try {
      const bool is_number = setting.kind == SettingKind::number;
      settings_.put(setting, is_number ? value.as(VT_R4) : value);
    } catch (const std::exception&) {
      put_focus(setting);
      throw;
    }
    changes_.erase(id);
  }
  show_settings();
}

/// The frame moves the focus on from the last control, and from the first one backwards; Enter and
/// Escape press its buttons.
bool PageDialog::leads_out(const MSG& message) const {
  if (message.message != WM_KEYDOWN) return false;
  if (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE) return true;
  if (message.wParam != VK_TAB) return false;
  const HWND first = GetNextDlgTabItem(dialog_, nullptr, FALSE);
  const bool goes_back = GetKeyState(VK_SHIFT) < 0;
  const HWND from = GetFocus();
  const HWND end = goes_back ? from : GetNextDlgTabItem(dialog_, from, FALSE);
  return GetKeyState(VK_CONTROL) < 0 || end == first;
}

bool PageDialog::handle_key(MSG& message) const {
  const bool is_key = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  if (!is_key || IsChild(dialog_, message.hwnd) == FALSE || leads_out(message)) return false;
  return IsDialogMessageW(dialog_, &message) != FALSE;
}

// The window.

INT_PTR CALLBACK PageDialog::procedure(HWND dialog, UINT message, WPARAM w, LPARAM l) noexcept {
  if (message == WM_INITDIALOG) {
    SetWindowLongPtrW(dialog, DWLP_USER, l);
    reinterpret_cast<PageDialog*>(l)->dialog_ = dialog;
    return FALSE;
  }
  auto* const self = reinterpret_cast<PageDialog*>(GetWindowLongPtrW(dialog, DWLP_USER));
  if (self == nullptr) return FALSE;
  // A host that is told of a change may close the page.
  const auto hold = self->weak_from_this().lock();
  try {
    return self->handle(message, w, l) ? TRUE : FALSE;
  } catch (const std::exception&) {
    MessageBeep(MB_ICONERROR);
    return TRUE;
  }
}

bool PageDialog::handle(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case WM_COMMAND:
      on_command(LOWORD(w), HIWORD(w));
      return true;
    case WM_DRAWITEM:
      draw_item(*reinterpret_cast<const DRAWITEMSTRUCT*>(l));
      return true;
    case WM_SYSCOLORCHANGE:
      InvalidateRect(dialog_, nullptr, TRUE);
      return false;
    case WM_DESTROY:
      dialog_ = nullptr;
      return false;
    default:
      return false;
  }
}

}  // namespace qel::com
