#pragma once

#include <string>
#include <string_view>

/// The instructions of RTF fields, such as `HYPERLINK "address" \l "place"`.
namespace qel::richtext {

/// Takes the next word off an instruction: what stands in quotes, or between blanks. In quotes a
/// backslash makes the character behind it a part of the word, and stays.
std::u16string_view next_field_word(std::u16string_view& rest);

/// The address of a link, "address#place" where it has a place, too. Empty for other fields, and
/// for links to a place in the same document.
std::u16string address_of_field(std::u16string_view instruction);

/// Whether a text says where a link leads: it is the address, or all of it but "http://",
/// "https://" or "mailto:" in front and a slash at the end.
bool says_address(std::u16string_view text, std::u16string_view address);

}  // namespace qel::richtext
