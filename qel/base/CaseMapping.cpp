#include "qel/base/CaseMapping.h"

#include <bitset>
#include <cstddef>
#include <cstdint>

#include "qel/base/CodeRanges.h"
#include "qel/base/Utf16.h"

namespace qel {
namespace {

#include "qel/base/UnicodeTables.inc"

template <std::size_t Size>
char32_t map_case(const CaseRange (&ranges)[Size], char32_t character) {
  const CaseRange* range = find_range(ranges, character);
  if (range == nullptr) return character;
  if ((character - range->first) % static_cast<char32_t>(range->stride) != 0) return character;
  return static_cast<char32_t>(static_cast<std::int32_t>(character) + range->delta);
}

}  // namespace

char32_t to_lower(char32_t character) {
  if (character < 0x80) {
    return character >= U'A' && character <= U'Z' ? character + 32 : character;
  }
  return map_case(lower_ranges, character);
}

char32_t to_upper(char32_t character) {
  if (character < 0x80) {
    return character >= U'a' && character <= U'z' ? character - 32 : character;
  }
  return map_case(upper_ranges, character);
}

std::u16string to_lower(std::u16string_view text) {
  return map_characters(text, [](char32_t character) { return to_lower(character); });
}

std::u16string to_upper(std::u16string_view text) {
  return map_characters(text, [](char32_t character) { return to_upper(character); });
}

bool equal_ignoring_case(std::u16string_view left, std::u16string_view right) {
  return left.size() == right.size() && to_lower(left) == to_lower(right);
}

bool is_punctuation(char32_t character) {
  static const auto in_ascii = [] {
    std::bitset<0x80> found;
    for (char32_t c = 0; c < found.size(); ++c) {
      found.set(c, find_range(punctuation_ranges, c) != nullptr);
    }
    return found;
  }();
  if (character < in_ascii.size()) return in_ascii.test(character);
  return find_range(punctuation_ranges, character) != nullptr;
}

}  // namespace qel
