#pragma once

#include "qel/base/Color.h"

namespace qel {

/// The least contrast at which small text is easy to read.
constexpr double readable_contrast = 4.5;

/// The contrast of two colours, from 1 (equal luminance) to 21 (black and white), as the
/// accessibility guidelines for the web define it. Not for system colours.
double contrast(Color color, Color other);

/// The colour in the nearest lightness, of the same hue and saturation, that has at least that
/// contrast against the background; unchanged where it has. A contrast that no lightness gives
/// becomes the greatest that there is; up to 4.58 there always is one. Not for system colours.
Color readable_color(Color color, Color background, double least = readable_contrast);

}  // namespace qel
