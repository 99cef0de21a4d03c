#pragma once

#include <string>
#include <string_view>

#include "qel/text/TextCase.h"
#include "qel/text/TitleRules.h"

/// What changes of case have in common, in markup, in RTF and in formatted text.
namespace qel::case_rules {

/// Whether the change concerns every letter, hidden text included; the others see a text as if it
/// had no hidden part.
constexpr bool changes_hidden_text(CaseChange change) {
  return change == CaseChange::lower || change == CaseChange::upper || change == CaseChange::swap;
}

/// Changes the span as `change` says; title case spares the `ignored` words.
void apply(std::u16string& text, title_rules::Span span, CaseChange change, const WordSet& ignored);

/// Makes slash codes something to look through (see `title_rules`), and the line code a line break.
void mask_codes(std::u16string& text);

/// `text` with what a rule changed of it: `before` and `after` are the text as the rule saw it.
std::u16string with_changes(std::u16string_view text, std::u16string_view before,
                            std::u16string_view after);

}  // namespace qel::case_rules
