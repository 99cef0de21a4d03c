#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

/// The order of text that reads from left to right and from right to left in one line: the
/// bidirectional algorithm of Unicode 15.0 (UAX #9), from a table that
/// scripts/generate-unicode-tables writes.
///
/// Departures from the standard: explicit embeddings and isolates have no effect, and a pair of
/// brackets is not resolved as a pair (rule N0).
namespace qel {

/// Whether any letter of the text reads from right to left. Where none does, all levels are 0.
bool has_right_to_left(std::u16string_view text);

/// The level of each code unit of a paragraph: an odd level reads from right to left, and the
/// paragraph does where its first letter does. A TAB, and the blanks before it, have the level of
/// the paragraph.
struct BidiLevels {
  std::uint8_t paragraph = 0;
  std::vector<std::uint8_t> units;
};
BidiLevels bidi_levels(std::u16string_view paragraph);

}  // namespace qel
