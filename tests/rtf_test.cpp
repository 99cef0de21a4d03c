#include <gtest/gtest.h>

#include <vector>

#include "qel/base/Error.h"
#include "qel/base/Scan.h"
#include "qel/platform/Common.h"
#include "qel/rtf/CodeTable.h"
#include "qel/rtf/Preprocessing.h"
#include "qel/rtf/RTFParser.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel {
namespace {

/// Everything a conversion needs. Breaks and tabs are kept unless a test says otherwise.
class RTFConversion : public testing::Test {
 protected:
  RTFConversion() { keep_breaks_and_tabs(); }

  void keep_breaks_and_tabs() {
    parser_.put_ConvertNLToSpace(false);
    parser_.put_ConvertTabsToSpace(false);
    parser_.put_RecognizeCRLF(true);
    parser_.put_RecognizeTabs(true);
  }

  std::u16string to_rtf(std::u16string_view markup) {
    return parser_.QELToRTF(markup, fonts_, colors_);
  }
  std::u16string to_markup(std::u16string_view rtf) {
    return parser_.RTFToQEL(rtf, fonts_, colors_);
  }
  std::u16string simple(std::u16string_view rtf) { return parser_.SimpleRTF(rtf, fonts_, colors_); }
  /// RTF with three fonts and four colours of the tables, and one of neither.
  std::u16string document(std::u16string_view body) {
    return u"{\\rtf1{\\fonttbl{\\f0 Arial;}{\\f1 Symbol;}{\\f2 Courier New;}{\\f3 Times New Roman;}"
           u"{\\f5 Verdana;}}{\\colortbl;\\green192;\\blue255;\\red192\\green192;\\red9;}\\deff0 " +
           std::u16string(body) + u"}";
  }

