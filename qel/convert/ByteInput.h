#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qel::convert {

/// How the bytes of an input stand for characters.
enum class Encoding : std::uint8_t {
  utf8,  ///< each invalid byte is read in code page 1252
  utf16_little_endian,
  utf16_big_endian,
  bytes,  ///< of RTF: units of the same number
};

/// The encoding that a byte order mark at the beginning names, and the mark's length; UTF-8 and 0
/// where there is none.
struct Mark {
  Encoding encoding = Encoding::utf8;
  std::size_t length = 0;
};
Mark mark_of(std::string_view bytes);

/// Appends the bytes as UTF-16, and returns how many were taken: the beginning of a character is
/// left unless these are the last ones.
std::size_t append_decoded(std::u16string& out, std::string_view bytes, Encoding encoding,
                           bool is_last);

/// UTF-8 without the beginning of a character at its end.
std::string_view without_cut_character(std::string_view bytes);

/// The same for UTF-8, as valid UTF-8.
std::size_t append_decoded(std::string& out, std::string_view bytes, bool is_last);

/// The bytes that such units stand for, each of them a byte.
std::string bytes_of(std::u16string_view units);

}  // namespace qel::convert
