#pragma once

#include <cstdint>

namespace qel::richtext {

/// How the lines of a paragraph are aligned.
enum class Alignment : std::int32_t { left = 0, right = 1, center = 2 };

}  // namespace qel::richtext
