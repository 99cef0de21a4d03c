// Markup through RTF and back, and the passes that do in one go what is a sequence of replacements.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "Input.h"
#include "qel/embedded/RichEdit.h"
#include "qel/qel.h"
#include "qel/rtf/CodeTable.h"
#include "qel/rtf/Preprocessing.h"

namespace {

using qel::fuzz::require;
using qel::rtf::is_code;

std::u16string replace_all(std::u16string text, std::u16string_view from, std::u16string_view to) {
  for (std::size_t hit = 0; (hit = text.find(from, hit)) != std::u16string::npos;
       hit += to.size()) {
    text.replace(hit, from.size(), to);
  }
  return text;
}

std::u16string body_row_by_row(std::u16string markup) {
  markup = replace_all(std::move(markup), u"\\", u"\\\\");
  for (const auto& row : qel::rtf::code_table) {
    markup = replace_all(std::move(markup), row.qel, row.rtf);
  }
  return markup;
}

std::u16string protect_codes(std::u16string rtf) {
  for (std::size_t hit = 0; (hit = rtf.find(u'/', hit)) != std::u16string::npos; ++hit) {
    if (is_code(rtf.substr(hit, 3))) rtf.replace(hit, 1, u"\\\\\\\\");
  }
  return rtf;
}

std::u16string escape_pairs(std::u16string rtf) {
  for (std::size_t hit = 0; (hit = rtf.find(u'\\', hit)) != std::u16string::npos; hit += 2) {
    if (rtf.substr(hit + 1, 1) != u"\\") continue;
    rtf.replace(hit, 2, u"\\'5c");
    hit += 2;
  }
  return rtf;
}

std::u16string preprocess(std::u16string rtf) {
  constexpr std::array<std::pair<std::u16string_view, std::u16string_view>, 19> steps = {{
      {u"\\endash ", u"\\'96"},    {u"\\endash", u"\\'96"},     {u"\\emdash ", u"\\'97"},
      {u"\\emdash", u"\\'97"},     {u"\\ldblquote ", u"\\'93"}, {u"\\ldblquote", u"\\'93"},
      {u"\\rdblquote ", u"\\'94"}, {u"\\rdblquote", u"\\'94"},  {u"\\lquote ", u"\\'91"},
      {u"\\lquote", u"\\'91"},     {u"\\rquote ", u"\\'92"},    {u"\\rquote", u"\\'92"},
      {u"\\bullet ", u"\\'95"},    {u"\\bullet", u"\\'95"},     {u"\\~", u"\\'A0"},
      {u"\\super ", u"\\up4 "},    {u"\\super", u"\\up4"},      {u"\\sub ", u"\\dn4 "},
      {u"\\sub", u"\\dn4"},
  }};
  for (const auto& [from, to] : steps) rtf = replace_all(std::move(rtf), from, to);
  return rtf;
}

void check_single_passes(const std::u16string& text) {
  require(qel::RTFParser().QELToRTFWithoutTables(text) == body_row_by_row(text),
          "the body equals the replacements row by row");
  require(qel::rtf::preprocess(text) == preprocess(text), "the words are replaced one by one");
  std::u16string storage;
  require(qel::rtf::prepare(text, false, storage) == preprocess(escape_pairs(text)),
          "preparing equals its steps");
  std::u16string protecting;
  require(
      qel::rtf::prepare(text, true, protecting) == preprocess(escape_pairs(protect_codes(text))),
      "preparing and protecting equals its steps");
}

/// Whether characters that stood apart in the RTF make a code once they are markup.
bool makes_codes(const std::u16string& rtf) {
  std::u16string storage;
  qel::embedded::RichEdit box;
  box.put_TextRTF(qel::rtf::prepare(rtf, true, storage));
  const std::u16string text = box.get_Text();
  for (std::size_t i = 0; (i = text.find(u'/', i)) != std::u16string::npos; ++i) {
    if (is_code(text.substr(i, 3)) || text.substr(i, 3) == u"/nl") return true;
  }
  return false;
}

/// Whether raised text follows lowered text: the code that ends the one comes behind the code that
/// begins the other and takes its offset away.
bool loses_offset(const std::u16string& markup) {
  return markup.find(u"/p1/s0") != std::u16string::npos;
}

void check_round_trip(const std::u16string& text) {
  const qel::Common::ConversionSlots slots;
  qel::QELIndexFonts fonts;
  const qel::QELIndexColors colors;
  qel::RTFParser parser;
  parser.put_ConvertNLToSpace(false);
  parser.put_RecognizeCRLF(true);
  parser.put_RecognizeTabs(true);
  const std::u16string rtf = parser.QELToRTF(text, fonts, colors);
  const std::u16string markup = parser.RTFToQEL(rtf, fonts, colors);
  if (makes_codes(rtf)) return;
  const std::u16string again =
      parser.RTFToQEL(parser.QELToRTF(markup, fonts, colors), fonts, colors);
  if (!loses_offset(markup)) {
    require(again == markup, "markup that came from RTF comes back from RTF");
  } else {
    require(!loses_offset(again), "an offset is lost the first time");
    check_round_trip(markup);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0x4000) return 0;  // the literal replacements take quadratic time
  const std::u16string text = qel::fuzz::Input(data, size).text();
  check_single_passes(text);
  check_round_trip(text);
  return 0;
}
