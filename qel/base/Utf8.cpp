#include "qel/base/Utf8.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>

#include "qel/base/Scan.h"
#include "qel/base/Utf16.h"

namespace qel {
namespace {

/// The units or bytes of one piece, which is converted on the stack before it is appended.
constexpr std::size_t piece_size = 512;

char* put_sequence(char* out, char32_t character) {
  const auto tail = [character](unsigned shift) {
    return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
  };
  if (character < 0x800) {
    *out++ = static_cast<char>(0xC0U | (character >> 6U));
  } else if (character < 0x10000) {
    *out++ = static_cast<char>(0xE0U | (character >> 12U));
    *out++ = tail(6);
  } else {
    *out++ = static_cast<char>(0xF0U | (character >> 18U));
    *out++ = tail(12);
    *out++ = tail(6);
  }
  *out++ = tail(0);
  return out;
}

struct Sequence {
  char32_t character = 0;
  std::size_t length = 0;  // 0 when the bytes are not a valid sequence
};

/// The sequence of two to four bytes that `bytes` begin with.
Sequence read_sequence(std::string_view bytes) {
  struct Lead {
    unsigned mask;
    unsigned mark;
    char32_t smallest;
  };
  constexpr std::array<Lead, 3> leads = {
      {{0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}}};
  const auto first = static_cast<std::uint8_t>(bytes.front());
  std::size_t tails = 1;
  for (const Lead& lead : leads) {
    if ((first & lead.mask) != lead.mark) {
      ++tails;
      continue;
    }
    if (bytes.size() <= tails) return {};
    char32_t character = first & ~lead.mask;
    for (const char tail : bytes.substr(1, tails)) {
      if ((static_cast<std::uint8_t>(tail) & 0xC0U) != 0x80) return {};
      character = (character << 6U) | (static_cast<std::uint8_t>(tail) & 0x3FU);
    }
    const bool is_surrogate = character >= 0xD800 && character < 0xE000;
    if (character < lead.smallest || is_surrogate || character > 0x10FFFF) return {};
    return {character, tails + 1};
  }
  return {};
}

#if defined(__SSE2__)
/// Skips ASCII and whole sequences of two bytes, letters of Europe mostly, block by block. Stops
/// at the first block that has anything else.
std::size_t skip_short_sequences(std::string_view bytes, std::size_t at) {
  const auto all = [](unsigned byte) { return _mm_set1_epi8(static_cast<char>(byte)); };
  std::uint32_t is_open = 0;  // 1 where a sequence began with the last byte of the block before
  for (; at + packed_size <= bytes.size(); at += packed_size) {
    const __m128i block = load_packed(bytes.data() + at);
    const std::uint32_t high = bits_of_packed(block);
    if ((high | is_open) == 0) continue;
    // As signed numbers all of these are below 0.
    const std::uint32_t tails = bits_of_packed(_mm_cmplt_epi8(block, all(0xC0)));
    const std::uint32_t leads = bits_of_packed(
        _mm_and_si128(_mm_cmpgt_epi8(block, all(0xC1)), _mm_cmplt_epi8(block, all(0xE0))));
    constexpr std::uint32_t last = 0x8000;
    if (high != (leads | tails) || tails != ((leads & ~last) << 1U | is_open)) break;
    is_open = leads / last;
  }
  return at - is_open;
}
#endif

/// Where the first byte is, at or after `at`, that is not part of a valid sequence.
std::size_t end_of_valid(std::string_view bytes, std::size_t at) {
  while (at < bytes.size()) {
#if defined(__SSE2__)
    at = skip_short_sequences(bytes, at);
#endif
    at = end_of_ascii(bytes, at);
    if (at == bytes.size()) break;
    const std::size_t length = read_sequence(bytes.substr(at)).length;
    if (length == 0) break;
    at += length;
  }
  return at;
}

}  // namespace

std::string to_utf8(std::u16string_view text) {
  std::string bytes;
  append_utf8(bytes, text);
  return bytes;
}

void append_utf8(std::string& bytes, std::u16string_view text) {
  constexpr std::size_t longest = 3;  // bytes for a unit
  std::array<char, longest* piece_size> piece = {};
  for (std::size_t at = 0; at < text.size();) {
    char* out = piece.data();
    const std::size_t end = std::min(text.size(), at + piece_size - 1);
    while (at < end) {
      const std::size_t plain = narrow_ascii(text.substr(at, end - at), out);
      at += plain;
      out += plain;
      while (at < end && text[at] >= 0x80) out = put_sequence(out, next_character(text, at));
    }
    bytes.append(piece.data(), static_cast<std::size_t>(out - piece.data()));
  }
}

void append_utf8(std::string& bytes, char32_t character) {
  constexpr std::size_t longest = 4;
  std::array<char, longest> piece = {static_cast<char>(character)};
  const char* const end =
      character < 0x80 ? piece.data() + 1 : put_sequence(piece.data(), character);
  bytes.append(piece.data(), static_cast<std::size_t>(end - piece.data()));
}

std::u16string from_utf8(std::string_view bytes, char16_t (*invalid)(std::uint8_t byte)) {
  std::u16string text;
  append_utf16_of(text, bytes, invalid);
  return text;
}

void append_utf16_of(std::u16string& text, std::string_view bytes,
                     char16_t (*invalid)(std::uint8_t byte)) {
  std::array<char16_t, piece_size> piece = {};
  for (std::size_t at = 0; at < bytes.size();) {
    char16_t* out = piece.data();
    // No sequence has more code units than bytes. One that is cut goes beyond the end.
    const std::size_t end = std::min(bytes.size(), at + piece_size - 1);
    while (at < end) {
      const std::size_t plain = widen_ascii(bytes.substr(at, end - at), out);
      at += plain;
      out += plain;
      while (at < end && static_cast<std::uint8_t>(bytes[at]) >= 0x80) {
        const auto [character, length] = read_sequence(bytes.substr(at));
        if (length == 0) {
          *out++ = invalid(static_cast<std::uint8_t>(bytes[at]));
        } else if (character < 0x10000) {
          *out++ = static_cast<char16_t>(character);
        } else {
          *out++ = high_surrogate_of(character);
          *out++ = low_surrogate_of(character);
        }
        at += std::max<std::size_t>(length, 1);
      }
    }
    text.append(piece.data(), static_cast<std::size_t>(out - piece.data()));
  }
}

char32_t next_character(std::string_view text, std::size_t& at) {
  const auto [character, length] = read_sequence(text.substr(at));
  if (length == 0) return static_cast<std::uint8_t>(text[at++]);
  at += length;
  return character;
}

bool is_utf8(std::string_view bytes) { return end_of_valid(bytes, 0) == bytes.size(); }

void append_valid_utf8(std::string& text, std::string_view bytes,
                       char16_t (*invalid)(std::uint8_t byte)) {
  for (std::size_t at = 0;;) {
    const std::size_t end = end_of_valid(bytes, at);
    text.append(bytes, at, end - at);
    if (end == bytes.size()) return;
    append_utf8(text, char32_t{invalid(static_cast<std::uint8_t>(bytes[end]))});
    at = end + 1;
  }
}

}  // namespace qel
