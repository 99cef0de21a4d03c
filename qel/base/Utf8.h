#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Between strings and UTF-8, for the edges of the system.
namespace qel {

/// The character at `at`, which moves behind it. A lone surrogate reads as U+FFFD.
inline char32_t next_character(std::u16string_view text, std::size_t& at) {
  const char32_t unit = text[at++];
  if ((unit & 0xF800U) != 0xD800) return unit;
  const bool pair =
      (unit & 0xFC00U) == 0xD800 && at < text.size() && (text[at] & 0xFC00U) == 0xDC00;
  if (!pair) return U'\uFFFD';
  return 0x10000 + ((unit & 0x3FFU) << 10U) + (text[at++] & 0x3FFU);
}

/// A lone surrogate becomes U+FFFD.
std::string to_utf8(std::u16string_view text);

/// Each byte that is no part of a valid sequence becomes the character that `invalid` has for it,
/// so nothing is lost. Overlong sequences, surrogates and numbers above U+10FFFF are not valid.
std::u16string from_utf8(std::string_view bytes, char16_t (*invalid)(std::uint8_t byte));

}  // namespace qel
