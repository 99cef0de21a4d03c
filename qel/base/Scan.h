#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace qel {

#if defined(__GNUC__)
/// Eight characters that are compared at once.
using CharacterBlock = std::uint16_t __attribute__((vector_size(16)));

inline CharacterBlock load_block(const char16_t* characters) {
  CharacterBlock block;
  std::memcpy(&block, characters, sizeof block);
  return block;
}

/// A comparison of a block as a number: two bits for each of the eight, the first one lowest. Where
/// the comparison holds, all bits of the element are set.
template <class Mask>
std::uint32_t bits_of(const Mask& mask) {
#if defined(__SSE2__)
  __m128i bytes;
  std::memcpy(&bytes, &mask, sizeof bytes);
  return static_cast<std::uint32_t>(_mm_movemask_epi8(bytes));
#else
  std::uint32_t bits = 0;
  for (unsigned i = 0; i < 8; ++i) bits |= (mask[i] != 0 ? 3U : 0U) << (2 * i);
  return bits;
#endif
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
  const auto hits = [&](std::size_t begin) {
    return bits_of(wanted(load_block(text.data() + begin)));
  };
  for (; at + block_size <= text.size(); at += block_size) {
    const std::uint32_t bits = hits(at);
    if (bits != 0) return at + static_cast<std::size_t>(std::countr_zero(bits)) / 2;
  }
  if (at < text.size() && text.size() >= block_size) {
    // The last block overlaps what has been looked at.
    const std::size_t begin = text.size() - block_size;
    const std::uint32_t bits = hits(begin) >> (2 * (at - begin));
    return bits == 0 ? text.size() : at + static_cast<std::size_t>(std::countr_zero(bits)) / 2;
  }
#endif
  while (at < text.size() && !wanted(static_cast<std::uint16_t>(text[at]))) ++at;
  return at;
}

#if defined(__SSE2__)
constexpr std::size_t packed_size = sizeof(__m128i);

/// A comparison of packed characters as a number: a bit for each, the first one lowest.
inline std::uint32_t bits_of_packed(__m128i mask) {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(mask));
}

/// Sixteen characters that are compared at once, each packed into a byte: those below 0x7F as they
/// are, all others as 0x7F, or as 0x80 and above.
inline __m128i load_packed(const char16_t* characters) {
  __m128i first;
  __m128i second;
  std::memcpy(&first, characters, sizeof first);
  std::memcpy(&second, characters + 8, sizeof second);
  return _mm_packs_epi16(first, second);
}

inline __m128i load_packed(const char* bytes) {
  __m128i block;
  std::memcpy(&block, bytes, sizeof block);
  return block;
}

/// Whether `wanted`, which takes packed characters, has a hit at or after `at`, which is moved
/// there or to where less than a block is left.
template <class Char, class Predicate>
bool find_packed(std::basic_string_view<Char> text, std::size_t& at, Predicate wanted) {
  for (; at + packed_size <= text.size(); at += packed_size) {
    const std::uint32_t bits = bits_of_packed(wanted(load_packed(text.data() + at)));
    if (bits == 0) continue;
    at += static_cast<std::size_t>(std::countr_zero(bits));
    return true;
  }
  return false;
}

/// Where packed characters are one of the `Wanted`, which are below 0x7F.
template <char16_t... Wanted>
struct AreAny {
  __m128i operator()(__m128i packed) const {
    static_assert(((Wanted < 0x7F) && ...));
    __m128i hits = _mm_setzero_si128();
    ((hits = _mm_or_si128(hits, _mm_cmpeq_epi8(packed, _mm_set1_epi8(static_cast<char>(Wanted))))),
     ...);
    return hits;
  }
};
#endif

/// Position of the first of the `Wanted` characters at or after `from`, or the text's length.
template <char16_t... Wanted>
std::size_t find_any(std::u16string_view text, std::size_t from) {
#if defined(__SSE2__)
  if constexpr (((Wanted < 0x7F) && ...)) {
    if (find_packed(text, from, AreAny<Wanted...>())) return from;
  }
#endif
  return find_first(text, from,
                    [](auto c) { return ((c == static_cast<std::uint16_t>(Wanted)) | ...); });
}

/// Position of the first byte at or after `from` for which `wanted` holds, which takes a byte, and
/// for which `wanted_of_packed` does, which takes a block of bytes; the length of the text when
/// there is none.
#if defined(__SSE2__)
template <class Predicate, class PackedPredicate>
std::size_t find_byte(std::string_view text, std::size_t from, Predicate wanted,
                      PackedPredicate wanted_of_packed) {
  if (find_packed(text, from, wanted_of_packed)) return from;
  if (from < text.size() && text.size() >= packed_size) {
    // The last block overlaps what has been looked at.
    const std::size_t begin = text.size() - packed_size;
    const std::uint32_t bits = bits_of_packed(wanted_of_packed(load_packed(text.data() + begin)));
    const std::uint32_t rest = bits >> (from - begin);
    return rest == 0 ? text.size() : from + static_cast<std::size_t>(std::countr_zero(rest));
  }
  while (from < text.size() && !wanted(text[from])) ++from;
  return from;
}
#endif

