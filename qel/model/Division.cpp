#include "qel/model/Division.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/model/QELCode.h"
#include "qel/model/WordCollection.h"

namespace qel::division {
namespace {

/// Turns a placeholder that is about to be cut in two back into its escaped code: its halves could
/// not be turned back.
void restore_placeholder_around(Segment& segment, std::size_t cut) {
  constexpr std::size_t reach = 3;  // a placeholder has four characters
  for (std::size_t before = 1; before <= std::min(cut, reach); ++before) {
    const std::u16string_view text = segment.text();
    const std::size_t at = cut - before;
    if (!begins_with_placeholder(text.substr(at))) continue;
    std::u16string restored(text.substr(0, at));
    restored.append(restore_escaped_codes(std::u16string(text.substr(at, 4))));
    segment.put_characters(restored.append(text.substr(at + 4)));
  }
}

/// Cuts the segment in which `boundary` falls, unless it is that segment's end.
void cut_at(SegmentCollection& segments, std::ptrdiff_t boundary, bool cut_at_beginning) {
  if (boundary < 0) return;
  auto kept = static_cast<std::size_t>(boundary);
  std::int32_t index = 0;
  for (const auto& segment : segments) {
    ++index;
    const std::size_t size = segment->text().size();
    if (kept > size) {
      kept -= size;
      continue;
    }
    if (kept == size || (kept == 0 && !cut_at_beginning)) return;
    if (segments.way() == Way::stated) restore_placeholder_around(*segment, kept);
    segments.insert(segment->split_off(kept), index + 1);
    return;
  }
}

enum class Kind { blank, number, punctuation, letter, code };

bool is_digit(char16_t character) { return character >= u'0' && character <= u'9'; }

/// A point or comma between two digits belongs to the number, as in "1,000.5".
bool is_in_number(std::u16string_view text, std::size_t at) {
  if (is_digit(text[at])) return true;
  return (text[at] == u'.' || text[at] == u',') && at > 0 && at + 1 < text.size() &&
         is_digit(text[at - 1]) && is_digit(text[at + 1]);
}

Kind kind_at(std::u16string_view text, std::size_t at, Pieces pieces, Way way) {
  if (is_word_blank(text[at])) return Kind::blank;
  if (pieces == Pieces::words) return Kind::letter;
  if (length_of_code_as_text(text.substr(at), way) > 0) return Kind::code;
  if (is_in_number(text, at)) return Kind::number;
  if (pieces >= Pieces::punctuation && is_punctuation(text[at])) return Kind::punctuation;
  return Kind::letter;
}

std::size_t end_of_piece(std::u16string_view text, std::size_t begin, Pieces pieces, Way way) {
  const Kind kind = kind_at(text, begin, pieces, way);
  if (kind == Kind::code) return begin + length_of_code_as_text(text.substr(begin), way);
  std::size_t end = begin + 1;
  while (end < text.size() && kind_at(text, end, pieces, way) == kind) ++end;
  return end;
}

}  // namespace

void divide(SegmentCollection& segments, std::ptrdiff_t start, std::ptrdiff_t length) {
  cut_at(segments, start, false);
  cut_at(segments, start + length, true);
}

Span find_span(const SegmentCollection& segments, std::ptrdiff_t start, std::ptrdiff_t length) {
  Span span;
  std::ptrdiff_t total = 0;
  std::ptrdiff_t inside = 0;
  std::int32_t index = 0;
  for (const auto& segment : segments) {
    ++index;
    if (span.first == 0 && total == start) span = {index, index};
    total += std::ssize(segment->text());
    if (span.first == 0) continue;
    inside += std::ssize(segment->text());
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
    for (std::size_t begin = 0; begin < text.size();) {
      const std::size_t end = end_of_piece(text, begin, pieces, segments.way());
      if (begin == 0) {
        segment->keep_first(end);
      } else {
        divided.append(segment->with_text(text.substr(begin, end - begin)));
      }
      begin = end;
    }
  }
  segments.swap_segments(divided);
}

}  // namespace qel::division
