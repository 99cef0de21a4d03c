#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>

/// Lookup in tables of character ranges.
namespace qel {

struct CodeRange {
  char32_t first;
  char32_t last;
};

/// The range that holds the character; null when none does. The table is in ascending order.
template <class Range, std::size_t Size>
const Range* find_range(const Range (&ranges)[Size], char32_t character) {
  const auto found =
      std::lower_bound(std::begin(ranges), std::end(ranges), character,
                       [](const Range& range, char32_t wanted) { return range.last < wanted; });
  return found != std::end(ranges) && found->first <= character ? found : nullptr;
}

}  // namespace qel
