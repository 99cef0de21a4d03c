#include "qel/richtext/RtfTokens.h"

#include <algorithm>

#include "qel/base/Scan.h"

namespace qel::richtext {
namespace {

#if defined(__SSE2__)
/// Where packed characters are ASCII that may mean something to RTF.
__m128i are_special(__m128i packed) {
  const __m128i controls = _mm_cmpeq_epi8(_mm_min_epu8(packed, _mm_set1_epi8(u' ' - 1)), packed);
  return _mm_or_si128(controls, AreAny<u'\\', u'{', u'}'>()(packed));
}
#endif

}  // namespace

template <>
std::size_t RtfScanner<char>::end_of_plain_text() const {
  const auto is_special = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < ' ' || byte >= 0x80 || c == '\\' || c == '{' || c == '}';
  };
#if defined(__SSE2__)
  return find_byte(rtf_, at_, is_special,
                   [](__m128i bytes) { return _mm_or_si128(bytes, are_special(bytes)); });
#else
  std::size_t at = at_;
  while (at < rtf_.size() && !is_special(rtf_[at])) ++at;
  return at;
#endif
}

template <>
std::size_t RtfScanner<char16_t>::end_of_plain_text() const {
  std::size_t at = at_;
#if defined(__SSE2__)
  // Above ASCII, only where that may be meant are characters looked at one by one.
  const __m128i high = _mm_set1_epi8(last_plain_ == last ? '\\' : '\x7F');
  const bool is_found = find_packed(rtf_, at, [&](__m128i packed) {
    return _mm_or_si128(are_special(packed), _mm_cmpeq_epi8(packed, high));
  });
  if (is_found) return at;
#endif
  return find_first(rtf_, at, [end = static_cast<std::uint16_t>(last_plain_)](auto c) {
    return (c < std::uint16_t{u' '}) | (c == std::uint16_t{u'\\'}) | (c == std::uint16_t{u'{'}) |
           (c == std::uint16_t{u'}'}) | (c > end);
  });
}

template <class Char>
auto RtfScanner<Char>::plain_text() -> View {
  const std::size_t start = at_;
  // A character that stands for itself although it might mean something is taken alone.
  at_ = std::max(end_of_plain_text(), at_ + 1);
  return rtf_.substr(start, at_ - start);
}

template <class Char>
void RtfScanner<Char>::skip_plain_text() {
  at_ = find_any<u'\\', u'{', u'}'>(rtf_, at_);
}

template class RtfScanner<char>;
template class RtfScanner<char16_t>;

}  // namespace qel::richtext