  Common::ConversionSlots slots_;
  RTFParser parser_;
  QELIndexFonts fonts_;
  QELIndexColors colors_;
};

constexpr std::u16string_view header =
    u"{\\rtf1\\ansi\\ansicpg1252\\deff0 {\\fonttbl{\\f0 Arial;}{\\f1\\ftech Symbol;}{\\f2 Courier "
    u"New;}"
    u"{\\f3 Times New Roman;}{\\f4 <none>;}{\\f5 <none>;}{\\f6 <none>;}{\\f7 <none>;}{\\f8 <none>;}"
    u"{\\f9 "
    u"<none>;}}{\\colortbl\\red0\\green0\\blue0;\\red0\\green192\\blue0;\\red0\\green0\\blue255;"
    u"\\red192\\green192\\blue0;\\red217\\green122\\blue36;\\red255\\green0\\blue0;"
    u"\\red0\\green255\\blue0;"
    u"\\red64\\green64\\blue64;\\red128\\green128\\blue128;\\red192\\green192\\blue192;}";

TEST_F(RTFConversion, WritesWholeDocuments) {
  EXPECT_EQ(to_rtf(u""), std::u16string(header) + u"{\\f0\\fs20 }}");
  struct Row {
    float size;
    std::u16string_view half_points;
  };
  for (const Row& row : {Row{10.25F, u"20"}, Row{10.75F, u"22"}, Row{10.5F, u"21"}, Row{0, u"0"}}) {
    fonts_.put_FontSize(row.size);
    EXPECT_EQ(to_rtf(u"").substr(header.size()),
              u"{\\f0\\fs" + std::u16string(row.half_points) + u" }}");
  }
  for (const float size : {-1.0F, 16384.0F, std::numeric_limits<float>::quiet_NaN()}) {
    fonts_.put_FontSize(size);
    EXPECT_THROW(to_rtf(u""), Error) << size;
  }
}

TEST_F(RTFConversion, WritesBodiesByTheTable) {
  struct Row {
    std::u16string_view markup, body;
  };
  const Row rows[] = {
      {u"/u1u/u0/p1p/p0/s1s/s0/r1r/r0/l1l/l0/k1k/k0\t",
       u"\\ulw1 u\\ulw0 \\up4 p\\up0 \\dn4 s\\dn0 \\up4 r"
       u"\\up0 \\dn4 l\\dn0 \\strike1 k\\strike0 \\tab "},
      {u"/f1/f9/f0/y1/y9/y0", u"\\f1 \\f9 \\f0 \\cf1 \\cf9 \\cf0 "},
      {u"/c1/t1/z1/B1//b1/n/nl/", u"/c1/t1/z1/B1/\\b1 /n\\par /"},
      {u"a\r\nb\u20AC", u"a\r\nb\u20AC"},
  };
  for (const Row& row : rows) EXPECT_EQ(parser_.QELToRTFWithoutTables(row.markup), row.body);
  EXPECT_EQ(parser_.QELToRTFWithoutTables(u"\\\\b1"), u"\\\\\\\\b1")
      << "not restored in a body alone";
  EXPECT_EQ(to_rtf(u"\\\\b1").substr(header.size()), u"{\\f0\\fs20 /b1}}");
  EXPECT_EQ(to_rtf(u"\\\\\\f7\\\\nl\\\\c1").substr(header.size()),
            u"{\\f0\\fs20 \\\\/f7\\\\\\\\nl/c1}}");
}

TEST_F(RTFConversion, TellsCodesInItsOwnWay) {
  for (const auto* code : {u"/b1", u"/f7", u"/r0", u"/l1", u"/c1", u"/y0"})
    EXPECT_TRUE(RTFParser::IsQELCode(code));
  for (const auto* text : {u"/b2", u"/B1", u"/t1", u"/nl", u"/b1x", u"/b", u"xb1", u""}) {
    EXPECT_FALSE(RTFParser::IsQELCode(text));
  }
}

/// The steps of writing one after the other.
std::u16string literal_body(std::u16string text) {
  text = replace_all(std::move(text), u"\\", u"\\\\");
  for (const rtf::CodeRow& row : rtf::code_table)
    text = replace_all(std::move(text), row.qel, row.rtf);
  return text;
}

std::u16string literal_restore(std::u16string text) {
  for (std::size_t at = 0; (at = text.find(u"\\\\\\\\", at)) != std::u16string::npos; ++at) {
    if (RTFParser::IsQELCode(u"/" + text.substr(at + 4, 2))) text.replace(at, 4, u"/");
  }
  return text;
}

TEST_F(RTFConversion, WritesInOnePassWhatTheStepsWrite) {
  for (std::uint32_t i = 0; i < 2000; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    const std::u16string markup = random.text(test::markup_vocabulary(), random.below(30));
    const std::u16string body = literal_body(markup);
    ASSERT_EQ(parser_.QELToRTFWithoutTables(markup), body) << test::shown(markup);
    ASSERT_EQ(to_rtf(markup),
              std::u16string(header) + u"{\\f0\\fs20 " + literal_restore(body) + u"}}")
        << test::shown(markup);
  }
}

/// The replacements one after the other; `characters` are what the typographic words become.
std::u16string literal_preprocess(std::u16string text,
                                  const std::vector<std::u16string_view>& characters) {
  constexpr std::u16string_view words[] = {u"\\endash", u"\\emdash", u"\\ldblquote", u"\\rdblquote",
                                           u"\\lquote", u"\\rquote", u"\\bullet"};
  for (std::size_t i = 0; i < std::size(words); ++i) {
    text = replace_all(std::move(text), std::u16string(words[i]) + u" ", characters[i]);
    text = replace_all(std::move(text), words[i], characters[i]);
  }
  text = replace_all(std::move(text), u"\\~", characters.back());
  text = replace_all(std::move(text), u"\\super ", u"\\up4 ");
  text = replace_all(std::move(text), u"\\super", u"\\up4");
  text = replace_all(std::move(text), u"\\sub ", u"\\dn4 ");
  return replace_all(std::move(text), u"\\sub", u"\\dn4");
}

const std::vector<std::u16string_view> as_escapes = {u"\\'96", u"\\'97", u"\\'93", u"\\'94",
                                                     u"\\'91", u"\\'92", u"\\'95", u"\\'A0"};
const std::vector<std::u16string_view> as_characters = {u"\u2013", u"\u2014", u"\u201C", u"\u201D",
                                                        u"\u2018", u"\u2019", u"\u2022", u"\u00A0"};

std::u16string literal_preparation(std::u16string text) {
  for (std::size_t at = 0; (at = text.find(u'/', at)) != std::u16string::npos; ++at) {
    if (RTFParser::IsQELCode(text.substr(at, 3))) text.replace(at, 1, u"\\\\\\\\");
  }
  std::u16string paired;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] != u'\\' || at + 1 == text.size()) {
      paired.push_back(text[at]);
    } else {
      const char16_t next = text[++at];
      paired.append(next == u'\\' ? u"\\'5c" : std::u16string{u'\\', next});
    }
  }
  return literal_preprocess(paired, as_characters);
}

