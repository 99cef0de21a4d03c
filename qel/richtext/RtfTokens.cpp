#include "qel/richtext/RtfTokens.h"

#include <algorithm>

#include "qel/base/Scan.h"

namespace qel::richtext {
std::size_t RtfScanner::end_of_plain_text() const {
  std::size_t at = at_;
#if defined(__SSE2__)
  const auto equals = [](__m128i packed, char c) {
    return _mm_cmpeq_epi8(packed, _mm_set1_epi8(c));
  };
  // Above ASCII, only where that may be meant are characters looked at one by one.
  const __m128i high = _mm_set1_epi8(last_plain_ == last ? '\\' : '\x7F');
  const bool is_found = find_packed(rtf_, at, [&](__m128i packed) {
    const __m128i control = _mm_cmpeq_epi8(_mm_min_epu8(packed, _mm_set1_epi8(u' ' - 1)), packed);
    const __m128i braces = _mm_or_si128(equals(packed, '{'), equals(packed, '}'));
    const __m128i others = _mm_or_si128(equals(packed, '\\'), _mm_cmpeq_epi8(packed, high));
    return _mm_or_si128(_mm_or_si128(control, braces), others);
  });
  if (is_found) return at;
#endif
  return find_first(rtf_, at, [end = static_cast<std::uint16_t>(last_plain_)](auto c) {
    return (c < std::uint16_t{u' '}) | (c == std::uint16_t{u'\\'}) | (c == std::uint16_t{u'{'}) |
           (c == std::uint16_t{u'}'}) | (c > end);
  });
}

std::u16string_view RtfScanner::plain_text() {
  const std::size_t start = at_;
  // A character that stands for itself although it might mean something is taken alone.
  at_ = std::max(end_of_plain_text(), at_ + 1);
  return rtf_.substr(start, at_ - start);
}

void RtfScanner::skip_plain_text() { at_ = find_any<u'\\', u'{', u'}'>(rtf_, at_); }

}  // namespace qel::richtext
