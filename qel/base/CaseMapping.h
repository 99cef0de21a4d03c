#pragma once

#include <string>
#include <string_view>

namespace qel {

/// Simple, one-to-one case mappings of the Unicode character database, the same on every system and
/// whatever the locale. A character without such a mapping maps to itself. A mapped character takes
/// as many code units as before.
char32_t to_lower(char32_t character);
char32_t to_upper(char32_t character);

/// The text with each character mapped; the length in code units stays the same.
std::u16string to_lower(std::u16string_view text);
std::u16string to_upper(std::u16string_view text);

/// The character by which Unicode's simple case folding compares: the same for all forms of a
/// letter, such as the two small sigmas and the capital one.
char32_t fold_case(char32_t character);
std::u16string fold_case(std::u16string_view text);

/// The letter without the marks that Unicode takes for parts of it: "e" for "\u00E9". Letters of
/// Latin, Greek and Cyrillic have some; any other character maps to itself.
char32_t without_accents(char32_t letter);

/// Whether the texts are equal, ignoring case.
bool equal_ignoring_case(std::u16string_view left, std::u16string_view right);

/// Whether the character is punctuation or a symbol: neither a letter, a mark, a number nor a
/// blank.
bool is_punctuation(char32_t character);

}  // namespace qel