/// The same in bytes, for `Wanted` characters that are ASCII.
template <char16_t... Wanted>
std::size_t find_any(std::string_view text, std::size_t from) {
  const auto is_wanted = [](char c) { return ((c == static_cast<char>(Wanted)) | ...); };
#if defined(__SSE2__)
  return find_byte(text, from, is_wanted, AreAny<Wanted...>());
#else
  while (from < text.size() && !is_wanted(text[from])) ++from;
  return from;
#endif
}

/// Position of the first byte at or after `from` that is not ASCII.
inline std::size_t end_of_ascii(std::string_view text, std::size_t from) {
  const auto is_high = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
#if defined(__SSE2__)
  return find_byte(text, from, is_high, [](__m128i packed) { return packed; });
#else
  while (from < text.size() && !is_high(text[from])) ++from;
  return from;
#endif
}

/// Copies the bytes below 0x80 at the beginning as characters, and returns how many there are. May
/// write all of `out`, which is as long as `bytes`.
inline std::size_t widen_ascii(std::string_view bytes, char16_t* out) {
  std::size_t at = 0;
#if defined(__SSE2__)
  for (; at + sizeof(__m128i) <= bytes.size(); at += sizeof(__m128i)) {
    __m128i block;
    std::memcpy(&block, bytes.data() + at, sizeof block);
    if (_mm_movemask_epi8(block) != 0) break;
    const __m128i first = _mm_unpacklo_epi8(block, _mm_setzero_si128());
    const __m128i second = _mm_unpackhi_epi8(block, _mm_setzero_si128());
    std::memcpy(out + at, &first, sizeof first);
    std::memcpy(out + at + 8, &second, sizeof second);
  }
#endif
#if defined(__GNUC__)
  using Bytes = std::uint8_t __attribute__((vector_size(8)));
  constexpr std::uint64_t high_bits = 0x8080808080808080U;
  for (std::uint64_t block = 0; at + sizeof block <= bytes.size(); at += sizeof block) {
    std::memcpy(&block, bytes.data() + at, sizeof block);
    Bytes narrow;
    std::memcpy(&narrow, &block, sizeof block);
    const CharacterBlock wide = __builtin_convertvector(narrow, CharacterBlock);
    std::memcpy(out + at, &wide, sizeof wide);
    if (const std::uint64_t high = block & high_bits; high != 0) {
      const bool is_little = std::endian::native == std::endian::little;
      const int zeros = is_little ? std::countr_zero(high) : std::countl_zero(high);
      return at + static_cast<std::size_t>(zeros) / 8;
    }
  }
#endif
  for (; at < bytes.size() && static_cast<std::uint8_t>(bytes[at]) < 0x80; ++at) {
    out[at] = static_cast<char16_t>(bytes[at]);
  }
  return at;
}

/// The reverse: copies the characters below 0x80 at the beginning as bytes.
inline std::size_t narrow_ascii(std::u16string_view text, char* out) {
  std::size_t at = 0;
#if defined(__SSE2__)
  for (; at + sizeof(__m128i) <= text.size(); at += sizeof(__m128i)) {
    __m128i first;
    __m128i second;
    std::memcpy(&first, text.data() + at, sizeof first);
    std::memcpy(&second, text.data() + at + 8, sizeof second);
    const __m128i high = _mm_and_si128(_mm_or_si128(first, second), _mm_set1_epi16(-0x80));
    const __m128i is_plain = _mm_cmpeq_epi16(high, _mm_setzero_si128());
    if (_mm_movemask_epi8(is_plain) != 0xFFFF) break;
    const __m128i packed = _mm_packus_epi16(first, second);
    std::memcpy(out + at, &packed, sizeof packed);
  }
#endif
#if defined(__GNUC__)
  using Bytes = std::uint8_t __attribute__((vector_size(8)));
  constexpr std::uint16_t end = 0x80;
  for (; at + sizeof(Bytes) <= text.size(); at += sizeof(Bytes)) {
    const CharacterBlock wide = load_block(text.data() + at);
    const Bytes narrow = __builtin_convertvector(wide, Bytes);
    std::memcpy(out + at, &narrow, sizeof narrow);
    if (const std::uint32_t bits = bits_of(wide >= end); bits != 0) {
      return at + static_cast<std::size_t>(std::countr_zero(bits)) / 2;
    }
  }
#endif
  for (; at < text.size() && text[at] < 0x80; ++at) out[at] = static_cast<char>(text[at]);
  return at;
}

/// `text` with each occurrence of `search`, from left to right, replaced by `replacement`.
/// An empty `search` occurs nowhere.
template <class Char>
std::basic_string<Char> replace_all(
    std::basic_string<Char> text, std::type_identity_t<std::basic_string_view<Char>> search,
    std::type_identity_t<std::basic_string_view<Char>> replacement) {
  std::size_t hit = search.empty() ? text.npos : text.find(search);
  if (hit == text.npos) return text;
  std::basic_string<Char> result;
  result.reserve(text.size());
  std::size_t kept = 0;
  for (; hit != text.npos; hit = text.find(search, kept)) {
    result.append(text, kept, hit - kept).append(replacement);
    kept = hit + search.size();
  }
  result.append(text, kept, text.npos);
  return result;
}

}  // namespace qel
