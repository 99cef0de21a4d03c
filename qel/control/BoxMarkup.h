#pragma once

#include <string>

#include "qel/platform/RichEdit.h"
#include "qel/rtf/RTFParser.h"

namespace qel {

/// RTF as a box of the window system gives it: with an end of the last paragraph. Where the parser
/// makes blanks of breaks it takes that one away again, and would take a blank of the text without
/// it. RTF that ends in a paragraph already stays as it is.
std::u16string with_closing_paragraph(std::u16string rtf, const RTFParser& parser);

/// The RTF of all that is in a box, for `RTFParser::RTFToQEL`.
std::u16string rtf_for_markup(const platform::RichEdit& box, const RTFParser& parser);

}  // namespace qel
