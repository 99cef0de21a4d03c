#include "qel/text/MarkupStrings.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "qel/model/StyleDecoder.h"
#include "qel/text/DecodedStrings.h"
#include "qel/text/MarkupCase.h"

namespace qel::markup {
namespace {

class WayDecoder : public StyleDecoder {
 public:
  explicit WayDecoder(Way way) { put_Lossless(way == Way::lossless); }
};

/// A position or a count that is no longer than any text.
std::ptrdiff_t limited(std::size_t count) {
  constexpr auto most = static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max() / 2);
  return static_cast<std::ptrdiff_t>(std::min(count, most));
}

}  // namespace

std::u16string plain_text(std::u16string_view markup, Way way) {
  WayDecoder decoder(way);
  decoder.put_QELText(markup);
  return decoder.get_Text();
}

std::size_t length(std::u16string_view markup, Way way) { return plain_text(markup, way).size(); }

std::size_t find(std::u16string_view markup, std::u16string_view search, Matching matching,
                 Way way) {
  return decoded::find(plain_text(markup, way), plain_text(search, way),
                       matching == Matching::ignoring_case);
}

std::size_t find_last(std::u16string_view markup, std::u16string_view search, Matching matching,
                      std::size_t within, Way way) {
  const std::u16string plain = plain_text(markup, way);
  return decoded::find_last(std::u16string_view(plain).substr(0, within), plain_text(search, way),
                            matching == Matching::ignoring_case);
}

std::u16string left(std::u16string_view markup, std::size_t count, Way way) {
  WayDecoder decoder(way);
  return decoded::left(decoder, markup, limited(count));
}

std::u16string right(std::u16string_view markup, std::size_t count, Way way) {
  WayDecoder decoder(way);
  return decoded::right(decoder, markup, limited(count));
}

std::u16string mid(std::u16string_view markup, std::size_t start, std::size_t count, Way way) {
  WayDecoder decoder(way);
  return decoded::mid(decoder, markup, limited(start), count == npos ? -1 : limited(count));
}

std::u16string replace(std::u16string_view markup, std::size_t start, std::size_t count,
                       std::u16string_view replacement, Way way) {
  WayDecoder decoder(way);
  return decoded::stuff(decoder, markup, limited(start), limited(count), replacement);
}

std::u16string replace(std::u16string_view markup, std::size_t start, std::size_t count,
                       std::u16string_view replacement, const cReplaceData& style, Way way) {
  WayDecoder decoder(way);
  decoded::replace(decoder, markup, limited(start), limited(count), replacement, style);
  return decoder.get_QELText();
}

std::vector<std::u16string> split(std::u16string_view markup, std::u16string_view delimiter,
                                  Way way) {
  WayDecoder decoder(way);
  return decoded::split(decoder, markup, delimiter);
}

std::u16string toggle(std::u16string_view markup, std::int32_t attribute, std::size_t start,
                      std::size_t count, Way way) {
  WayDecoder decoder(way);
  decoder.put_QELText(markup);
  const std::size_t whole = decoder.get_Text().size();
  const std::size_t begin = std::min(start, whole);
  const std::size_t toggled = std::min(count, whole - begin);
  if (toggled > 0) {
    decoded::toggle(decoder, attribute, limited(begin), limited(toggled),
                    TextCase().ignored_words());
  }
  return decoder.get_QELText();
}

std::u16string change_case(std::u16string_view markup, CaseChange change, std::size_t start,
                           std::size_t count, Way way, const TextCase& rules) {
  if (count == 0) return left(markup, npos, way);
  return qel::change_case(markup, change, limited(start), limited(count), rules.ignored_words(),
                          way);
}

}  // namespace qel::markup
