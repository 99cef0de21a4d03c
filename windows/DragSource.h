#pragma once

#include <cstdint>
#include <functional>

#include "qel/platform/DragData.h"

namespace qel::windows {

/// Tells the source what a drop would do now; with `default_cursors` false the pointer stays as it
/// is.
using GiveFeedback = std::function<void(std::int32_t& effect, bool& default_cursors)>;

/// Drags the data with the mouse until it is dropped, and returns what has become of it: one of the
/// effects in `allowed_effects`, or none when the user gave up. What `data` promises is supplied
/// until then only. The caller, and all that it lends to `data` and `feedback`, has to live on
/// meanwhile, whatever happens to its window.
std::int32_t drag(platform::DragData data, std::int32_t allowed_effects, GiveFeedback feedback);

}  // namespace qel::windows
