#include "qel/text/MarkupStrings.h"

#include <algorithm>
#include <utility>

#include "qel/base/Search.h"
#include "qel/model/StyleDecoder.h"
#include "qel/text/DecodedStrings.h"
#include "qel/text/LineCodePositions.h"
#include "qel/text/MarkupCase.h"

namespace qel::markup {
namespace {

/// A span within a text.
class Span {
 public:
  Span(const LineCodePositions& text, std::size_t start, std::size_t count)
      : begin_(std::min(start, text.length())),
        end_(begin_ + std::min(count, text.length() - begin_)) {}

  std::size_t begin() const { return begin_; }
  std::size_t end() const { return end_; }
  std::ptrdiff_t start() const { return static_cast<std::ptrdiff_t>(begin_); }
  std::ptrdiff_t count() const { return static_cast<std::ptrdiff_t>(end_ - begin_); }

 private:
  std::size_t begin_;
  std::size_t end_;
};

/// `made` with the line codes if they are to be kept.
std::u16string with_line_codes(std::u16string made, const LineCodePositions& positions,
                               LineCodes line_codes) {
  if (line_codes == LineCodes::kept) return positions.put_into(made);
  return made;
}

}  // namespace

std::u16string plain_text(std::u16string_view markup) {
  StyleDecoder decoder;
  decoder.put_QELText(markup);
  return decoder.get_Text();
}

std::size_t length(std::u16string_view markup) { return LineCodePositions(markup).length(); }

std::size_t find(std::u16string_view markup, std::u16string_view search, Matching matching) {
  return decoded::find(plain_text(markup), plain_text(search), matching == Matching::ignoring_case);
}

std::size_t find_last(std::u16string_view markup, std::u16string_view search, Matching matching,
                      std::size_t within) {
  const std::u16string plain = plain_text(markup);
  return decoded::find_last(std::u16string_view(plain).substr(0, within), plain_text(search),
                            matching == Matching::ignoring_case);
}

std::u16string left(std::u16string_view markup, std::size_t count, LineCodes line_codes) {
  const LineCodePositions positions(markup);
  const Span span(positions, 0, count);
  StyleDecoder decoder;
  return with_line_codes(decoded::left(decoder, markup, span.count()),
                         positions.part(span.begin(), span.end()), line_codes);
}

std::u16string right(std::u16string_view markup, std::size_t count, LineCodes line_codes) {
  const LineCodePositions positions(markup);
  const Span span(positions, positions.length() - std::min(count, positions.length()), count);
  StyleDecoder decoder;
  return with_line_codes(decoded::right(decoder, markup, span.count()),
                         positions.part(span.begin(), span.end()), line_codes);
}

std::u16string mid(std::u16string_view markup, std::size_t start, std::size_t count,
                   LineCodes line_codes) {
  const LineCodePositions positions(markup);
  const Span span(positions, start, count);
  StyleDecoder decoder;
  return with_line_codes(decoded::mid(decoder, markup, span.start(), span.count()),
                         positions.part(span.begin(), span.end()), line_codes);
}

std::u16string replace(std::u16string_view markup, std::size_t start, std::size_t count,
                       std::u16string_view replacement, LineCodes line_codes) {
  const LineCodePositions positions(markup);
  const Span span(positions, start, count);
  StyleDecoder decoder;
  auto [made, behind] = decoded::around(decoder, markup, span.start(), span.count());
  made.append(replacement).append(behind);
  return with_line_codes(std::move(made),
                         positions.replaced(span.begin(), span.end(), length(replacement)),
                         line_codes);
}

std::u16string replace(std::u16string_view markup, std::size_t start, std::size_t count,
                       std::u16string_view replacement, const cReplaceData& style,
                       LineCodes line_codes) {
  const LineCodePositions positions(markup);
  const Span span(positions, start, count);
  StyleDecoder decoder;
  decoded::replace(decoder, markup, span.start(), span.count(), replacement, style);
  // The decoder has the line codes of the replacement, and of the rest none.
  const std::int32_t flags = line_codes == LineCodes::kept ? ofLineCodes : ofMarkup;
  return with_line_codes(decoder.GetQELText(flags, false, false),
                         positions.replaced(span.begin(), span.end(), length(replacement)),
                         line_codes);
}

std::vector<std::u16string> split(std::u16string_view markup, std::u16string_view delimiter,
                                  LineCodes line_codes) {
  StyleDecoder decoder;
  std::vector<std::u16string> parts = decoded::split(decoder, markup, delimiter);
  if (line_codes == LineCodes::dropped) return parts;
  const std::u16string plain = plain_text(markup);
  const bool is_cut = !delimiter.empty() && find_text(plain, delimiter) != npos;
  if (!is_cut) return parts;
  const LineCodePositions positions(markup);
  std::size_t begin = 0;
  for (std::u16string& part : parts) {
    const std::size_t end = std::min(find_text(plain, delimiter, begin), plain.size());
    part = positions.part(begin, end).put_into(part);
    begin = std::min(end + delimiter.size(), plain.size());
  }
  return parts;
}

std::u16string toggle(std::u16string_view markup, std::int32_t attribute, std::size_t start,
                      std::size_t count, LineCodes line_codes) {
  const LineCodePositions positions(markup);
  const Span span(positions, start, count);
  StyleDecoder decoder;
  decoder.put_QELText(markup);
  if (span.count() > 0) {
    decoded::toggle(decoder, attribute, span.start(), span.count(), TextCase().ignored_words());
  }
  return with_line_codes(decoder.get_QELText(), positions, line_codes);
}

std::u16string change_case(std::u16string_view markup, CaseChange change, std::size_t start,
                           std::size_t count, LineCodes line_codes, const TextCase& rules) {
  const LineCodePositions positions(markup);
  const Span span(positions, start, count);
  if (span.count() == 0) return left(markup, npos, line_codes);
  return with_line_codes(
      qel::change_case(markup, change, span.start(), span.count(), rules.ignored_words()),
      positions, line_codes);
}

}  // namespace qel::markup
