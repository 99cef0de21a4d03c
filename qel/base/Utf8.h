#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Conversion between strings and UTF-8, for the edges of the system.
namespace qel {

/// A lone surrogate becomes U+FFFD.
std::string to_utf8(std::u16string_view text);
void append_utf8(std::string& bytes, std::u16string_view text);

/// A character, which is no surrogate.
void append_utf8(std::string& bytes, char32_t character);

/// Each byte that is not part of a valid sequence becomes the character that `invalid` returns for
/// it, so nothing is lost. Overlong sequences, surrogates and numbers above U+10FFFF are not valid.
std::u16string from_utf8(std::string_view bytes, char16_t (*invalid)(std::uint8_t byte));
void append_utf16_of(std::u16string& text, std::string_view bytes,
                     char16_t (*invalid)(std::uint8_t byte));

/// The same as UTF-8.
void append_valid_utf8(std::string& text, std::string_view bytes,
                       char16_t (*invalid)(std::uint8_t byte));

/// Whether all sequences are valid.
bool is_utf8(std::string_view bytes);

/// The character at `at`, which moves past it; a byte that is not part of a valid sequence is one.
char32_t next_character(std::string_view text, std::size_t& at);

}  // namespace qel
