#include "windows/EditorMenu.h"

#include <cstdint>
#include <optional>

#include "windows/Text.h"

namespace qel::windows {
namespace {

// Above the command numbers of the buttons.
constexpr UINT first_command = 100;

/// An item as the window system has it.
struct Found {
  HMENU popup;
  UINT command;
  bool is_checked;
};

MENUITEMINFOW item_info(HMENU menu, int place) {
  MENUITEMINFOW info = {};
  info.cbSize = sizeof info;
  info.fMask = MIIM_DATA | MIIM_ID | MIIM_STATE;
  GetMenuItemInfoW(menu, static_cast<UINT>(place), TRUE, &info);
  return info;
}

/// A field of a colour, as large as a check mark; black is the colour of text.
HBITMAP create_swatch(Color color) {
  const int side = GetSystemMetrics(SM_CXMENUCHECK);
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof info.bmiHeader, side, side, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* memory = nullptr;
  const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
  if (bitmap == nullptr) return nullptr;
  const auto pixel = [](COLORREF of) {
    constexpr std::uint32_t opaque = 0xFF000000U;
    return opaque | static_cast<std::uint32_t>(GetRValue(of)) << 16U |
           static_cast<std::uint32_t>(GetGValue(of)) << 8U | GetBValue(of);
  };
  const std::uint32_t edge = pixel(GetSysColor(COLOR_GRAYTEXT));
  const std::uint32_t field =
      pixel(color == 0 ? GetSysColor(COLOR_MENUTEXT) : static_cast<COLORREF>(color));
  auto* next = static_cast<std::uint32_t*>(memory);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const bool is_edge = x == 0 || y == 0 || x == side - 1 || y == side - 1;
      *next++ = is_edge ? edge : field;
    }
  }
  return bitmap;
}

std::optional<Found> find(HWND editor, std::u16string_view name) {
  const HMENU bar = GetMenu(editor);
  for (int menu = 0; menu < GetMenuItemCount(bar); ++menu) {
    const HMENU popup = GetSubMenu(bar, menu);
    for (int place = 0; place < GetMenuItemCount(popup); ++place) {
      const MENUITEMINFOW info = item_info(popup, place);
      const auto* const data = reinterpret_cast<const std::u16string*>(info.dwItemData);
      if (data == nullptr || *data != name) continue;
      return Found{popup, info.wID, (info.fState & MFS_CHECKED) != 0};
    }
  }
  return {};
}

void tell_opening(HWND editor, HMENU popup) {
  SendMessageW(editor, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup), 0);
}

}  // namespace

EditorMenu::EditorMenu(const std::vector<platform::Menu>& menus) : bar_(CreateMenu()) {
  for (const platform::Menu& menu : menus) {
    const HMENU popup = create_popup(menu);
    AppendMenuW(bar_, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), wide(menu.caption));
  }
}

EditorMenu::~EditorMenu() {
  for (const Item& item : items_) {
    if (item.swatch != nullptr) DeleteObject(item.swatch);
  }
}

HMENU EditorMenu::create_popup(const platform::Menu& menu) {
  const HMENU popup = CreatePopupMenu();
  for (const platform::MenuItem& item : menu.items) {
    if (item.name.empty()) {
      AppendMenuW(popup, MF_SEPARATOR, 0, nullptr);
    } else {
      append(popup, item);
    }
  }
  return popup;
}

void EditorMenu::append(HMENU popup, const platform::MenuItem& item) {
  std::u16string caption = item.caption;
  const Item& added = items_.emplace_back(
      Item{item.name, item.has_check, popup, item.swatch ? create_swatch(*item.swatch) : nullptr});
  MENUITEMINFOW info = {};
  info.cbSize = sizeof info;
  info.fMask = MIIM_DATA | MIIM_ID | MIIM_STRING;
  info.wID = first_command + static_cast<UINT>(items_.size()) - 1;
  info.dwItemData = reinterpret_cast<ULONG_PTR>(&added.name);
  info.dwTypeData = reinterpret_cast<wchar_t*>(caption.data());
  if (added.swatch != nullptr) {
    info.fMask |= MIIM_BITMAP;
    info.hbmpItem = added.swatch;
  }
  InsertMenuItemW(popup, static_cast<UINT>(GetMenuItemCount(popup)), TRUE, &info);
}

std::u16string_view EditorMenu::name_of(UINT command) const {
  const std::size_t index = command - first_command;
  return command < first_command || index >= items_.size() ? std::u16string_view()
                                                           : items_[index].name;
}

UINT EditorMenu::command_of(std::u16string_view name) const {
  UINT command = first_command;
  for (const Item& item : items_) {
    if (item.name == name) return command;
    ++command;
  }
  return 0;
}

HMENU EditorMenu::popup_of(std::u16string_view name) const {
  const UINT command = command_of(name);
  return command == 0 ? nullptr : items_[command - first_command].popup;
}

void EditorMenu::show_state(const platform::EditorListener& listener) const {
  UINT command = first_command;
  for (const Item& item : items_) {
    const UINT state = item.has_check && listener.is_checked(item.name) ? MF_CHECKED : MF_UNCHECKED;
    CheckMenuItem(bar_, command, MF_BYCOMMAND | state);
    const UINT use = listener.is_enabled(item.name) ? MF_ENABLED : MF_GRAYED;
    EnableMenuItem(bar_, command++, MF_BYCOMMAND | use);
  }
}

bool choose(HWND editor, std::u16string_view name) {
  const auto item = find(editor, name);
  if (!item) return false;
  tell_opening(editor, item->popup);
  SendMessageW(editor, WM_COMMAND, MAKEWPARAM(item->command, 0), 0);
  return true;
}

bool shows_check(HWND editor, std::u16string_view name) {
  const auto item = find(editor, name);
  if (!item) return false;
  tell_opening(editor, item->popup);
  return find(editor, name)->is_checked;
}

}  // namespace qel::windows
