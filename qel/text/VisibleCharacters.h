#pragma once

#include <cstddef>
#include <string_view>

/// Counting and cutting markup by visible characters, with the layout engine's own idea of a code:
/// 34 of them, told whatever their case. "/k1", "/k0" and "/nl" are three visible characters each,
/// and escapes mean nothing. Results are parts of the text that was given.
namespace qel::visible {

/// Whether three characters are one of the 34 codes.
bool is_code(std::u16string_view characters);

/// Whether such a code begins at `at`, which may lie beyond the text.
bool has_code_at(std::u16string_view text, std::size_t at);

std::size_t length(std::u16string_view text);

/// From the beginning to the `count`-th visible character, without the codes behind it. A count
/// that is not above 0 is never met: the whole text, or the code with which it begins when `count`
/// is 0.
std::u16string_view left(std::u16string_view text, std::ptrdiff_t count);
/// From the `count`-th visible character from the end, without the codes before it. A negative
/// count is never met.
std::u16string_view right(std::u16string_view text, std::ptrdiff_t count);
/// From the visible character `start` (one-based) on: the rest of the text when `length` is 0, else
/// that many visible characters. Empty for a start below 1 or a negative length.
std::u16string_view mid(std::u16string_view text, std::ptrdiff_t start, std::ptrdiff_t length);

}  // namespace qel::visible
