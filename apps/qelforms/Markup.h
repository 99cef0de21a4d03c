#pragma once

#include <string>
#include <string_view>

namespace qel::forms {

/// The text without codes, with a blank in place of each line break.
std::u16string visible_text(std::u16string_view markup);

/// The same text in markup that leaves nothing on at its end.
std::u16string with_closed_codes(std::u16string_view markup);

/// The markup with a line code in place of each line break: files and editors have line breaks,
/// markup does not.
std::u16string with_line_codes(std::u16string_view markup);

}  // namespace qel::forms
