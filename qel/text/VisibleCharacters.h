#pragma once

#include <cstddef>
#include <string_view>

/// Counting and cutting markup by visible characters as the layout engine counts them. The engine
/// has its own table of 34 codes, in upper or lower case. "/k1", "/k0" and "/nl" are three visible
/// characters each, and escapes mean nothing. (MarkupStrings.h counts as the decoder does.)
///
/// Positions are zero-based, and texts may be of any length, unlike in `TextAndFormatting`. Results
/// are views of the text that was given: they do not repeat codes that come before them.
namespace qel::visible {

/// Whether three characters are one of the 34 codes.
bool is_code(std::u16string_view characters);
/// Whether such a code begins at the code unit `at`, which may lie beyond the text.
bool has_code_at(std::u16string_view text, std::size_t at);
/// Whether four characters are two backslashes and the rest of a code, in lower case.
bool is_escape_code(std::u16string_view characters);

/// How many visible characters the text has.
std::size_t length(std::u16string_view text);

/// The first `count` visible characters without the codes after them; the whole text when it has
/// fewer.
std::u16string_view left(std::u16string_view text, std::size_t count);
/// The last `count` visible characters without the codes before them; the whole text when it has
/// fewer.
std::u16string_view right(std::u16string_view text, std::size_t count);
/// Up to `count` visible characters from the one at `start` on; `npos` means all the rest with the
/// codes after it.
std::u16string_view mid(std::u16string_view text, std::size_t start,
                        std::size_t count = std::u16string_view::npos);

}  // namespace qel::visible
