#pragma once

#include <string>
#include <string_view>

#include "qel/rtf/RTFParser.h"

/// The characters of a text as the parser's reading members write them. What becomes of breaks and
/// tabs is for the parser's switches to say.
namespace qel::rtf {

/// All but breaks and tabs stand for themselves; a break that is recognised becomes `line_break`.
void append_characters(std::u16string& out, std::u16string_view text, const RTFParser& parser,
                       std::u16string_view line_break);

/// As RTF, with a word for each character that has one.
void append_rtf_characters(std::u16string& out, std::u16string_view text, const RTFParser& parser);

}  // namespace qel::rtf
