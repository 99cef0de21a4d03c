#pragma once

#include <cstddef>
#include <string_view>

/// Words as readers see them, after the rules of Unicode (UAX #29) but by simpler means: runs of
/// letters, marks and numbers, which an apostrophe or a middle dot between two letters joins, as in
/// "don't". A character that no standard knows counts as a letter.
///
/// Texts are UTF-16; positions are code units from 0, and those given must be whole.
namespace qel {

/// Whether the character is a letter, a mark or a number.
bool is_word_character(char32_t character);

/// Whether the characters before and behind the position belong to one word.
bool cuts_word(std::u16string_view text, std::size_t at);

/// Where the first word begins at or after the position, or the text's size. The rest of a word
/// that the position cuts does not count.
std::size_t word_start(std::u16string_view text, std::size_t from);
/// Where the word ends that begins at, or holds, the position.
std::size_t word_end(std::u16string_view text, std::size_t at);

}  // namespace qel
