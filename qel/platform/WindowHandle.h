#pragma once

#include <cstdint>

namespace qel::platform {

/// The platform's own handle of a window; 0 for none.
using WindowHandle = std::uintptr_t;

}  // namespace qel::platform
