#pragma once

#include <string>
#include <string_view>

#include "qel/text/TextCase.h"
#include "qel/text/TitleRules.h"

/// What changing the case of markup, RTF and formatted text has in common.
namespace qel::case_rules {

/// Whether the change affects every letter, hidden text included. The other changes treat a text as
/// if its hidden parts were not there.
constexpr bool changes_hidden_text(CaseChange change) {
  return change == CaseChange::lower || change == CaseChange::upper || change == CaseChange::swap;
}

/// Changes the span as `change` says; title case leaves the `ignored` words in lower case.
void apply(std::u16string& text, title_rules::Span span, CaseChange change, const WordSet& ignored);

/// Replaces slash codes by characters to look through (see `title_rules`), and line codes by a line
/// break.
void mask_codes(std::u16string& text);

/// `text` with the changes that a rule made: `before` and `after` are the text as the rule saw it.
std::u16string with_changes(std::u16string_view text, std::u16string_view before,
                            std::u16string_view after);

}  // namespace qel::case_rules
