#pragma once

#include <string>
#include <string_view>

/// What changes of case have in common, in markup, in RTF and in formatted text.
namespace qel::case_rules {

/// A capital for a small letter, and the other way round.
char32_t swap_case(char32_t character);

/// Makes slash codes something to look through (see `title_rules`), and the line code a line break.
void mask_codes(std::u16string& text);

/// `text` with what a rule changed of it: `before` and `after` are the text as the rule saw it.
std::u16string with_changes(std::u16string_view text, std::u16string_view before,
                            std::u16string_view after);

}  // namespace qel::case_rules
