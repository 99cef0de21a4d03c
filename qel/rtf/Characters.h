#pragma once

#include <string>
#include <string_view>

#include "qel/rtf/RTFParser.h"

/// Writes the characters of a text as the parser's reading members do. The parser's switches decide
/// what becomes of breaks and tabs.
namespace qel::rtf {

/// As they are, except breaks and tabs; a break that is recognised becomes `line_break`.
void append_characters(std::u16string& out, std::u16string_view text, const RTFParser& parser,
                       std::u16string_view line_break);

/// As RTF, with a word for each character that has one.
void append_rtf_characters(std::u16string& out, std::u16string_view text, const RTFParser& parser);

}  // namespace qel::rtf
