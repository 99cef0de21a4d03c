#include "StatedTexts.h"

#include "MarkupReading.h"
#include "qel/base/CaseMapping.h"
#include "qel/base/Search.h"
#include "qel/base/Utf8.h"
#include "qel/richtext/CodePage.h"
#include "qel/text/MarkupStrings.h"

namespace qel::capi::stated {
namespace {

std::u16string decoded(std::string_view bytes) {
  return from_utf8(bytes, richtext::decode_western);
}

/// A span in code units.
struct Units {
  std::size_t begin;
  std::size_t count;
};

Units units_of(std::u16string_view markup, Span span) {
  const std::u16string text = markup::plain_text(markup);
  const std::size_t begin = unit_position(text, span.begin);
  if (span.end == SIZE_MAX) return {begin, markup::npos};
  return {begin, unit_position(std::u16string_view(text).substr(begin), span.end - span.begin)};
}

}  // namespace

std::string plain(std::string_view markup) { return to_utf8(markup::plain_text(decoded(markup))); }

std::size_t length(std::string_view markup) {
  return count_characters(markup::plain_text(decoded(markup)));
}

std::size_t find(std::string_view markup, std::string_view search, std::size_t start,
                 bool ignores_case) {
  std::u16string text = markup::plain_text(decoded(markup));
  std::u16string searched = markup::plain_text(decoded(search));
  if (text.empty() || start > count_characters(text)) return SIZE_MAX;
  if (ignores_case) {
    text = to_lower(to_upper(text));
    searched = to_lower(to_upper(searched));
  }
  const std::size_t found = find_text(text, searched, unit_position(text, start));
  if (found == std::u16string::npos) return SIZE_MAX;
  return count_characters(std::u16string_view(text).substr(0, found));
}

std::string mid(std::string_view markup, Span span) {
  const std::u16string text = decoded(markup);
  const Units units = units_of(text, span);
  return to_utf8(markup::mid(text, units.begin, units.count));
}

std::string stuff(std::string_view markup, Span span, std::string_view replacement) {
  const std::u16string text = decoded(markup);
  const Units units = units_of(text, span);
  return to_utf8(markup::replace(text, units.begin, units.count, decoded(replacement)));
}

std::string toggle(std::string_view markup, std::int32_t attribute, Span span) {
  const std::u16string text = decoded(markup);
  const Units units = units_of(text, span);
  return to_utf8(markup::toggle(text, attribute, units.begin, units.count));
}

std::string change_case(std::string_view markup, CaseChange change, Span span) {
  const std::u16string text = decoded(markup);
  const Units units = units_of(text, span);
  return to_utf8(markup::change_case(text, change, units.begin, units.count));
}

}  // namespace qel::capi::stated
