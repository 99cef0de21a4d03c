#include "qel/text/MarkupStrings.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "qel/model/Division.h"
#include "qel/model/Encoder.h"
#include "qel/model/QELCode.h"

namespace qel::markup {
namespace {

std::int32_t size_of(std::u16string_view text) { return static_cast<std::int32_t>(text.size()); }

/// The position of the first segment that ends `end` characters into the text; 0 when none does.
std::int32_t segment_ending_at(const SegmentCollection& segments, std::int32_t end) {
  std::int32_t index = 0;
  std::int32_t total = 0;
  for (const auto& segment : segments) {
    ++index;
    total += segment->length();
    if (total == end) return index;
  }
  return 0;
}

/// The markup of the last `length` characters that the decoder holds, which it keeps.
std::u16string keep_last(StyleDecoder& decoder, std::int32_t length) {
  SegmentCollection& segments = *decoder.get_Segments();
  const std::int32_t cut = plain_length(decoder) - length;
  division::divide(segments, 0, cut);
  segments.remove_first(segment_ending_at(segments, cut));
  return decoder.get_QELText();
}

}  // namespace

std::int32_t plain_length(StyleDecoder& decoder) {
  std::int32_t length = 0;
  for (const auto& segment : *decoder.get_Segments()) length += segment->length();
  return length;
}

std::u16string left(StyleDecoder& decoder, std::u16string_view text, std::int32_t length) {
  length = std::max(length, 0);
  decoder.put_QELText(text);
  SegmentCollection& segments = *decoder.get_Segments();
  division::divide(segments, 0, length);
  const std::int32_t last = segment_ending_at(segments, length);
  if (last > 0) segments.keep_first(last);
  return decoder.get_QELText();
}

std::u16string right(StyleDecoder& decoder, std::u16string_view text, std::int32_t length) {
  decoder.put_QELText(text);
  return keep_last(decoder, std::max(length, 0));
}

Surroundings around(StyleDecoder& decoder, std::u16string_view text, std::int32_t start,
                    std::int32_t length) {
  Surroundings surroundings;
  surroundings.before = left(decoder, text, start - 1);
  decoder.put_QELText(text);
  const std::int32_t behind = plain_length(decoder) - (start + length - 1);
  surroundings.behind = keep_last(decoder, std::clamp(behind, 0, size_of(text)));
  return surroundings;
}

namespace {

/// Writes the pieces of a decoded text, one after the other.
class PieceWriter {
 public:
  /// Takes a part of the current piece over from `segment`.
  void add(Segment& segment, std::u16string_view part) { piece_.append(segment.with_text(part)); }

  std::u16string take() {
    std::u16string markup = encode(piece_, 0, {});
    piece_.Clear();
    return markup;
  }

 private:
  SegmentCollection piece_;
};

/// Appends the pieces of `markup` between the delimiters, all in one walk. The markup is what
/// encoding gave, so that encoding a part of it changes no style.
void append_pieces(StyleDecoder& decoder, const std::u16string& markup,
                   std::u16string_view delimiter, std::vector<std::u16string>& pieces) {
  decoder.put_QELText(markup);
  const std::u16string plain = decoder.get_Text();
  std::size_t begin = 0;
  std::size_t end = plain.find(delimiter);
  if (end == std::u16string::npos) {
    pieces.push_back(markup);
    return;
  }
  PieceWriter writer;
  std::size_t position = 0;
  for (const auto& segment : *decoder.get_Segments()) {
    // Escaped codes as they are in the plain text: a cut may go through the middle of one.
    const std::u16string text = restore_escaped_codes(segment->get_Text());
    const std::size_t segment_end = position + text.size();
    while (begin < segment_end) {
      const std::size_t from = std::max(begin, position);
      const std::size_t to = std::min(std::max(end, from), segment_end);
      const std::u16string_view part = std::u16string_view(text).substr(from - position, to - from);
      if (!part.empty()) writer.add(*segment, part);
      if (end > segment_end || end == std::u16string::npos) break;
      pieces.push_back(writer.take());
      begin = end + delimiter.size();
      end = plain.find(delimiter, begin);
    }
    position = segment_end;
  }
  const bool has_rest = begin < plain.size();
  if (has_rest) pieces.push_back(writer.take());
  decoder.put_QELText(has_rest ? std::u16string_view(pieces.back()) : std::u16string_view());
}

}  // namespace

std::vector<std::u16string> split(StyleDecoder& decoder, std::u16string_view text,
                                  std::u16string_view delimiter) {
  if (text.empty()) return {};
  decoder.put_QELText(text);
  const std::size_t hit =
      delimiter.empty() ? std::u16string::npos : decoder.get_Text().find(delimiter);
  if (hit == std::u16string::npos) return {std::u16string(text)};
  auto [first, rest] =
      around(decoder, text, static_cast<std::int32_t>(hit) + 1, size_of(delimiter));
  std::vector<std::u16string> pieces = {std::move(first)};
  if (rest.empty()) return pieces;
  append_pieces(decoder, rest, delimiter, pieces);
  return pieces;
}

}  // namespace qel::markup