TEST_F(RTFConversion, PreparesInOnePassWhatTheStepsPrepare) {
  const std::vector<std::u16string_view> vocabulary = {
      u"\\endash", u"\\emdash ", u"\\ldblquote", u"\\lquote", u"\\rquote ", u"\\bullet",
      u"\\~",      u"\\super",   u"\\sub",       u"\\b1",     u"/b1",       u"/f9",
      u"/nl",      u"/",         u"\\",          u"\\\\",     u" ",         u"{",
      u"}",        u"\\'5c",     u"\\*",         u"x",        u"b1",        u"sub"};
  for (std::uint32_t i = 0; i < 3000; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    const std::u16string rtf = random.text(vocabulary, random.below(20));
    std::u16string storage;
    ASSERT_EQ(RTFParser::PreprocessRTF(rtf), literal_preprocess(rtf, as_escapes))
        << test::shown(rtf);
    const std::u16string document = u"{\\rtf1 " + rtf;
    ASSERT_EQ(rtf::prepare(document, true, storage), literal_preparation(document))
        << test::shown(rtf);
  }
}

TEST_F(RTFConversion, ReadsFormatsFontsAndColors) {
  struct Row {
    std::u16string_view body, markup;
  };
  const Row rows[] = {
      {u"\\b\\i\\ul\\strike x\\plain y", u"/b1/i1/u1/k1x/b0/i0/u0/k0y"},
      {u"\\dn4 a\\up4 b\\up0 c", u"/s1a/p1/s0b/p0c"},
      {u"\\dn4 a\\up4 \\dn0 b\\up0 \\dn4\\up0 c\\up4\\b\\dn0 d", u"/s1a/p1/s0b/p0/s1c/b1/s0d/b0"},
      {u"\\f2 a\\f3 b\\f0 c\\f3 d\\f5 e\\f1 g", u"/f2a/f0/f3b/f0c/f3d/f0e/f1g/f0"},
      {u"\\cf1 a\\cf2 b\\cf0 c\\cf2 d\\cf4 e\\cf3 g", u"/y1a/y0/y2b/y0c/y2d/y0e/y3g/y0"},
      {u"\\f2\\cf1\\b a", u"/b1/f2/y1a/b0/y0/f0"},
      {u"a\\tab b\\par c\\line d\\par ", u"a\tb/nlc/nld/nl"},
      {u"{\\b a\\par}b", u"/b1a/nl/b0b"},
      {u"C:\\\\subdir\\\\b1 \\{/b1\\} /nl", u"C:\\subdir\\b1 {\\\\b1} /nl"},
      {u"\\ldblquote a\\rdblquote\\endash\\~\\bullet\\u8364?",
       u"\u201Ca\u201D\u2013\u00A0\u2022\u20AC"},
      {u"", u""},
  };
  for (const Row& row : rows)
    EXPECT_EQ(to_markup(document(row.body)), row.markup) << test::shown(row.body);
  EXPECT_EQ(to_markup(u"no RTF at all\n"), u"no RTF at all/nl");
  EXPECT_EQ(to_markup(u"\\\\server\\share\\/b1 a"), u"\\\\server\\share\\\\\\b1 a");
  EXPECT_EQ(simple(u"\\\\server\\sub"), u"{\\rtf1 \\f0 \\\\\\\\server\\\\sub}");
  fonts_.put_Font(0, u"Courier New");
  EXPECT_EQ(to_markup(document(u"a\\f2 b")), u"ab") << "font 0 wins over an equal font 2";
  EXPECT_EQ(to_markup(u"{\\rtf1 a}"), u"a") << "text without a font is in font 0";
}

