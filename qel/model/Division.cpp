#include "qel/model/Division.h"

#include <cstddef>
#include <string_view>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/model/QELCode.h"
#include "qel/model/WordCollection.h"

namespace qel::division {
namespace {

/// A placeholder in the middle of which the text is about to be cut becomes the escaped code that
/// it stands for: its halves would not.
void restore_placeholder_around(Segment& segment, std::int32_t cut) {
  constexpr std::int32_t reach = 3;  // a placeholder has four characters
  for (std::int32_t begin = cut - 1; begin >= 0 && begin >= cut - reach; --begin) {
    const std::u16string_view text = segment.text();
    const auto at = static_cast<std::size_t>(begin);
    if (!begins_with_placeholder(text.substr(at))) continue;
    std::u16string restored(text.substr(0, at));
    restored.append(restore_escaped_codes(std::u16string(text.substr(at, 4))));
    segment.put_Text(restored.append(text.substr(at + 4)));
  }
}

/// Cuts the segment in which `boundary` falls, unless it is that segment's end.
void cut_at(SegmentCollection& segments, std::int32_t boundary, bool cut_at_beginning) {
  if (boundary < 0) return;
  std::int32_t total = 0;
  std::int32_t index = 0;
  for (const auto& segment : segments) {
    ++index;
    total += segment->length();
    if (total < boundary) continue;
    const std::int32_t kept = boundary - (total - segment->length());
    if (kept == segment->length() || (kept == 0 && !cut_at_beginning)) return;
    restore_placeholder_around(*segment, kept);
    segments.insert(segment->split_off(kept), index + 1);
    return;
  }
}

enum class Kind { blank, number, punctuation, letter };

bool is_digit(char16_t character) { return character >= u'0' && character <= u'9'; }

/// A point or comma between two digits belongs to the number, as in "1,000.5".
bool is_in_number(std::u16string_view text, std::size_t at) {
  if (is_digit(text[at])) return true;
  return (text[at] == u'.' || text[at] == u',') && at > 0 && at + 1 < text.size() &&
         is_digit(text[at - 1]) && is_digit(text[at + 1]);
}

Kind kind_at(std::u16string_view text, std::size_t at, Pieces pieces) {
  if (is_word_blank(text[at])) return Kind::blank;
  if (pieces >= Pieces::numbers && is_in_number(text, at)) return Kind::number;
  if (pieces >= Pieces::punctuation && is_punctuation(text[at])) return Kind::punctuation;
  return Kind::letter;
}

}  // namespace

void divide(SegmentCollection& segments, std::int32_t start, std::int32_t length) {
  cut_at(segments, start, false);
  cut_at(segments, start + length, true);
}

Span find_span(const SegmentCollection& segments, std::int32_t start, std::int32_t length) {
  Span span;
  std::int32_t total = 0;
  std::int32_t inside = 0;
  std::int32_t index = 0;
  for (const auto& segment : segments) {
    ++index;
    if (span.first == 0 && total == start) span = {index, index};
    total += segment->length();
    if (span.first == 0) continue;
    inside += segment->length();
    if (inside == length) {
      span.last = index;
      break;
    }
  }
  return span;
}

void divide_words(SegmentCollection& segments, Pieces pieces) {
  SegmentCollection divided;
  for (const auto& segment : segments) {
    divided.append(segment);
    const std::u16string_view text = segment->text();
    std::size_t begin = 0;
    for (std::size_t at = 1; at <= text.size(); ++at) {
      const bool goes_on =
          at < text.size() && kind_at(text, at, pieces) == kind_at(text, at - 1, pieces);
      if (goes_on) continue;
      if (begin == 0) {
        segment->keep_first(static_cast<std::int32_t>(at));
      } else {
        divided.append(segment->with_text(text.substr(begin, at - begin)));
      }
      begin = at;
    }
  }
  segments.swap(divided);
}

}  // namespace qel::division
