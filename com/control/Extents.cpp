#include "com/control/Extents.h"

namespace qel::com {
namespace {

constexpr int himetric_per_inch = 2540;

}  // namespace

SIZE in_pixels(SIZEL himetric, int dpi) {
  return {MulDiv(himetric.cx, dpi, himetric_per_inch), MulDiv(himetric.cy, dpi, himetric_per_inch)};
}

SIZEL in_himetric(SIZE pixels, int dpi) {
  return {MulDiv(pixels.cx, himetric_per_inch, dpi), MulDiv(pixels.cy, himetric_per_inch, dpi)};
}

}  // namespace qel::com
