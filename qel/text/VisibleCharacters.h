#pragma once

#include <cstddef>
#include <string_view>

/// Counting and cutting markup by visible characters as the layout engine counts them. It has a
/// table of codes of its own: 34 of them, in upper or lower case. "/k1", "/k0" and "/nl" are three
/// visible characters each, and escapes mean nothing (see MarkupStrings.h for the decoder's count).
///
/// Positions are zero-based and of any size, unlike those of the members of `TextAndFormatting`.
/// Results are views of the text that was given, and repeat no codes.
namespace qel::visible {

/// Whether three characters are one of the 34 codes.
bool is_code(std::u16string_view characters);
/// Whether such a code begins at the code unit `at`, which may lie beyond the text.
bool has_code_at(std::u16string_view text, std::size_t at);

/// How many visible characters the text has.
std::size_t length(std::u16string_view text);

/// The first `count` visible characters without the codes behind them; all of the text when it has
/// fewer.
std::u16string_view left(std::u16string_view text, std::size_t count);
/// The last `count` visible characters without the codes before them; all of the text when it has
/// fewer.
std::u16string_view right(std::u16string_view text, std::size_t count);
/// `count` visible characters from the one at `start` on, or as many as there are; `npos` is all
/// the rest with the codes behind it.
std::u16string_view mid(std::u16string_view text, std::size_t start,
                        std::size_t count = std::u16string_view::npos);

}  // namespace qel::visible
