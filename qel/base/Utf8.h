#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Conversion between strings and UTF-8, for the edges of the system.
namespace qel {

/// A lone surrogate becomes U+FFFD.
std::string to_utf8(std::u16string_view text);
void append_utf8(std::string& bytes, std::u16string_view text);

/// Each byte that is not part of a valid sequence becomes the character that `invalid` returns for
/// it, so nothing is lost. Overlong sequences, surrogates and numbers above U+10FFFF are not valid.
std::u16string from_utf8(std::string_view bytes, char16_t (*invalid)(std::uint8_t byte));
void append_utf16_of(std::u16string& text, std::string_view bytes,
                     char16_t (*invalid)(std::uint8_t byte));

}  // namespace qel