TEST_F(RTFConversion, DoesNotDependOnTheOneBefore) {
  EXPECT_EQ(to_markup(u"{\\rtf1\\b\\i\\ul\\strike\\up8\\fs40 x}"),
            u"/b1/i1/u1/k1/p1x/b0/i0/u0/k0/p0");
  EXPECT_EQ(to_markup(u"plain"), u"plain");
  EXPECT_EQ(simple(u"plain"), u"{\\rtf1 \\f0 plain}");
  Common::conversion_box()->put_TextRTF(document(u"\\f2\\cf2 x"));
  EXPECT_EQ(to_markup(u"{\\rtf1 a}"), u"a") << "nor on what the box holds";
}

TEST_F(RTFConversion, KeepsCharactersOfOtherCodePagesAndBinaryDataApart) {
  EXPECT_EQ(to_markup(u"{\\rtf1\\ansicpg932 \\ldblquote AB\\rdblquote C\\bullet D\\~e}"),
            u"\u201CAB\u201DC\u2022D\u00A0e");
  EXPECT_EQ(to_markup(u"{\\rtf1\\mac a\\emdash b}"), u"a\u2014b");
  EXPECT_EQ(to_markup(u"{\\rtf1 a{\\pict\\bin4 /b1}}tail\\bin7 \\\\/b1\\~.\\bin999999999999 }"),
            u"atail.");
}

TEST_F(RTFConversion, SwitchesDecideOnBreaksAndTabs) {
  struct Row {
    bool nl_to_space, crlf, tabs_to_space, tabs;
    std::u16string_view markup, text;
  };
  const Row rows[] = {{true, false, true, false, u"a /b1b /b0c", u"a b c"},
                      {true, true, true, true, u"a\t/b1b /b0c", u"a\tb c"},
                      {false, true, false, false, u"a/b1b/nl/b0c/nl", u"ab\r\nc\r\n"},
                      {false, false, false, true, u"a\t/b1b/b0c", u"a\tbc"}};
  const std::u16string rtf = document(u"a\\tab {\\b b\\par}c\\par ");
  for (const Row& row : rows) {
    parser_.put_ConvertNLToSpace(row.nl_to_space);
    parser_.put_RecognizeCRLF(row.crlf);
    parser_.put_ConvertTabsToSpace(row.tabs_to_space);
    parser_.put_RecognizeTabs(row.tabs);
    EXPECT_EQ(to_markup(rtf), row.markup);
    EXPECT_EQ(parser_.RTFToText(rtf), row.text);
  }
  RTFParser fresh;
  EXPECT_EQ(fresh.RTFToQEL(document(u"ab\\par cd\\par {\\b\\par}"), fonts_, colors_),
            u"ab cd /b1/b0");
  EXPECT_EQ(fresh.RTFToQEL(document(u"{\\b\\par}"), fonts_, colors_), u"") << "nothing but a break";
  fresh.put_ConvertNLToSpace(false);
  EXPECT_EQ(fresh.RTFToQEL(document(u"\\par"), fonts_, colors_), u"");
}

