#include "qel/base/ColorNames.h"

#include <algorithm>
#include <cstddef>

namespace qel {
namespace {

struct Shades {
  int end_of_hue;  // in degrees
  std::u16string_view dark;
  std::u16string_view usual;
  std::u16string_view light;
};

constexpr Shades shades[] = {
    {15, u"Dark red", u"Red", u"Light red"},
    {45, u"Brown", u"Orange", u"Light orange"},
    {70, u"Dark yellow", u"Yellow", u"Light yellow"},
    {95, u"Dark lime", u"Lime", u"Light lime"},
    {155, u"Dark green", u"Green", u"Light green"},
    {195, u"Dark turquoise", u"Turquoise", u"Light turquoise"},
    {255, u"Dark blue", u"Blue", u"Light blue"},
    {290, u"Dark purple", u"Purple", u"Light purple"},
    {345, u"Dark pink", u"Pink", u"Light pink"},
    {360, u"Dark red", u"Red", u"Light red"},
};

int hue_of(Color color, int least, int span) {
  const int red = red_of(color);
  const int green = green_of(color);
  const int blue = blue_of(color);
  const int most = least + span;
  constexpr int third = 120;
  constexpr int sixth = 60;
  int hue = 0;
  if (most == red) {
    hue = sixth * (green - blue) / span;
  } else if (most == green) {
    hue = third + sixth * (blue - red) / span;
  } else {
    hue = 2 * third + sixth * (red - green) / span;
  }
  return hue < 0 ? hue + 3 * third : hue;
}

std::u16string_view grey_name(int lightness) {
  constexpr int black = 24;
  constexpr int dark = 100;
  constexpr int usual = 165;
  constexpr int light = 240;
  if (lightness < black) return u"Black";
  if (lightness < dark) return u"Dark grey";
  if (lightness < usual) return u"Grey";
  return lightness < light ? u"Light grey" : u"White";
}

}  // namespace

std::u16string_view color_name(Color color) {
  if (is_system_color(color)) return {};
  const auto [least, most] = std::minmax({red_of(color), green_of(color), blue_of(color)});
  const int span = most - least;
  const int lightness = (most + least) / 2;
  constexpr int faint = 24;
  if (span < faint) return grey_name(lightness);
  const int hue = hue_of(color, least, span);
  const auto* const row = std::find_if(std::begin(shades), std::end(shades),
                                       [hue](const Shades& of) { return hue <= of.end_of_hue; });
  constexpr int dark = 105;
  constexpr int light = 180;
  if (lightness < dark) return row->dark;
  return lightness < light ? row->usual : row->light;
}

}  // namespace qel
