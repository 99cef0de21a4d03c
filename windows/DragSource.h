#pragma once

#include "qel/box/Drag.h"

namespace qel::windows {

/// Lets the user drag that with the mouse until it is dropped, or given up, and tells it the end.
/// What its data promises is supplied until then only. The drag, and all that it lends, has to live
/// on meanwhile, whatever happens to its window.
void carry(box::Drag& drag);

}  // namespace qel::windows