TEST_F(RTFConversion, SimplifiesRTF) {
  EXPECT_EQ(simple(u""), u"{\\rtf1 \\f0 }");
  EXPECT_EQ(
      simple(document(
          u"\\i\\ul x\\plain\\up2 y\\up0\\{\\}\\\\sub\\tab\\emdash\\~\\bullet\\rquote \\u8364?")),
      u"{\\rtf1 \\f0 \\i1 \\ul1 x\\i0 \\ul0 \\up4 y\\up0 \\{\\}\\\\sub\\tab \\emdash \\~\\bullet "
      u"\\rquote \u20AC}");
  const std::u16string colored = simple(document(u"\\cf1 x"));
  EXPECT_EQ(colored, u"{\\rtf1 " + colors_.get_ColorTable() + u"\\f0 \\cf1 x\\cf0 }");
  const std::u16string both = simple(document(u"\\f2\\cf2 x"));
  EXPECT_EQ(both, u"{\\rtf1 " + fonts_.FontTable(Common::measuring_surface().get()) +
                      colors_.get_ColorTable() + u"\\f0 \\f2 \\cf2 x\\cf0 \\f0 }");
  parser_.put_ConvertNLToSpace(true);
  EXPECT_EQ(simple(document(u"a\\par b\\par ")), u"{\\rtf1 \\f0 a b }") << "its last blank stays";
  EXPECT_EQ(to_markup(both), u"/f2/y2x/y0/f0");
}

/// One run: codes that reading knows, text, and the codes that close it in the order of the walk.
std::u16string random_run(test::Random& random) {
  static const std::vector<std::u16string_view> texts = {
      u"a",          u" b ",    u"\t",
      u"/nl",        u"\\",     u"{}",
      u"C:\\subdir", u"\\\\b1", u"\u00E9\u20AC\U0001F600",
      u"/c2"};
  std::u16string open;
  std::u16string close;
  const auto toggle = [&](char16_t letter) {
    if (!random.one_in(3)) return;
    open.append({u'/', letter, u'1'});
    close.append({u'/', letter, u'0'});
  };
  for (const char16_t letter : {u'b', u'i', u'u', u'k'}) toggle(letter);
  toggle(random.one_in(2) ? u'p' : u's');
  for (const char16_t letter : {u'f', u'y'}) {
    if (!random.one_in(3)) continue;
    open.append({u'/', letter, static_cast<char16_t>(u'1' + random.below(3))});
    close.append({u'/', letter, u'0'});
  }
  return open.append(random.text(texts, 1 + random.below(3))).append(close);
}

TEST_F(RTFConversion, MarkupSurvivesTheBox) {
  for (std::uint32_t i = 0; i < 1000; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    std::u16string markup;
    for (std::size_t run = random.below(12); run > 0; --run) {
      markup.append(random_run(random)).append(u"-");  // the plain text makes every code close
    }
    ASSERT_EQ(to_markup(to_rtf(markup)), markup) << test::shown(markup);
  }
}

TEST(RTFSlots, AreRequiredAndNamed) {
  RTFParser parser;
  QELIndexFonts fonts;
  QELIndexColors colors;
  const auto message_of = [](auto action) -> std::string {
    try {
      action();
    } catch (const Error& error) {
      return error.what();
    }
    return "";
  };
  const auto write = [&] { parser.QELToRTF(u"", fonts, colors); };
  const auto read = [&] { parser.RTFToQEL(u"{\\rtf1 a}", fonts, colors); };
  const auto simplify = [&] { parser.SimpleRTF(u"", fonts, colors); };
  EXPECT_NE(message_of(write).find("measuring surface"), std::string::npos);
  EXPECT_NE(message_of(read).find("measuring surface"), std::string::npos);
  {
    const Common::ConversionSlots slots;
    EXPECT_EQ(message_of(write), "");
    EXPECT_EQ(message_of(read), "");
    const auto surface = Common::measuring_surface();
    Common::publish(surface, nullptr);
    EXPECT_EQ(message_of(write), "");
    EXPECT_NE(message_of(read).find("RTFToQEL: no conversion box"), std::string::npos);
    EXPECT_NE(message_of(simplify).find("SimpleRTF: no conversion box"), std::string::npos);
  }
  EXPECT_EQ(Common::measuring_surface(), nullptr) << "a slot does not outlive its object";
}

}  // namespace
}  // namespace qel
