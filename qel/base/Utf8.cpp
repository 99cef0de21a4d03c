#include "qel/base/Utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "qel/base/Scan.h"
#include "qel/base/Utf16.h"

namespace qel {
namespace {

void append_sequence(std::string& bytes, char32_t character) {
  const auto tail = [character](unsigned shift) {
    return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
  };
  if (character < 0x800) {
    const std::array sequence = {static_cast<char>(0xC0U | (character >> 6U)), tail(0)};
    bytes.append(sequence.data(), sequence.size());
  } else if (character < 0x10000) {
    const std::array sequence = {static_cast<char>(0xE0U | (character >> 12U)), tail(6), tail(0)};
    bytes.append(sequence.data(), sequence.size());
  } else {
    const std::array sequence = {static_cast<char>(0xF0U | (character >> 18U)), tail(12), tail(6),
                                 tail(0)};
    bytes.append(sequence.data(), sequence.size());
  }
}

void append_ascii(std::string& bytes, std::u16string_view text) {
  const std::size_t kept = bytes.size();
  bytes.resize(kept + text.size());
  std::transform(text.begin(), text.end(), bytes.begin() + static_cast<std::ptrdiff_t>(kept),
                 [](char16_t unit) { return static_cast<char>(unit); });
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

}  // namespace

std::string to_utf8(std::u16string_view text) {
  std::string bytes;
  append_utf8(bytes, text);
  return bytes;
}

void append_utf8(std::string& bytes, std::u16string_view text) {
  bytes.reserve(bytes.size() + text.size());
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end =
        find_first(text, at, [](auto unit) { return unit >= std::uint16_t{0x80}; });
    append_ascii(bytes, text.substr(at, end - at));
    at = end;
    while (at < text.size() && text[at] >= 0x80) append_sequence(bytes, next_character(text, at));
  }
}

std::u16string from_utf8(std::string_view bytes, char16_t (*invalid)(std::uint8_t byte)) {
  std::u16string text;
  append_utf16_of(text, bytes, invalid);
  return text;
}

void append_utf16_of(std::u16string& text, std::string_view bytes,
                     char16_t (*invalid)(std::uint8_t byte)) {
  // No sequence has more code units than bytes.
  const std::size_t kept = text.size();
  text.resize(kept + bytes.size());
  char16_t* out = text.data() + kept;
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t end = end_of_ascii(bytes, at);
    out = std::copy(bytes.data() + at, bytes.data() + end, out);
    if (end == bytes.size()) break;
    const auto [character, length] = read_sequence(bytes.substr(end));
    if (length == 0) {
      *out++ = invalid(static_cast<std::uint8_t>(bytes[end]));
    } else if (character < 0x10000) {
      *out++ = static_cast<char16_t>(character);
    } else {
      *out++ = static_cast<char16_t>(0xD7C0 + (character >> 10U));
      *out++ = static_cast<char16_t>(0xDC00 + (character & 0x3FFU));
    }
    at = end + std::max<std::size_t>(length, 1);
  }
  text.resize(static_cast<std::size_t>(out - text.data()));
}

}  // namespace qel
