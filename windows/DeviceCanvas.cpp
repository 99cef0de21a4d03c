#include "windows/DeviceCanvas.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "qel/headless/FontMetrics.h"
#include "windows/Text.h"

namespace qel::windows {
namespace {

bool is_symbol(const platform::TextFont& font) {
  return headless::family_named(font.name) == headless::FontFamily::symbol;
}

/// The characters to draw.
std::wstring shown(std::u16string_view text, const platform::TextFont& font) {
  std::wstring out;
  out.reserve(text.size());
  const bool maps = is_symbol(font);
  for (const char16_t unit : text) {
    const char16_t visible = unit == u'\t' ? u' ' : unit;
    out.push_back(static_cast<wchar_t>(maps ? headless::symbol_character(visible) : visible));
  }
  return out;
}

/// The nearest whole number, limited to what a device can have.
int rounded(double units) {
  constexpr double most = 0x7FFFFFF;
  return static_cast<int>(std::lround(std::clamp(units, -most, most)));
}

COLORREF color_ref(Color color) {
  if (is_system_color(color)) return GetSysColor(system_color_index(color));
  return static_cast<COLORREF>(color);
}

/// Restores a context's state when destroyed.
class SavedState {
 public:
  explicit SavedState(HDC context) : context_(context), state_(SaveDC(context)) {}
  SavedState(const SavedState&) = delete;
  SavedState& operator=(const SavedState&) = delete;
  ~SavedState() {
    if (state_ != 0) RestoreDC(context_, state_);
  }

 private:
  HDC context_;
  int state_;
};

}  // namespace

DeviceCanvas::DeviceCanvas(HDC context) : context_(context) {
  constexpr double points_per_inch = 72;
  POINT inch[] = {{0, 0}, {GetDeviceCaps(context, LOGPIXELSX), GetDeviceCaps(context, LOGPIXELSY)}};
  DPtoLP(context, inch, static_cast<int>(std::size(inch)));
  across_ = (inch[1].x - inch[0].x) / points_per_inch;
  down_ = (inch[1].y - inch[0].y) / points_per_inch;
}

HFONT DeviceCanvas::handle_of(const platform::TextFont& font) const {
  if (last_handle_.handle() != nullptr && font == last_font_) return last_handle_.handle();
  LOGFONTW description = {};
  // A height of 0 would mean a size of the system's choice.
  description.lfHeight = std::min(rounded(-static_cast<double>(font.size) * std::abs(down_)), -1);
  description.lfWeight = font.bold ? FW_BOLD : FW_NORMAL;
  description.lfItalic = font.italic ? TRUE : FALSE;
  description.lfCharSet = DEFAULT_CHARSET;
  const std::wstring_view name = is_symbol(font) ? L"Times New Roman" : wide(font.name);
  const std::size_t length = std::min(name.size(), std::size(description.lfFaceName) - 1);
  std::copy_n(name.begin(), length, std::begin(description.lfFaceName));
  last_handle_ = Font(description);
  last_font_ = font;
  return last_handle_.handle();
}

float DeviceCanvas::text_width(std::u16string_view text, const platform::TextFont& font) const {
  const SelectedFont selected(context_, handle_of(font));
  const std::wstring characters = shown(text, font);
  SIZE size = {};
  GetTextExtentPoint32W(context_, characters.data(), static_cast<int>(characters.size()), &size);
  return static_cast<float>(size.cx / std::abs(across_));
}

platform::FontExtent DeviceCanvas::font_extent(const platform::TextFont& font) const {
  const SelectedFont selected(context_, handle_of(font));
  TEXTMETRICW metrics = {};
  GetTextMetricsW(context_, &metrics);
  const auto points = [this](LONG units) { return static_cast<float>(units / std::abs(down_)); };
  return {points(metrics.tmAscent), points(metrics.tmDescent), points(metrics.tmExternalLeading)};
}

void DeviceCanvas::draw_text(const platform::CanvasText& text) {
  if (!(text.font.size > 0)) return;
  const SavedState state(context_);
  const SelectedFont selected(context_, handle_of(text.font));
  SetTextColor(context_, color_ref(text.color));
  SetBkMode(context_, TRANSPARENT);
  SetTextAlign(context_, TA_BASELINE);
  const std::wstring characters = shown(text.text, text.font);
  ExtTextOutW(context_, rounded(static_cast<double>(text.x) * across_),
              rounded(static_cast<double>(text.y) * down_),
              text.right_to_left ? ETO_RTLREADING : 0U, nullptr, characters.data(),
              static_cast<UINT>(characters.size()), nullptr);
}

void DeviceCanvas::fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) {
  if (!(rectangle.width > 0 && rectangle.height > 0)) return;
  const auto edges = [](float from, float length, double scale) {
    const int first = rounded(static_cast<double>(from) * scale);
    const int last = rounded((static_cast<double>(from) + static_cast<double>(length)) * scale);
    // A thin line under text is at least one pixel.
    return std::pair(first, last == first ? first + (scale < 0 ? -1 : 1) : last);
  };
  const auto [left, right] = edges(rectangle.left, rectangle.width, across_);
  const auto [top, bottom] = edges(rectangle.top, rectangle.height, down_);
  const RECT area = {left, top, right, bottom};
  const HBRUSH brush = CreateSolidBrush(color_ref(color));
  FillRect(context_, &area, brush);
  DeleteObject(brush);
}

}  // namespace qel::windows
