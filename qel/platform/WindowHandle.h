#pragma once

#include <cstdint>

namespace qel::platform {

/// A window of the platform, as the platform itself knows it; 0 for none.
using WindowHandle = std::uintptr_t;

}  // namespace qel::platform
