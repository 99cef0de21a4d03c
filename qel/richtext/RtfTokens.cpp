#include "qel/richtext/RtfTokens.h"

#include <algorithm>
#include <limits>

#include "qel/base/Hex.h"
#include "qel/base/Scan.h"

namespace qel::richtext {
namespace {

bool is_letter(char16_t c) { return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z'); }
bool is_digit(char16_t c) { return c >= u'0' && c <= u'9'; }

}  // namespace

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

ControlWord RtfScanner::control_word() {
  ControlWord word;
  bool is_known = true;
  for (; !at_end() && is_letter(peek()); ++at_) {
    is_known = is_known && peek() >= u'a';
    word.key = word.key << 5U | static_cast<WordKey>(peek() - u'a' + 1);
  }
  if (!is_known) word.key = no_word;
  word.parameter = parameter();
  if (!at_end() && peek() == u' ') ++at_;
  return word;
}

Parameter RtfScanner::parameter() {
  Parameter parameter;
  std::size_t digit = at_;
  const bool negative = digit < rtf_.size() && rtf_[digit] == u'-';
  if (negative) ++digit;
  if (digit >= rtf_.size() || !is_digit(rtf_[digit])) return parameter;
  constexpr std::int64_t limit = std::numeric_limits<std::int32_t>::max();
  std::int64_t value = 0;
  for (; digit < rtf_.size() && is_digit(rtf_[digit]); ++digit) {
    if (value <= limit) value = value * 10 + (rtf_[digit] - u'0');
  }
  if (value > limit) value = limit;
  at_ = digit;
  parameter.given = true;
  parameter.value = static_cast<std::int32_t>(negative ? -value : value);
  return parameter;
}

int RtfScanner::hex_byte() {
  if (at_ + 2 > rtf_.size()) return -1;
  const int high = hex_value(rtf_[at_]);
  const int low = hex_value(rtf_[at_ + 1]);
  if (high < 0 || low < 0) return -1;
  at_ += 2;
  return high * 16 + low;
}

}  // namespace qel::richtext
