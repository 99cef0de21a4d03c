#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace qel {

#if defined(__GNUC__)
/// Eight characters that are compared at once.
using CharacterBlock = std::uint16_t __attribute__((vector_size(16)));

/// How many of the eight come before the first for which the comparison holds; 8 when it holds for
/// none. Where the comparison holds, all bits of the element are set.
template <class Mask>
std::size_t first_hit(const Mask& mask) {
  std::uint64_t halves[2];
  std::memcpy(halves, &mask, sizeof halves);
  constexpr unsigned bits = 16;
  const auto index = [](std::uint64_t half) {
    const int zeros = std::endian::native == std::endian::little ? std::countr_zero(half)
                                                                 : std::countl_zero(half);
    return static_cast<std::size_t>(zeros) / bits;
  };
  return halves[0] != 0 ? index(halves[0]) : 4 + index(halves[1]);
}
#endif

/// Position of the first character at or after `from` for which `wanted` holds; the length of the
/// text when there is none. The conversions spend most of their time here, so it looks at eight
/// characters at a time where the compiler is able to: `wanted` takes one character or a block of
/// them, and is made of comparisons joined by `|`.
template <class Predicate>
std::size_t find_first(std::u16string_view text, std::size_t from, Predicate wanted) {
  std::size_t at = from;
#if defined(__GNUC__)
  constexpr std::size_t block_size = 8;
  for (; at + block_size <= text.size(); at += block_size) {
    CharacterBlock block;
    std::memcpy(&block, text.data() + at, sizeof block);
    const std::size_t hit = first_hit(wanted(block));
    if (hit != block_size) return at + hit;
  }
#endif
  while (at < text.size() && !wanted(static_cast<std::uint16_t>(text[at]))) ++at;
  return at;
}

/// The same for the first of the `Wanted` characters.
template <char16_t... Wanted>
std::size_t find_any(std::u16string_view text, std::size_t from) {
  return find_first(text, from,
                    [](auto c) { return ((c == static_cast<std::uint16_t>(Wanted)) | ...); });
}

/// Where the run of bytes below 0x80 that begins at `from` ends. Looks at eight at a time.
inline std::size_t end_of_ascii(std::string_view bytes, std::size_t from) {
  constexpr std::uint64_t high_bits = 0x8080808080808080U;
  std::size_t at = from;
  for (std::uint64_t block = 0; at + sizeof block <= bytes.size(); at += sizeof block) {
    std::memcpy(&block, bytes.data() + at, sizeof block);
    if ((block & high_bits) != 0) break;
  }
  while (at < bytes.size() && static_cast<std::uint8_t>(bytes[at]) < 0x80) ++at;
  return at;
}

/// `text` with each occurrence of `search`, from left to right, replaced by `replacement`.
/// An empty `search` occurs nowhere.
inline std::u16string replace_all(std::u16string text, std::u16string_view search,
                                  std::u16string_view replacement) {
  std::size_t hit = search.empty() ? std::u16string::npos : text.find(search);
  if (hit == std::u16string::npos) return text;
  std::u16string result;
  result.reserve(text.size());
  std::size_t kept = 0;
  for (; hit != std::u16string::npos; hit = text.find(search, kept)) {
    result.append(text, kept, hit - kept).append(replacement);
    kept = hit + search.size();
  }
  result.append(text, kept, std::u16string::npos);
  return result;
}

}  // namespace qel
