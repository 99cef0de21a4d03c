#include "com/control/Extents.h"

namespace qel::com {
namespace {

constexpr int himetric_per_inch = 2540;

SIZE pixels_per_inch() {
  const HDC screen = GetDC(nullptr);
  const SIZE result = {GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
  ReleaseDC(nullptr, screen);
  return result;
}

}  // namespace

SIZE in_pixels(SIZEL himetric) {
  const SIZE density = pixels_per_inch();
  return {MulDiv(himetric.cx, density.cx, himetric_per_inch),
          MulDiv(himetric.cy, density.cy, himetric_per_inch)};
}

SIZEL in_himetric(SIZE pixels) {
  const SIZE density = pixels_per_inch();
  return {MulDiv(pixels.cx, himetric_per_inch, density.cx),
          MulDiv(pixels.cy, himetric_per_inch, density.cy)};
}

}  // namespace qel::com
