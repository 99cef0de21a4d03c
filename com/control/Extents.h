#pragma once

#include <windows.h>

namespace qel::com {

/// Conversion between hundredths of a millimetre, in which hosts keep sizes, and pixels, of which
/// there are `dpi` in an inch.
SIZE in_pixels(SIZEL himetric, int dpi);
SIZEL in_himetric(SIZE pixels, int dpi);

}  // namespace qel::com
