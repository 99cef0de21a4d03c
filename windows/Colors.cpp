#include "windows/Colors.h"

#include "qel/base/Contrast.h"

namespace qel::windows {
namespace {

constexpr Color black = rgb(0, 0, 0);
constexpr Color white = rgb(255, 255, 255);
constexpr double high_contrast = 7;

}  // namespace

COLORREF color_value(Color color) {
  return is_system_color(color) ? GetSysColor(system_color_index(color))
                                : static_cast<COLORREF>(color);
}

COLORREF ShownColors::text_color(Color color) const {
  const COLORREF own = color_value(color);
  if (contrast <= 0) return own;
  return static_cast<COLORREF>(
      readable_color(static_cast<Color>(own), static_cast<Color>(background), contrast));
}

bool is_dark(COLORREF background) {
  const auto color = static_cast<Color>(background & 0xFFFFFFU);
  return contrast(white, color) > contrast(black, color);
}

ShownColors shown_colors(Color background, const Scheme& scheme) {
  constexpr Color of_windows = system_color(COLOR_WINDOW);
  if (scheme.has_high_contrast) return {color_value(of_windows), {}, high_contrast};
  ShownColors colors;
  if (background == of_windows && scheme.background) {
    colors.background = *scheme.background;
    colors.automatic = scheme.text;
  } else {
    colors.background = color_value(background);
  }
  const bool has_dark_back = is_dark(colors.background);
  if (has_dark_back) colors.contrast = readable_contrast;
  if (!is_system_color(background)) {
    colors.automatic = has_dark_back ? RGB(255, 255, 255) : RGB(0, 0, 0);
  }
  return colors;
}

bool has_high_contrast() {
  HIGHCONTRASTW state = {};
  state.cbSize = sizeof state;
  return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof state, &state, 0) != FALSE &&
         (state.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

}  // namespace qel::windows
