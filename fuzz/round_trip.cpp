// Markup through RTF and back, and the passes that do in one go what is a sequence of replacements.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "Input.h"
#include "qel/base/Scan.h"
#include "qel/box/Box.h"
#include "qel/qel.h"
#include "qel/rtf/CodeTable.h"
#include "qel/rtf/Preprocessing.h"

namespace {

using qel::replace_all;
using qel::fuzz::require;
using qel::rtf::is_code;

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

/// What the typographic words become, in the order of the words below.
using Characters = std::array<std::u16string_view, 8>;
constexpr Characters as_escapes = {u"\\'96", u"\\'97", u"\\'93", u"\\'94",
                                   u"\\'91", u"\\'92", u"\\'95", u"\\'A0"};
constexpr Characters as_such = {u"\u2013", u"\u2014", u"\u201C", u"\u201D",
                                u"\u2018", u"\u2019", u"\u2022", u"\u00A0"};

std::u16string preprocess(std::u16string rtf, const Characters& characters) {
  constexpr std::array<std::u16string_view, 7> words = {u"\\endash",    u"\\emdash", u"\\ldblquote",
                                                        u"\\rdblquote", u"\\lquote", u"\\rquote",
                                                        u"\\bullet"};
  for (std::size_t i = 0; i < words.size(); ++i) {
    rtf = replace_all(std::move(rtf), std::u16string(words[i]) + u" ", characters[i]);
    rtf = replace_all(std::move(rtf), words[i], characters[i]);
  }
  rtf = replace_all(std::move(rtf), u"\\~", characters.back());
  rtf = replace_all(std::move(rtf), u"\\super", u"\\up4");
  return replace_all(std::move(rtf), u"\\sub", u"\\dn4");
}

void check_single_passes(const std::u16string& text) {
  require(qel::RTFParser().QELToRTFWithoutTables(text) == body_row_by_row(text),
          "the body equals the replacements row by row");
  require(qel::rtf::preprocess(text) == preprocess(text, as_escapes),
          "the words are replaced one by one");
  if (text.find(u"\\bin") != std::u16string::npos) return;  // binary data is left alone
  const std::u16string rtf = u"{\\rtf1 " + text;
  std::u16string storage;
  require(qel::rtf::prepare(rtf, false, storage) == preprocess(escape_pairs(rtf), as_such),
          "preparing equals its steps");
  std::u16string protecting;
  require(qel::rtf::prepare(rtf, true, protecting) ==
              preprocess(escape_pairs(protect_codes(rtf)), as_such),
          "preparing and protecting equals its steps");
}

/// Whether characters that stood apart in the RTF make a code once they are markup.
bool makes_codes(const std::u16string& rtf) {
  std::u16string storage;
  qel::box::Box box;
  box.put_TextRTF(qel::rtf::prepare(rtf, true, storage));
  const std::u16string text = box.get_Text();
  for (std::size_t i = 0; (i = text.find(u'/', i)) != std::u16string::npos; ++i) {
    if (is_code(text.substr(i, 3)) || text.substr(i, 3) == u"/nl") return true;
  }
  return false;
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
  require(again == markup, "markup that came from RTF comes back from RTF");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > 0x4000) return 0;  // the literal replacements take quadratic time
  const std::u16string text = qel::fuzz::Input(data, size).text();
  check_single_passes(text);
  check_round_trip(text);
  return 0;
}
