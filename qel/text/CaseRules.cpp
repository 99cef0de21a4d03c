#include "qel/text/CaseRules.h"

#include <cstddef>

#include "qel/base/CaseMapping.h"
#include "qel/model/QELCode.h"

namespace qel::case_rules {
namespace {

/// A small letter for a capital, and the other way round.
char32_t swap_case(char32_t character) {
  const char32_t lower = to_lower(character);
  if (lower == character) return to_upper(character);
  return to_upper(character) == character ? lower : character;
}

}  // namespace

void apply(std::u16string& text, title_rules::Span span, CaseChange change,
           const WordSet& ignored) {
  switch (change) {
    case CaseChange::lower:
      return title_rules::map_all(text, span, to_lower);
    case CaseChange::upper:
      return title_rules::map_all(text, span, to_upper);
    case CaseChange::swap:
      return title_rules::map_all(text, span, swap_case);
    case CaseChange::title:
      return title_rules::title_case(text, span, ignored);
    case CaseChange::initial:
      return title_rules::initial_cap(text, span);
    case CaseChange::first_to_lower:
      return title_rules::map_first(text, span, to_lower);
    case CaseChange::first_to_upper:
      return title_rules::map_first(text, span, to_upper);
  }
}

void mask_codes(std::u16string& text) {
  constexpr std::size_t length = 3;
  for (std::size_t at = text.find(u'/'); at < text.size(); at = text.find(u'/', at + 1)) {
    const std::u16string_view code = std::u16string_view(text).substr(at, length);
    if (!IsQELCode(code)) continue;
    const bool breaks = code == u"/nl";
    text.replace(at, length, length, title_rules::looked_through);
    if (breaks) text[at] = u'\n';
  }
}

std::u16string with_changes(std::u16string_view text, std::u16string_view before,
                            std::u16string_view after) {
  std::u16string changed(text);
  for (std::size_t i = 0; i < text.size(); ++i) {
    changed[i] = before[i] == after[i] ? changed[i] : after[i];
  }
  return changed;
}

}  // namespace qel::case_rules
