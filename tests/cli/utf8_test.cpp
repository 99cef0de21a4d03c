#include "qel/base/Utf8.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <random>
#include <string>

namespace qel {
namespace {

/// Characters that are in none of the inputs below, so that they can mark invalid bytes.
constexpr char16_t first_mark = 0xF700;

char16_t mark_of(std::uint8_t byte) { return static_cast<char16_t>(first_mark + byte); }

/// The bytes that a text was read from.
std::string original(const std::u16string& text) {
  std::string bytes;
  std::u16string valid;
  for (const char16_t unit : text) {
    const bool is_mark = unit >= first_mark && unit < first_mark + 0x100;
    if (!is_mark) {
      valid.push_back(unit);
      continue;
    }
    bytes.append(to_utf8(valid)).push_back(static_cast<char>(unit - first_mark));
    valid.clear();
  }
  return bytes.append(to_utf8(valid));
}

TEST(Utf8, LosesNoByte) {
  // The bytes at the edges of what is valid, so that most sequences nearly are.
  constexpr std::array<std::uint8_t, 22> alphabet = {'a',  0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF,
                                                     0xC0, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xED, 0xF0,
                                                     0xF1, 0xF4, 0xF5, 0xF8, 0xFE, 0xFF};
  constexpr unsigned seed = 20;
  std::mt19937 random(seed);
  for (int round = 0; round < 200000; ++round) {
    std::string bytes(random() % 12, 'a');
    for (char& byte : bytes) byte = static_cast<char>(alphabet.at(random() % alphabet.size()));
    ASSERT_EQ(original(from_utf8(bytes, mark_of)), bytes) << "seed " << seed << ", round " << round;
  }
}

TEST(Utf8, ReadsEveryCharacterThatItWrites) {
  for (char32_t character = 0; character <= 0x10FFFF; ++character) {
    if (character >= 0xD800 && character < 0xE000) continue;
    std::u16string text;
    if (character < 0x10000) {
      text = static_cast<char16_t>(character);
    } else {
      text = {static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)),
              static_cast<char16_t>(0xDC00 + (character & 0x3FF))};
    }
    const std::size_t length = character < 0x80 ? 1 : character < 0x800 ? 2 : 3;
    const std::string bytes = to_utf8(text);
    ASSERT_EQ(bytes.size(), text.size() == 2 ? 4 : length) << static_cast<unsigned>(character);
    ASSERT_EQ(from_utf8(bytes, mark_of), text) << static_cast<unsigned>(character);
  }
}

TEST(Utf8, LoneSurrogatesAreReplaced) {
  EXPECT_EQ(to_utf8(u"a\xD83D"), "a\xEF\xBF\xBD");
  EXPECT_EQ(to_utf8(u"\xDE00\xD83D\xD83D\xDE00"), "\xEF\xBF\xBD\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace qel
