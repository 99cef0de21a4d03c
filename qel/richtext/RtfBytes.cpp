#include "qel/richtext/RtfBytes.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>

#include "qel/base/Scan.h"
#include "qel/base/Utf16.h"
#include "qel/richtext/CodePage.h"
#include "qel/richtext/RtfTokens.h"

namespace qel::richtext {
namespace {

bool is_escaped(std::string_view bytes, std::size_t backslash) {
  std::size_t first = backslash;
  while (first > 0 && bytes[first - 1] == '\\') --first;
  return (backslash - first) % 2 != 0;
}

/// Length of the word "\bin" at `word` and its binary data: of "\bin12 " and 12 bytes. 0 when no
/// such word stands there.
std::size_t binary_length(std::string_view bytes, std::size_t word) {
  constexpr std::size_t name_length = 4;
  const std::string_view rest = bytes.substr(word + name_length);
  std::size_t count = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), count);
  if (error == std::errc::invalid_argument || is_escaped(bytes, word)) return 0;
  std::size_t length = static_cast<std::size_t>(end - rest.data());
  if (length < rest.size() && rest[length] == ' ') ++length;
  const std::size_t left = rest.size() - length;
  if (error == std::errc::result_out_of_range) count = left;
  return name_length + length + std::min(count, left);
}

void append_widened(std::u16string& out, std::string_view bytes) {
  std::array<char16_t, 512> piece = {};
  while (!bytes.empty()) {
    const std::size_t plain = widen_ascii(bytes.substr(0, piece.size()), piece.data());
    out.append(piece.data(), plain);
    bytes.remove_prefix(plain);
    for (; !bytes.empty() && static_cast<std::uint8_t>(bytes.front()) >= 0x80;
         bytes.remove_prefix(1)) {
      append_hex_escape(out, static_cast<std::uint8_t>(bytes.front()));
    }
  }
}

/// Of a character as an escape, such as "\u-12345?".
constexpr std::size_t longest_character = 9;

char* put_character(char* out, char16_t character) {
  *out++ = '\\';
  if (const auto byte = encode_western(character)) {
    constexpr std::string_view hex_digits = "0123456789abcdef";
    *out++ = '\'';
    *out++ = hex_digits[*byte >> 4U];
    *out++ = hex_digits[*byte & 0xFU];
    return out;
  }
  *out++ = 'u';
  out = std::to_chars(out, out + longest_character, static_cast<std::int16_t>(character)).ptr;
  *out++ = '?';
  return out;
}

}  // namespace

std::u16string rtf_from_bytes(std::string_view bytes) {
  constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";
  if (bytes.substr(0, utf8_mark.size()) == utf8_mark) bytes.remove_prefix(utf8_mark.size());
  std::u16string rtf;
  rtf.reserve(bytes.size());
  std::size_t kept = 0;
  for (std::size_t word = 0; (word = bytes.find("\\bin", word)) != std::string_view::npos;) {
    const std::size_t length = binary_length(bytes, word);
    if (length == 0) {
      ++word;
      continue;
    }
    append_widened(rtf, bytes.substr(kept, word - kept));
    rtf.append(u"\\bin0 ");
    word += length;
    kept = word;
  }
  append_widened(rtf, bytes.substr(kept));
  return rtf;
}

std::string rtf_to_bytes(std::u16string_view rtf) {
  std::string bytes;
  append_rtf_bytes(bytes, rtf);
  return bytes;
}

void append_rtf_character(std::string& bytes, char32_t character) {
  std::array<char, 2 * longest_character> piece = {};
  char* out = piece.data();
  if (units_of(character) == 2) out = put_character(out, high_surrogate_of(character));
  out = put_character(out, units_of(character) == 2 ? low_surrogate_of(character)
                                                    : static_cast<char16_t>(character));
  bytes.append(piece.data(), static_cast<std::size_t>(out - piece.data()));
}

void append_rtf_bytes(std::string& bytes, std::u16string_view rtf) {
  std::array<char, 512> piece = {};
  while (!rtf.empty()) {
    char* out = piece.data();
    for (std::size_t left = piece.size(); !rtf.empty() && left >= longest_character;
         left = piece.size() - static_cast<std::size_t>(out - piece.data())) {
      const std::size_t plain = narrow_ascii(rtf.substr(0, left), out);
      out += plain;
      rtf.remove_prefix(plain);
      const bool has_room = left - plain >= longest_character;
      if (has_room && !rtf.empty() && rtf.front() >= 0x80) {
        out = put_character(out, rtf.front());
        rtf.remove_prefix(1);
      }
    }
    bytes.append(piece.data(), static_cast<std::size_t>(out - piece.data()));
  }
}

}  // namespace qel::richtext
