#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

/// Lookup in tables of character ranges.
namespace qel {

struct CodeRange {
  char32_t first;
  char32_t last;
};

/// Every `stride`-th character from `first` to `last` maps to the one `delta` away.
struct CaseRange {
  char32_t first;
  char32_t last;
  std::int32_t stride;
  std::int32_t delta;
};

/// A character that maps to another.
struct CodePair {
  char16_t from;
  char16_t to;
};

/// What a character does in a grapheme cluster, by the names of the Unicode standard.
enum class ClusterClass : std::uint8_t {
  Other,
  Control,
  Extend,
  ZWJ,
  SpacingMark,
  Prepend,
  RegionalIndicator,
  ExtendedPictographic,
  L,
  V,
  T,
  LV,
  LVT
};

struct ClusterRange {
  char32_t first;
  char32_t last;
  ClusterClass value;
};

/// What a character does in a line of both directions, by the names of the Unicode standard.
enum class BidiClass : std::uint8_t { L, R, AL, EN, ES, ET, AN, CS, NSM, S, WS, ON };

struct BidiRange {
  char32_t first;
  char32_t last;
  BidiClass value;
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
