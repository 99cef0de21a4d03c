#pragma once

#include <cstdint>

namespace qel::richtext {

/// Where the lines of a paragraph stand.
enum class Alignment : std::int32_t { left = 0, right = 1, center = 2 };

}  // namespace qel::richtext
