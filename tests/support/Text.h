#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// What the tests need to print and to make texts.
namespace qel::test {

/// Readable in messages: ASCII as it is, everything else as \uXXXX.
inline std::string shown(std::u16string_view text) {
  constexpr std::string_view hex = "0123456789ABCDEF";
  std::string out;
  for (const char16_t c : text) {
    if (c >= u' ' && c < 0x7F) {
      out.push_back(static_cast<char>(c));
      continue;
    }
    out.append("\\u");
    for (int shift = 12; shift >= 0; shift -= 4) out.push_back(hex[(c >> shift) & 0xF]);
  }
  return out;
}

inline std::u16string repeated(std::u16string_view piece, std::size_t times) {
  std::u16string text;
  text.reserve(piece.size() * times);
  for (std::size_t i = 0; i < times; ++i) text.append(piece);
  return text;
}

}  // namespace qel::test
