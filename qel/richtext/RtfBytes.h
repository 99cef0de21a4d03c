#pragma once

#include <string>
#include <string_view>

/// Converts RTF between strings, which hold any character, and files, which hold bytes.
namespace qel::richtext {

/// The RTF of a file as a string. Bytes from 0x80 become "\'hh", so that the code page that the
/// document or a font declares says what they mean; a byte order mark of UTF-8 is dropped, and
/// binary data, whose bytes are not text, becomes empty ("\bin0 ").
std::u16string rtf_from_bytes(std::string_view bytes);

/// The RTF of a string as bytes, all of them below 0x80: other characters are written "\'hh" where
/// code page 1252 has them and "\uN?" where it does not. For RTF that declares that code page and
/// one replacement character, which are the defaults.
std::string rtf_to_bytes(std::u16string_view rtf);
void append_rtf_bytes(std::string& bytes, std::u16string_view rtf);
/// The same for a character from 0x80 on.
void append_rtf_character(std::string& bytes, char32_t character);

}  // namespace qel::richtext
