#include "qel/base/CaseMapping.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <iterator>

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

/// What the letters of Latin, Greek and Cyrillic map to, found without a search.
class FirstMappings {
 public:
  static constexpr std::size_t size = 0x600;

  template <std::size_t Size>
  explicit FirstMappings(const CaseRange (&ranges)[Size]) {
    for (char32_t c = 0; c < size; ++c) mapped_[c] = static_cast<char16_t>(map_case(ranges, c));
  }

  char32_t operator[](char32_t character) const { return mapped_[character]; }

 private:
  std::array<char16_t, size> mapped_{};
};

}  // namespace

char32_t to_lower(char32_t character) {
  static const FirstMappings first(lower_ranges);
  return character < FirstMappings::size ? first[character] : map_case(lower_ranges, character);
}

char32_t to_upper(char32_t character) {
  static const FirstMappings first(upper_ranges);
  return character < FirstMappings::size ? first[character] : map_case(upper_ranges, character);
}

std::u16string to_lower(std::u16string_view text) {
  return map_characters(text, [](char32_t character) { return to_lower(character); });
}

std::u16string to_upper(std::u16string_view text) {
  return map_characters(text, [](char32_t character) { return to_upper(character); });
}

char32_t fold_case(char32_t character) {
  if (character < 0x80) return to_lower(character);
  // The letters i with and without a dot stay apart, as they do in the standard.
  constexpr char32_t dotted_capital = 0x130;
  constexpr char32_t dotless = 0x131;
  if (character == dotted_capital || character == dotless) return character;
  return to_lower(to_upper(character));
}

std::u16string fold_case(std::u16string_view text) {
  return map_characters(text, [](char32_t character) { return fold_case(character); });
}

char32_t without_accents(char32_t letter) {
  const auto* const found =
      std::lower_bound(std::begin(base_letters), std::end(base_letters), letter,
                       [](const CodePair& pair, char32_t wanted) { return pair.from < wanted; });
  return found != std::end(base_letters) && found->from == letter ? found->to : letter;
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
