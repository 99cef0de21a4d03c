#include "com/pages/Settings.h"

#include <algorithm>
#include <array>

#include "com/automation/HostObject.h"
#include "com/automation/TypeLibrary.h"
#include "com/pages/PageIds.h"
#include "qel/base/Error.h"
#include "windows/Text.h"

namespace qel::com {
namespace {

constexpr auto as_boolean = SettingKind::boolean;
constexpr auto as_choice = SettingKind::choice;
constexpr auto as_color = SettingKind::color;

constexpr std::array settings = {
    Setting{QEL_PAGE_REVEAL_CODES, L"RevealCodes", as_boolean},
    Setting{QEL_PAGE_LOSSLESS, L"Lossless", as_boolean},
    Setting{QEL_PAGE_RECOGNIZE_CRLF, L"RecognizeCRLF", as_boolean},
    Setting{QEL_PAGE_RECOGNIZE_TABS, L"RecognizeTabs", as_boolean},
    Setting{QEL_PAGE_NL_TO_SPACE, L"ConvertNLToSpace", as_boolean},
    Setting{QEL_PAGE_TABS_TO_SPACE, L"ConvertTabsToSpace", as_boolean},
    Setting{QEL_PAGE_PASTE_TEXT_ONLY, L"PasteTextOnly", as_boolean},
    Setting{QEL_PAGE_FONT_NAME, L"FontName", SettingKind::text},
    Setting{QEL_PAGE_FONT_SIZE, L"FontSize", SettingKind::number},
    Setting{QEL_PAGE_BACK_COLOR, L"BackColor", as_color},
    Setting{QEL_PAGE_FORE_COLOR, L"ForeColor", as_color},
    Setting{QEL_PAGE_IGNORE_COLOR, L"IgnoreColor", as_color},
    Setting{QEL_PAGE_HIDE_COLOR, L"HideColor", as_color},
    Setting{QEL_PAGE_NOTE_COLOR, L"NoteColor", as_color},
    Setting{QEL_PAGE_ENABLED, L"Enabled", as_boolean},
    Setting{QEL_PAGE_ALLOW_EDITS, L"AllowEdits", as_boolean},
    Setting{QEL_PAGE_TAB_STOP, L"TabStop", as_boolean},
    Setting{QEL_PAGE_MULTILINE, L"Multiline", as_boolean},
    Setting{QEL_PAGE_ACT_ON_STYLES, L"ActOnStyles", as_boolean},
    Setting{QEL_PAGE_ACT_ON_FONTS, L"ActOnFonts", as_boolean},
    Setting{QEL_PAGE_ACT_ON_COLORS, L"ActOnColors", as_boolean},
    Setting{QEL_PAGE_ACT_ON_PLAIN, L"ActOnPlain", as_boolean},
    Setting{QEL_PAGE_SHIFT_F2, L"ShowEditorOnShiftF2", as_boolean},
    Setting{QEL_PAGE_BORDER_STYLE, L"BorderStyle", as_choice},
    Setting{QEL_PAGE_SCROLL_BARS, L"ScrollBars", as_choice},
    Setting{QEL_PAGE_XP_THEME, L"XPTheme", as_choice},
    Setting{QEL_PAGE_DRAG_MODE, L"OLEDragMode", as_choice},
    Setting{QEL_PAGE_DROP_MODE, L"OLEDropMode", as_choice},
};

Value value_in(IQELTextbox& box, const Setting& setting) {
  return HostObject(&box).get_value(windows::utf16(setting.name));
}

bool is_same(const Value& left, const Value& right) {
  return in_type<std::u16string>(left) == in_type<std::u16string>(right);
}

}  // namespace

DISPID Setting::property() const {
  auto* text = const_cast<LPOLESTR>(name);
  DISPID property = DISPID_UNKNOWN;
  ids_of_names(__uuidof(IQELTextbox), &text, 1, &property);
  return property;
}

std::span<const Setting> all_settings() { return settings; }

const Setting* setting_of(DISPID property) {
  const auto* const place =
      std::find_if(settings.begin(), settings.end(),
                   [&](const Setting& setting) { return setting.property() == property; });
  return place == settings.end() ? nullptr : place;
}

void SharedSettings::put_objects(std::span<IUnknown* const> objects) {
  std::vector<Pointer<IQELTextbox>> boxes;
  for (IUnknown* const object : objects) {
    boxes.push_back(Pointer<IUnknown>(object).as<IQELTextbox>());
    if (!boxes.back()) {
      throw Error(static_cast<std::uint32_t>(E_NOINTERFACE), "QEL", "the object is no text box");
    }
  }
  boxes_ = std::move(boxes);
}

Value SharedSettings::get(const Setting& setting) const {
  Value common;
  for (const auto& box : boxes_) {
    Value value = value_in(*box, setting);
    if (common.type() != VT_EMPTY && !is_same(common, value)) return {};
    common = std::move(value);
  }
  return common;
}

void SharedSettings::put(const Setting& setting, const Value& value) const {
  // Hosts that are told of a change may name other objects.
  const auto boxes = boxes_;
  for (const auto& box : boxes) {
    HostObject(box.get()).put(windows::utf16(setting.name), plain(value.get()));
  }
}

}  // namespace qel::com
