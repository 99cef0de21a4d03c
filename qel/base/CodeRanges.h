#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>

/// Tables of characters by ranges.
namespace qel {

struct CodeRange {
  char32_t first;
  char32_t last;
};

/// The range of a table, in ascending order, in which the character lies; null when it is in none.
template <class Range, std::size_t Size>
const Range* find_range(const Range (&ranges)[Size], char32_t character) {
  const auto found =
      std::lower_bound(std::begin(ranges), std::end(ranges), character,
                       [](const Range& range, char32_t wanted) { return range.last < wanted; });
  return found != std::end(ranges) && found->first <= character ? found : nullptr;
}

}  // namespace qel
