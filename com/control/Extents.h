#pragma once

#include <windows.h>

namespace qel::com {

/// Between hundredths of a millimetre, in which hosts keep sizes, and pixels of the screen.
SIZE in_pixels(SIZEL himetric);
SIZEL in_himetric(SIZE pixels);

}  // namespace qel::com
