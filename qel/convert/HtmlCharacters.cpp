#include "qel/convert/HtmlCharacters.h"

#include <bit>
#include <cstdint>

#include "qel/base/Scan.h"

namespace qel::convert {
namespace {

/// Whether a character, or which of a block of characters, cannot be copied as it is: one that is
/// escaped or forbidden, or half of a surrogate pair.
template <class Character>
auto is_special(Character c) {
  static_assert((u'"' ^ u'&') == 4 && (u'<' ^ u'>') == 2);
  return ((c & std::uint16_t{0xFF60}) == std::uint16_t{0}) |  // controls, also from 0x80 on
         (c == std::uint16_t{0x7F}) | ((c & std::uint16_t{0xFFFB}) == std::uint16_t{u'"'}) |
         ((c & std::uint16_t{0xFFFD}) == std::uint16_t{u'<'}) |
         ((c & std::uint16_t{0xF800}) == std::uint16_t{0xD800});
}

#if defined(__GNUC__)
constexpr std::size_t block_size = 8;

/// Which of eight characters cannot be copied, or are blanks that have another behind them; two
/// bits for each.
std::uint32_t stops_in_block(const char16_t* characters, bool is_blank_behind) {
  const CharacterBlock block = load_block(characters);
  const std::uint32_t blanks = bits_of(block == std::uint16_t{u' '});
  const std::uint32_t blanks_behind = blanks >> 2U | (is_blank_behind ? 0xC000U : 0U);
  return bits_of(is_special(block)) | (blanks & blanks_behind);
}
#endif

#if defined(__SSE2__)
__m128i are_equal(__m128i packed, char c) { return _mm_cmpeq_epi8(packed, _mm_set1_epi8(c)); }
/// Where blanks are among packed characters.
__m128i are_blanks(__m128i packed) { return are_equal(packed, ' '); }

/// Where characters are that have an entity, and the last control of ASCII.
__m128i are_escaped(__m128i packed) {
  const __m128i quotes = are_equal(_mm_and_si128(packed, _mm_set1_epi8('\xFB')), '"');
  const __m128i brackets = are_equal(_mm_and_si128(packed, _mm_set1_epi8('\xFD')), '<');
  return _mm_or_si128(_mm_or_si128(quotes, brackets), are_equal(packed, '\x7F'));
}

/// Whether sixteen characters are ASCII and can be copied.
bool is_copied_ascii(const char16_t* characters, bool is_blank_behind) {
  const __m128i packed = load_packed(characters);
  // As signed numbers, what is not ASCII is below the controls.
  const __m128i others = _mm_cmplt_epi8(packed, _mm_set1_epi8(' '));
  const std::uint32_t blanks = bits_of_packed(are_blanks(packed));
  const std::uint32_t blanks_behind = blanks >> 1U | (is_blank_behind ? 0x8000U : 0U);
  return bits_of_packed(_mm_or_si128(are_escaped(packed), others)) == 0 &&
         (blanks & blanks_behind) == 0;
}

/// Where bytes are that cannot be copied.
__m128i are_stops(__m128i bytes) {
  const __m128i controls = _mm_cmpeq_epi8(_mm_min_epu8(bytes, _mm_set1_epi8('\x1F')), bytes);
  // Behind this byte there may be a control character.
  const __m128i others = _mm_or_si128(controls, are_equal(bytes, '\xC2'));
  return _mm_or_si128(are_escaped(bytes), others);
}
#endif

bool is_stop(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte < ' ' || byte == 0x7F || byte == 0xC2 || c == '"' || c == '&' || c == '<' || c == '>';
}

}  // namespace

std::size_t end_of_copy(std::u16string_view text, std::size_t at) {
#if defined(__GNUC__)
  const auto position = [](std::size_t begin, std::uint32_t bits) {
    return begin + static_cast<std::size_t>(std::countr_zero(bits)) / 2;
  };
  for (; at + block_size < text.size(); at += block_size) {
#if defined(__SSE2__)
    while (at + packed_size < text.size() &&
           is_copied_ascii(text.data() + at, text[at + packed_size] == u' ')) {
      at += packed_size;
    }
    if (at + block_size >= text.size()) break;
#endif
    const std::uint32_t bits = stops_in_block(text.data() + at, text[at + block_size] == u' ');
    if (bits != 0) return position(at, bits);
  }
  if (text.size() >= block_size) {
    // The last block overlaps what has been looked at.
    const std::size_t begin = text.size() - block_size;
    const std::uint32_t bits = stops_in_block(text.data() + begin, false) >> (2 * (at - begin));
    return bits == 0 ? text.size() : position(at, bits);
  }
#endif
  for (; at < text.size(); ++at) {
    const auto c = static_cast<std::uint16_t>(text[at]);
    if (is_special(c)) break;
    if (c == u' ' && at + 1 < text.size() && text[at + 1] == u' ') break;
  }
  return at;
}

std::size_t end_of_copy(std::string_view text, std::size_t at) {
#if defined(__SSE2__)
  for (; at + packed_size < text.size(); at += packed_size) {
    const __m128i block = load_packed(text.data() + at);
    const __m128i behind = load_packed(text.data() + at + 1);
    const __m128i blanks = _mm_and_si128(are_blanks(block), are_blanks(behind));
    const std::uint32_t bits = bits_of_packed(_mm_or_si128(are_stops(block), blanks));
    if (bits != 0) return at + static_cast<std::size_t>(std::countr_zero(bits));
  }
  if (text.size() >= packed_size) {
    // The last block overlaps what has been looked at.
    const std::size_t begin = text.size() - packed_size;
    const __m128i block = load_packed(text.data() + begin);
    const std::uint32_t blanks = bits_of_packed(are_blanks(block));
    const std::uint32_t bits =
        (bits_of_packed(are_stops(block)) | (blanks & blanks >> 1U)) >> (at - begin);
    return bits == 0 ? text.size() : at + static_cast<std::size_t>(std::countr_zero(bits));
  }
#endif
  for (; at < text.size() && !is_stop(text[at]); ++at) {
    if (text[at] == ' ' && at + 1 < text.size() && text[at + 1] == ' ') break;
  }
  return at;
}

}  // namespace qel::convert
