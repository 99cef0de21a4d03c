#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "qel/model/StyleCodes.h"

namespace qel::rtf {

/// A row of the table by which markup becomes RTF.
struct CodeRow {
  std::u16string_view qel;
  std::u16string_view rtf;
};

/// The rows in the order in which their replacements apply. Underline is written as word underline.
/// Raised and lowered text ("/r1", "/l1") is written like superscript and subscript. Every RTF text
/// except those of the braces ends with the blank that ends its control word.
inline constexpr std::array<CodeRow, 40> code_table = {{
    {u"{", u"\\{"},      {u"}", u"\\}"},          {u"/b1", u"\\b1 "},      {u"/b0", u"\\b0 "},
    {u"/i1", u"\\i1 "},  {u"/i0", u"\\i0 "},      {u"/u1", u"\\ulw1 "},    {u"/u0", u"\\ulw0 "},
    {u"/p1", u"\\up4 "}, {u"/p0", u"\\up0 "},     {u"/s1", u"\\dn4 "},     {u"/s0", u"\\dn0 "},
    {u"\t", u"\\tab "},  {u"/f1", u"\\f1 "},      {u"/f2", u"\\f2 "},      {u"/f3", u"\\f3 "},
    {u"/f4", u"\\f4 "},  {u"/f5", u"\\f5 "},      {u"/f6", u"\\f6 "},      {u"/f7", u"\\f7 "},
    {u"/f8", u"\\f8 "},  {u"/f9", u"\\f9 "},      {u"/f0", u"\\f0 "},      {u"/y1", u"\\cf1 "},
    {u"/y2", u"\\cf2 "}, {u"/y3", u"\\cf3 "},     {u"/y4", u"\\cf4 "},     {u"/y5", u"\\cf5 "},
    {u"/y6", u"\\cf6 "}, {u"/y7", u"\\cf7 "},     {u"/y8", u"\\cf8 "},     {u"/y9", u"\\cf9 "},
    {u"/y0", u"\\cf0 "}, {u"/r1", u"\\up4 "},     {u"/r0", u"\\up0 "},     {u"/l1", u"\\dn4 "},
    {u"/l0", u"\\dn0 "}, {u"/k1", u"\\strike1 "}, {u"/k0", u"\\strike0 "}, {u"/nl", u"\\par "},
}};

/// Whether `code` is "/" and a letter of "biupsckrl" with 0 or 1, or of "fy" with a digit: exactly
/// three characters. This is the converter's own idea of a code; the text model's differs.
bool is_code(std::u16string_view code);

/// Whether these are the two characters after the slash of such a code, however that is written.
bool is_code_tail(char16_t letter, char16_t digit);

/// Appends the markup as the body of an RTF document: backslashes doubled, then each row replaced.
/// A single pass, with the result of making the replacements one after the other. Returns whether
/// the markup has two backslashes in a row: without them it has no literal codes.
bool append_body(std::u16string& out, std::u16string_view markup);

/// The state as RTF can show it: text that is raised and lowered at once is raised.
constexpr style_codes::CodeState shown_state(style_codes::CodeState state) {
  if ((state.attributes & style_codes::superscript_bit) != 0) {
    state.attributes &= static_cast<std::uint8_t>(~unsigned{style_codes::subscript_bit});
  }
  return state;
}

/// The RTF of the code with this letter and this digit, that of small capitals too; empty where
/// there is none.
constexpr std::u16string_view rtf_word(char16_t letter, char16_t digit) {
  if (letter == u'c') return digit == u'1' ? u"\\scaps1 " : u"\\scaps0 ";
  for (const CodeRow& row : code_table) {
    if (row.qel.size() == 3 && row.qel[1] == letter && row.qel[2] == digit) return row.rtf;
  }
  return {};
}

/// Appends text without breaks in which nothing is a code. What is not ASCII is escaped in bytes
/// (see `richtext::append_rtf_bytes`); UTF-8 has to be valid.
void append_text(std::u16string& out, std::u16string_view text);
void append_text(std::string& out, std::string_view text);

/// From position `from` on, turns the four backslashes that stand for the slash of a code back into
/// the slash: such a code is text.
void restore_literal_codes(std::u16string& text, std::size_t from);

}  // namespace qel::rtf
