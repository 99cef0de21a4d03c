#pragma once

#include "qel/box/Drag.h"

namespace qel::windows {

/// Lets the user drag with the mouse until the drop or the end without one, and reports the effect
/// to `drag`. Promised data is supplied only until then. The drag, and all that it refers to, must
/// live until then, whatever happens to its window.
void carry(box::Drag& drag);

}  // namespace qel::windows
