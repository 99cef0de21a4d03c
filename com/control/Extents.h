#pragma once

#include <windows.h>

namespace qel::com {

/// Conversion between hundredths of a millimetre, in which hosts keep sizes, and screen pixels.
SIZE in_pixels(SIZEL himetric);
SIZEL in_himetric(SIZE pixels);

}  // namespace qel::com
