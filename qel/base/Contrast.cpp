#include "qel/base/Contrast.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace qel {

namespace {

using Channels = std::array<double, 3>;

/// Red, green and blue from 0 to 1.
Channels channels_of(Color color) {
  constexpr double full = 255;
  return {red_of(color) / full, green_of(color) / full, blue_of(color) / full};
}

Color color_of(const Channels& channels) {
  constexpr double full = 255;
  const auto value = [&](std::size_t i) {
    return static_cast<int>(std::lround(std::clamp(channels[i], 0.0, 1.0) * full));
  };
  return rgb(value(0), value(1), value(2));
}

/// Relative luminance, raised by the light that a screen reflects.
double luminance(Color color) {
  const auto linear = [](double channel) {
    constexpr double knee = 0.04045;
    return channel <= knee ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
  };
  const auto [red, green, blue] = channels_of(color);
  return 0.2126 * linear(red) + 0.7152 * linear(green) + 0.0722 * linear(blue) + 0.05;
}

/// A colour's hue and saturation, in which every lightness can be had. The greater the lightness,
/// the greater the luminance.
class Shades {
 public:
  explicit Shades(Color color) {
    const Channels channels = channels_of(color);
    const auto [low, high] = std::minmax_element(channels.begin(), channels.end());
    lightness_ = (*low + *high) / 2;
    const double widest = std::min(lightness_, 1 - lightness_);
    if (widest <= 0) return;
    for (std::size_t i = 0; i < channels.size(); ++i) {
      offsets_[i] = (channels[i] - lightness_) / widest;
    }
  }

  double lightness() const { return lightness_; }
  Color at(double lightness) const {
    Channels channels = {};
    const double widest = std::min(lightness, 1 - lightness);
    for (std::size_t i = 0; i < channels.size(); ++i) {
      channels[i] = lightness + offsets_[i] * widest;
    }
    return color_of(channels);
  }

  /// The lightness nearest to the colour's own, towards `end`, whose shade is enough.
  template <class Enough>
  std::optional<double> nearest(double end, Enough enough) const {
    if (!enough(at(end))) return {};
    double lacking = lightness_;
    constexpr int halvings = 16;
    for (int i = 0; i < halvings; ++i) {
      const double middle = (lacking + end) / 2;
      (enough(at(middle)) ? end : lacking) = middle;
    }
    return end;
  }

 private:
  double lightness_ = 0;
  Channels offsets_ = {};  // of each channel, from the lightness, by the widest there is
};

}  // namespace

double contrast(Color color, Color other) {
  const auto [low, high] = std::minmax({luminance(color), luminance(other)});
  return high / low;
}

Color readable_color(Color color, Color background, double least) {
  if (contrast(color, background) >= least) return color;
  const Shades shades(color);
  const double behind = luminance(background);
  const auto lighter =
      shades.nearest(1, [&](Color shade) { return luminance(shade) >= behind * least; });
  const auto darker =
      shades.nearest(0, [&](Color shade) { return luminance(shade) * least <= behind; });
  if (!lighter && !darker) {
    constexpr Color white = rgb(255, 255, 255);
    return contrast(white, background) >= contrast(0, background) ? white : Color{0};
  }
  const double own = shades.lightness();
  const bool lightens = lighter && (!darker || *lighter - own <= own - *darker);
  return shades.at(lightens ? *lighter : *darker);
}

}  // namespace qel
