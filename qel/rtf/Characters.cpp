#include "qel/rtf/Characters.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "qel/base/Scan.h"

namespace qel::rtf {
namespace {

void append_break(std::u16string& out, const RTFParser& parser, std::u16string_view recognized) {
  if (parser.get_ConvertNLToSpace() && !parser.get_Lossless()) {
    out.push_back(u' ');
  } else if (parser.get_RecognizeCRLF() || parser.get_Lossless()) {
    out.append(recognized);
  }
}

void append_tab(std::u16string& out, const RTFParser& parser, std::u16string_view recognized) {
  if (parser.get_RecognizeTabs() || parser.get_Lossless()) {
    out.append(recognized);
  } else if (parser.get_ConvertTabsToSpace()) {
    out.push_back(u' ');
  }
}

struct RtfSpelling {
  char16_t character;
  std::u16string_view rtf;
};

/// The characters with a spelling of their own in RTF, except breaks and tabs.
constexpr std::array<RtfSpelling, 11> rtf_spellings = {{{u'\\', u"\\\\"},
                                                        {u'{', u"\\{"},
                                                        {u'}', u"\\}"},
                                                        {u'\u00A0', u"\\~"},
                                                        {u'\u2013', u"\\endash "},
                                                        {u'\u2014', u"\\emdash "},
                                                        {u'\u2018', u"\\lquote "},
                                                        {u'\u2019', u"\\rquote "},
                                                        {u'\u201C', u"\\ldblquote "},
                                                        {u'\u201D', u"\\rdblquote "},
                                                        {u'\u2022', u"\\bullet "}}};

void append_rtf_character(std::u16string& out, char16_t character, const RTFParser& parser) {
  if (character == u'\t') return append_tab(out, parser, u"\\tab ");
  if (character == u'\n') return append_break(out, parser, u"\\par ");
  if (character == u'\r') return;
  const auto* const spelling =
      std::find_if(rtf_spellings.begin(), rtf_spellings.end(),
                   [&](const RtfSpelling& row) { return row.character == character; });
  if (spelling == rtf_spellings.end()) {
    out.push_back(character);
  } else {
    out.append(spelling->rtf);
  }
}

}  // namespace

void append_characters(std::u16string& out, std::u16string_view text, const RTFParser& parser,
                       std::u16string_view line_break) {
  const auto is_control = [](auto c) { return c < std::uint16_t{u' '}; };
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t end = find_first(text, at, is_control);
    out.append(text, at, end - at);
    if (end == text.size()) return;
    if (text[end] == u'\t') {
      append_tab(out, parser, u"\t");
    } else if (text[end] == u'\n') {
      append_break(out, parser, line_break);
    } else if (text[end] != u'\r') {
      out.push_back(text[end]);
    }
    at = end;
  }
}

void append_rtf_characters(std::u16string& out, std::u16string_view text, const RTFParser& parser) {
  const auto may_be_special = [](auto c) {
    return (c < std::uint16_t{u' '}) | (c == std::uint16_t{u'\\'}) | (c == std::uint16_t{u'{'}) |
           (c >= std::uint16_t{u'}'});
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    const std::size_t end = find_first(text, at, may_be_special);
    out.append(text, at, end - at);
    if (end < text.size()) append_rtf_character(out, text[end], parser);
    at = end;
  }
}

}  // namespace qel::rtf
