#include <gtest/gtest.h>

#include "qel/richtext/CodePage.h"
#include "qel/richtext/CompressedRtf.h"
#include "qel/richtext/Document.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/richtext/RtfBytes.h"
#include "qel/richtext/RtfReader.h"
#include "qel/richtext/RtfWriter.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel::richtext {
namespace {

using namespace std::literals;

/// A base that `described` is silent about.
CharFormat plain_base() {
  CharFormat base;
  base.size = 12;
  return base;
}

Document read(std::u16string_view rtf) {
  Document document = read_document(rtf, plain_base());
  EXPECT_TRUE(document.check()) << test::shown(rtf.substr(0, 200));
  return document;
}

Document read_bytes(std::string_view bytes) { return read(rtf_from_bytes(bytes)); }

/// The text with each run's format in brackets before it: b i u s c, the offset, the colour in hex
/// if it is not black, the font if it is not Arial, and the size if it is not 12.
std::u16string described(const Document& document) {
  std::string text;
  for (std::size_t i = 0; i < document.runs().run_count(); ++i) {
    const RunList::Run run = document.runs().run(i);
    const CharFormat& format = document.format(run.value);
    std::string marks = std::string(format.bold ? "b" : "") + (format.italic ? "i" : "") +
                        (format.underline ? "u" : "") + (format.strike_through ? "s" : "") +
                        (format.small_caps ? "c" : "");
    if (format.offset != 0) marks += " " + std::to_string(format.offset);
    if (format.color != 0) marks += " #" + std::to_string(format.color);
    if (format.font_name != u"Arial") marks += " " + test::shown(format.font_name);
    if (format.size != 12) marks += " " + std::to_string(static_cast<int>(format.size * 10));
    text +=
        "[" + marks + "]" +
        test::shown(std::u16string_view(document.text()).substr(run.start, run.end - run.start));
  }
  return {text.begin(), text.end()};
}

TEST(RtfReader, UnderstandsWords) {
  struct Row {
    std::string_view body;
    std::u16string_view runs;
  };
  const Row rows[] = {
      {R"(a\b b\i c\b0 d\plain e)", u"[]a[b]b[bi]c[i]d[]e"},
      {R"({\ul a}{\uldb b\ulnone c}{\ulw1 d}{\ulw0 e}{\ulc2 f}{\ulthdashdd g}{\ulwave0 h})",
       u"[u]ab[]c[u]d[]ef[u]g[]h"},
      {R"({\strike a}{\striked1 b}{\striked0 c}{\strike0 d})", u"[s]ab[]cd"},
      {R"({\scaps a\b b\plain c}{\scaps1 d{\scaps0 e}f}{\caps g}h)",
       u"[c]a[bc]b[]c[c]d[]e[c]f[]gh"},
      {R"(\up4 a\up0 b\dn4 c\up d\dn0{\super e}{\sub f\nosupersub g}{\dn-6 h}{\up9999 i})",
       u"[ 45]a[]b[ -45]c[ 65]d[ 45]e[ -45]f[]g[ 65]h[ 32765]i"},
      {R"(\fs17 a\fs0 b\fs-3 c\fs40000 d\fs e)", u"[ 85]abcd[]e"},
      {"a\\\nb\\\r\nc\r\nd\te", u"[]a\\u000D\\u000Ab\\u000D\\u000Acd\\u0009e"},
      {R"(\page\sect a\sect b\par\page c)", u"[]a\\u000D\\u000Ab\\u000D\\u000Ac"},
      {R"(\{\}\\\~\-\_\|\:x)", u"[]{}\\\\u00A0\\u00AD\\u2011x"},
      {R"(\endash\emdash\lquote\rquote\ldblquote\rdblquote\bullet  x\emspace\zwj)",
       u"[]\\u2013\\u2014\\u2018\\u2019\\u201C\\u201D\\u2022 x\\u2003\\u200D"},
      {R"({\*\unknown gone}{\pict 00ff}{\object{\*\objdata 1}gone{\result {kept}}}{\stylesheet{\s1 gone;}}{\header h}x)",
       u"[]keptx"},
      {R"({\field{\*\fldinst HYPERLINK "u"}{\fldrslt {\ul shown}}}{\field{\fldinst p}})",
       u"[u]shown"},
      {R"({\upr{gone}{\*\ud{kept}}}{\info{\upr{a}{\*\ud b}}}{\*\shppict{\pict 1}}{\nonshppict{\pict}})",
       u"[]kept"},
      {R"({\listtext\pard\plain\f3 \'b7\tab}\b item{\v hidden\par}{\deleted x\v0 y}.)",
       u"[]\\u2022\\u0009[b]item."},
      {R"({\listtext\tab}head {\pntext 1.\tab}one)", u"[]head 1.\\u0009one"},
      {R"(a{\field{\*\fldinst{\b SYMBOL 163 \\f "Symbol" \\s 9}}{\fldrslt\b again}}{\field{\*\fldinst symbol 0x20AC}})"
       R"({\field{\*\fldinst SYMBOL 128 \\f Arial}{\fldrslt{\field{\*\fldinst PAGE}{\fldrslt x}}}}{\field{\*\fldinst SYMBOL x}{\fldrslt b}})"
       R"({\field{\*\fldinst SYMBOL 61692 \\u \\f wingdings}}{\v{\field{\*\fldinst SYMBOL 65}}}{\field{\*\fldinst PAGE}{\fldrslt c}})",
       u"[]a\\u2264\\u20AC\\u20ACb\\u2713c"},
      // HTML in RTF: what an RTF reader shows for tags and entities stands between \htmlrtf.
      {R"(\fromhtml1{\*\htmltag64}{\*\htmltag <style>\par p \{\}</style><p>}{\htmlrtf \b \htmlrtf0 R{\*\htmltag &amp;}\htmlrtf &\htmlrtf0)"
       R"( D{\*\htmltag <br>\par}\htmlrtf\line\htmlrtf0 {\*\mhtmltag <a>}{\*\htmltag <a>}\htmlrtf {\field{\*\fldinst u}{\fldrslt\ul\htmlrtf0 go\htmlrtf }}\htmlrtf0 \htmlrtf\par})",
       u"[b]R&D\\u000D\\u000A[bu]go[b]\\u000D\\u000A"},
      {R"({\super0 a}{\sub0 b}{\super c}a\*\foo b\par c)", u"[]ab[ 45]c[]ab\\u000D\\u000Ac"},
      {R"(a\nestcell b\nestcell{\*\nesttableprops\trowd\nestrow}{\nonesttables\par}x{\u233\xyz ?b})",
       u"[]a\\u0009b\\u0009\\u000D\\u000Ax\\u00E9?b"},
      {R"(a{\shp{\*\shpinst{\sp{\sn b}{\sv c}}{\shp{\*\shpinst{\shptxt\b d\par}}}{\shptxt e}}{\shprslt{\*\do{\dptxbxtext e}}}}f)",
       u"[]a\\u000D\\u000A[b]d\\u000D\\u000A[]e\\u000D\\u000Af"},
      {R"({\upr{{\*\shpinst{\shptxt gone}}}{\*\ud b}}{\*\do\dptxbx{\dptxbxtext a\par}}{\*\do{\v{\dptxbxtext c}}}\par)",
       u"[]b\\u000D\\u000Aa\\u000D\\u000A\\u000D\\u000A"},
      {R"({\bin3 {}}x\bin0 y)", u"[]xy"},
      {R"(\u8217'x\u-10179?\u-8704?{\uc0\u233 x}{\uc2\u233 ab\u9731\'aa\'bby}\u233?)",
       u"[]\\u2019x\\uD83D\\uDE00\\u00E9x\\u00E9\\u2603y\\u00E9"},
      {R"(\u128512?{\u233}a\u233\{b\u233\tab c)", u"[]\\uD83D\\uDE00\\u00E9a\\u00E9b\\u00E9c"},
      {R"(a\u8364\u8364 b\u8364\b bc)", u"[]a\\u20AC\\u20AC\\u20ACbc"},
      {R"(\unknown123 a\B b\bx c)", u"[]abc"},
      {R"(\'4x\'e9\'E9\'80\'81)", u"[]4x\\u00E9\\u00E9\\u20AC\\u0081"},
      {R"(a\u0?b\'00\u0 {\uc0\u0 c}\u-65536?{\v0\u233\'00}d)", u"[]abc\\u00E9d"},
      {R"(a\'0d b\'09)", u"[]a\\u000D\\u000A b\\u0009"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(described(read_bytes("{\\rtf1 " + std::string(row.body) + "}")), row.runs)
        << row.body;
  }
}

std::string described(const DroppedParts& counts) {
  const std::pair<std::string_view, std::uint64_t> all[] = {
      {"pictures", counts.pictures}, {"objects", counts.objects}, {"cells", counts.cells},
      {"rows", counts.rows},         {"notes", counts.notes},     {"headers", counts.headers},
      {"links", counts.links},       {"hidden", counts.hidden},   {"deleted", counts.deleted},
      {"unknown", counts.unknown}};
  std::string text;
  for (const auto& [name, count] : all) {
    if (count != 0) text.append(name).append(" " + std::to_string(count) + " ");
  }
  return text;
}

TEST(RtfReader, KeepsOnRequestWhatItDropsAndCounts) {
  struct Row {
    std::string_view body;
    std::u16string_view all;
    std::string_view dropped;  ///< without any request
  };
  const Row rows[] = {
      {R"(a{\super\chftn{\footnote\pard\plain{\super\chftn} \b b\par \par c\par}}d)",
       u"[]a[b] [b\\u000D\\u000Ac][]d", "notes 1 "},
      {R"({\*\atnid x}a {\*\annotation{\*\atnref 1}b {\footnote\i c}d}{\footnote\par }{\v{\footnote e}})",
       u"[]a [b [i][c][]d]", "notes 1 "},
      {R"({\header\par}{\headerl{\qr a\par}}{\footer\'e9\tab{\field{\*\fldinst PAGE}{\fldrslt 1}}}{\footerf\u233?}b)",
       u"[]a\\u000D\\u000A\\u00E9\\u00091\\u000D\\u000A\\u00E9\\u000D\\u000Ab", "headers 3 "},
      {R"({\field{\*\fldinst{ HYPERLINK "http://a/\\\\b" \\l "c" \\o "\\"d" }}{\fldrslt{\ul x}y}}.)",
       u"[u]x[]y (http://a/\\b#c).", "links 1 "},
      {R"({\field{\fldinst hyperlink a.b}{\fldrslt{\pict 00}}}{\field{\fldinst HYPERLINK http://a.b/}{\fldrslt a.b}})"
       R"({\field{\fldinst HYPERLINK \\l "p"}{\fldrslt q}}{\field{\fldinst HYPERLINK mailto:c}{\fldrslt{\field{\fldinst HYPERLINK d}{\fldrslt c}}}}.)",
       u"[](a.b)a.bqc (d) (mailto:c).", "pictures 1 links 2 "},
      {R"(a{\*\shppict{\pict{\*\picprop{\sp{\sn wzName}{\sv b}}{\sp{\sn wzDescription}{\sv c\u233?}}}\bin2 {}00}}{\nonshppict{\pict}})"
       R"({\shp{\*\shpinst{\sp{\sn pib}{\sv{\pict 00}}}{\sp{\sn wzDescription}{\sv d}}{\shptxt e\par}}})",
       u"[]a [c\\u00E9] [d]\\u000D\\u000Ae\\u000D\\u000A", "pictures 2 "},
      {R"({\object{\*\objdata 1}{\result{\pict 1}a}}\trowd b\cell c\cell\row{\v de}{\deleted f})",
       u"[]ab\\u0009c\\u0009\\u000D\\u000A",
       "pictures 1 objects 1 cells 2 rows 1 hidden 2 deleted 1 "},
      {R"(\ansicpg1253\'ff\'aa\'e1\ansicpg932\'83\'ff{\footnote \'81)",
       u"[]\\u00FF\\u00AA\\u03B1\\u0192\\u00FF [\\u0081]", "notes 1 unknown 3 "},
  };
  const RtfExtras all = {true, true, true, true};
  for (const Row& row : rows) {
    for (const RtfExtras& extras : {RtfExtras(), all}) {
      Document document;
      DocumentBuilder builder(document);
      RtfReader reader(plain_base(), builder, RtfReader::Extent::document,
                       RtfReader::Units::characters, extras);
      const std::u16string rtf = rtf_from_bytes("{\\rtf1 " + std::string(row.body) + "}");
      reader.read(rtf, true);
      reader.finish();
      if (extras == all) {
        EXPECT_EQ(described(document), row.all) << row.body;
      } else {
        EXPECT_EQ(described(reader.counts()), row.dropped) << row.body;
      }
    }
  }
}

TEST(RtfReader, ReadsFontAndColorTables) {
  EXPECT_EQ(
      described(read_bytes(
          R"({\rtf1\deff7{\fonttbl\f7\fswiss Def\'e9;{\f1\fnil\fcharset0 {\b O}ne{\*\falt Gone};}{\f2 Tw\'3bo;})"
          R"({\f31506\fprq2  Far}}{\colortbl;\red255;;\red300\green-5\blue1;}a\f1 b\f2 c\f31506 d\f9 e\f-1 g)"
          R"(\plain\cf1 h\cf2 i\cf3 j\cf4 k\cf-1 l)")),
      u"[ Def\\u00E9]a[ One]b[ Tw;o]c[ Far]d[]e[ Def\\u00E9]g[ #255 Def\\u00E9]h[ Def\\u00E9]i"
      u"[ #65791 Def\\u00E9]j[ Def\\u00E9]kl");
  EXPECT_EQ(
      described(read_bytes(
          R"({\rtf1\ansicpg1251\deff0{\fonttbl{\f0\fcharset0 Arial;}{\f1\fcharset238 Arial CE;}{\f2\fcharset163 Arial (Vietnamese);})"
          R"({\f3\fcharset134 \'cb\'ce\'cc\'e5;}{\f4\fcharset128 \'83\'5c\'83\'7b;}{\f5\fcharset2 \'cf\'00;}{\f7\fcharset128 \'83\\\'83;}{\f6\fcharset0 Rotis ce;}{\f8\fcharset1 SYMBOL;}{\f9 Rotis CE;}{\f10\fcharset238 Rotis Cyr;}})"
          R"(Te{\f1\'9e}{\f2 k}a\f3 b\f4 c\f5 d\f6 e\f7 f\f8 g\'d1\f9 h\f10 i)")),
      u"[]Te\\u017Eka[ \\u5B8B\\u4F53]b[ \\u30BD\\u30DC]c[ \\u041F]d[ Rotis]e[ "
      u"\\u30BD\\u0192]f[ SYMBOL]\\u03B3\\u2207[ Rotis CE]h[ Rotis Cyr]i");
  CharFormat base;
  base.font_name = u"Base";
  base.color = 77;
  base.size = 7.5;
  EXPECT_EQ(described(read_document(
                u"{\\rtf1{\\colortbl;\\red1;}a{\\cf1\\fs18 b\\plain c\\fs24 d}e}", base)),
            u"[ #77 Base 75]a[ #1 Base 90]b[ #77 Base 75]c[ #77 Base]d[ #77 Base 75]e")
      << "an empty first entry is the automatic colour";
  EXPECT_EQ(described(read_document(u"{\\rtf1{\\colortbl\\red2;\\red1;}a{\\cf1 b}}", base)),
            u"[ #2 Base 75]a[ #1 Base 75]b");
}

TEST(RtfReader, DecodesBytesInTheirCodePage) {
  struct Row {
    std::string_view rtf;
    std::u16string_view text;
  };
  const Row rows[] = {
      {"{\\rtf1\\ansi\\ansicpg1251 \xCF\\'f0}", u"\u041F\u0440"},
      {"{\\rtf1\\ansi{\\fonttbl{\\f0\\fcharset204 A;}{\\f1\\fcharset161\\cpg1253 "
       "B;}{\\f2\\fcharset2 S;}{\\f3\\fcharset1 D;}}"
       "\\f0\\'cf\\f1\\'e1\\f2\\'b7\\'80\\f3\\'e9}",
       u"\u041F\u03B1\u00B7\u0080\u00E9"},
      {"{\\rtf1\\deff1{\\fonttbl{\\f1\\fcharset2 Symbol;}{\\f2\\fcharset2 wingdings;}{\\f3 "
       "Symbol;}}"
       "\\'61b\\'a3\\'2d\\'a0\\-\\u167?\\u-3999?\\f2\\'a7\\'d8\\'fc\\'4a2\\'ff\\tab\\f3 a\\'a7"
       "{\\listtext\\f2\\'a7}{\\listtext\\f1\\'b7}{\\listtext\\f2\\u-4063?}}",
       u"\u03B1\u03B2\u2264\u2212\u20AC\u00AD\u00A7\u03B1\u25AA\u27A2\u2713\u263A\U0001F4C4\u00FF\t"
       u"a\u00A7"
       u"\u25AA\u2022\u270F"},
      {"{\\rtf1\\ansicpg932 \\'93\\'fa\\'96{\\b}\x83\x41\x83\\'5c\\'b1}",
       u"\u65E5\u2013\u30A2\u30BD\uFF71"},
      {"{\\rtf1\\ansicpg932 \\'82\\'20\\'83A\\'93}", u"\u201A \u30A2\u201C"},
      {"{\\rtf1\\ansicpg932 \\'83\\\\\\'83\\{\\'83\\}\\'83|\\'83\nA\\'83\\\\\\\\\\'83;}",
       u"\u30BD\u30DC\u30DE\u30DD\u30A2\u30BD\\\u0192;"},
      {"{\\rtf1\\ansicpg65001 \xE2\x82\xAC\xF0\x9F\x98\x80\xE2x}", u"\u20AC\U0001F600\u00E2x"},
      {"{\\rtf1\\ansi\\ansicpg1255 \\'f9\\'ec\\'e5\\'ed}", u"\u05E9\u05DC\u05D5\u05DD"},
      {"{\\rtf1\\ansi\\ansicpg1258 Ti\\'ea\\'ecng}", u"Ti\u00EA\u0301ng"},
      {"{\\rtf1\\mac \\'8e}", u"\u00E9"},
      {"{\\rtf1\\mac\\ansicpg10001 \\'93\\'fa\\'96\\'7b}", u"\u65E5\u672C"},
      {"{\\rtf1\\ansi{\\fonttbl"
       "{\\f0\\fcharset77 A;}{\\f1\\fcharset78 B;}{\\f2\\fcharset79 C;}{\\f3\\fcharset80 D;}"
       "{\\f4\\fcharset81 E;}{\\f5\\fcharset82 F;}{\\f6\\fcharset83 G;}{\\f7\\fcharset84 H;}"
       "{\\f8\\fcharset85 I;}{\\f9\\fcharset86 J;}{\\f10\\fcharset87 K;}{\\f11\\fcharset88 L;}"
       "{\\f12\\fcharset89 M;}}"
       "\\f0\\'8e\\f1\\'93\\'fa\\f2\\'c7\\'d1\\f3\\'ba\\'ba\\f4\\'ba\\'7e\\f5\\'d0\\'65"
       "\\f6\\'f9\\f7\\'c8\\f8\\'e1\\f9\\'da\\f10\\'a1\\f11\\'8b\\f12\\'80}",
       u"\u00E9\u65E5\uD55C\u6C49\u6F22\uD55C\u05E9\u0628\u03B1\u011E\u0E01\u010D\u0410"},
      {"{\\rtf1\\pc \\'82}", u"\u00E9"},
      {"{\\rtf1\\pca \\'9d}", u"\u00D8"},
      {"{\\rtf1\\ansicpg720 \\'a0}", u"\u0628"},
      {"{\\rtf1\\ansicpg99999 \\'80}", u"\u20AC"},
      {"\xEF\xBB\xBF{\\rtf1 x}", u"x"},
  };
  for (const Row& row : rows) {
    const std::u16string text = read_bytes(row.rtf).text();
    EXPECT_EQ(text, row.text) << row.rtf << ": " << test::shown(text);
  }
}

TEST(RtfReader, TellsFourBytesFromTwoInGb18030) {
  if (SystemDecoder(54936).decode("\xC4\xE3").empty()) GTEST_SKIP() << "the system lacks it";
  const Document document =
      read_bytes(R"({\rtf1\ansicpg54936 \'81\'30\'89\'37\'900\'810\'c4\'e3\'810x})");
  EXPECT_EQ(document.text(), u"\u00DE\U00010000\u4F60\u00810x");
}

TEST(RtfBytes, KeepEveryCharacterAndDropBinaryData) {
  EXPECT_EQ(rtf_to_bytes(u"a\u00E9\u20AC\u0081\u4E2D\uFFFD\U0001F600z"),
            "a\\'e9\\'80\\'81\\u20013?\\u-3?\\u-10179?\\u-8704?z");
  EXPECT_EQ(rtf_from_bytes("a\\'e9\xE9\xFFz"), u"a\\'e9\\'e9\\'ffz");
  EXPECT_EQ(
      rtf_from_bytes(
          "x{\\bin5 \xFF{}\\\xFF}y\\bin2ab\\bin-1 c\\\\bin1 d\\binary1 e\\bin99999999999999999999 f"sv),
      u"x{\\bin0 }y\\bin0 \\bin-1 c\\\\bin1 d\\binary1 e\\bin0 ");
  const std::u16string rtf = u"{\\rtf1 \u00E9\u20AC\u4E2D}";
  EXPECT_EQ(read(rtf_from_bytes(rtf_to_bytes(rtf))).text(), read(rtf).text());
}

TEST(RtfReader, SurvivesHostileInput) {
  const auto text_of = [](const std::u16string& body) { return read(u"{\\rtf1 " + body).text(); };
  constexpr std::size_t million = 1'000'000;
  EXPECT_EQ(text_of(u"a" + test::repeated(u"{", million) + u"b"), u"ab");
  EXPECT_EQ(
      text_of(u"a" + test::repeated(u"{\\b ", million) + test::repeated(u"}", million) + u"b"),
      u"ab");
  EXPECT_EQ(text_of(u"a}" + test::repeated(u"}", million)), u"a");
  EXPECT_EQ(text_of(u"a\\bin999999999 b"), u"a");
  EXPECT_EQ(text_of(u"\\uc2000000000\\u233 ?b\\uc-1\\u233 ?c"), u"\u00E9b\u00E9c");
  EXPECT_EQ(text_of(u"a\\" + test::repeated(u"x", 5 * million) + u" b"), u"ab");
  EXPECT_EQ(text_of(u"a\\b" + test::repeated(u"9", million) + u" b"), u"ab");
  std::u16string fonts = u"{\\fonttbl";
  for (int i = 0; i < 60'000; ++i) {
    const std::string number = std::to_string(i);
    // Numbers that fall together in a hash table of the usual size.
    const std::string spread = std::to_string(i % 2 == 0 ? i : i * 42043LL % 2'000'000'000);
    fonts.append(u"{\\f").append(spread.begin(), spread.end());
    fonts.append(u"\\cpg").append(number.begin(), number.end()).append(u" F;}");
  }
  EXPECT_EQ(text_of(fonts + u"}\\f59998\\'e9\\f4\\'e9"), u"\u00E9\u00E9");
  const Document named =
      read(u"{\\rtf1{\\fonttbl{\\f0 " + test::repeated(u"n", million) + u";}}\\f0 a}");
  EXPECT_LT(named.format_at(0).font_name.size(), 1000U) << "each format has a copy";
  EXPECT_EQ(text_of(u"{\\colortbl" + test::repeated(u";", million) + u"}a"), u"a");
  EXPECT_EQ(text_of(u"\\u65\u0001b\u0002"), u"Ab\u0002")
      << "a control character is a replacement too";
  EXPECT_EQ(read(u"no RTF").text(), u"no RTF");
  EXPECT_EQ(read(u"{\\rtf").text(), u"");
  EXPECT_EQ(read(u"{\\rtf1 a\\").text(), u"a");
  EXPECT_EQ(read(u"{\\rtf1 b\\'e").text(), u"be");
}

TEST(RtfReader, KeepsLittleOfWordsWithoutEnd) {
  for (const std::u16string_view unit : {u"x", u"1"}) {
    Document document;
    DocumentBuilder builder(document);
    RtfReader reader({}, builder, RtfReader::Extent::document);
    const std::u16string begin = u"{\\rtf1 a\\b" + test::repeated(unit, 100'000);
    const std::size_t read = reader.read(begin, false);
    EXPECT_EQ(read, begin.size()) << test::shown(unit);
    const std::u16string end = begin.substr(read) + test::repeated(unit, 9) + u"1 c}";
    reader.read(end, true);
    reader.finish();
    EXPECT_EQ(document.text(), u"ac");
  }
}

/// A document of random runs and paragraphs.
Document random_document(test::Random& random) {
  const std::vector<std::u16string> texts = {
      u"a", u"some words ", u"\t", u"{\\}", u"\u00E9\u20AC", u"1 ", u"-"};
  const std::vector<std::u16string> fonts = {u"Arial", u"Courier New", u"Odd;{\\}\u00E9", u"Z"};
  Document document;
  for (std::size_t run = random.below(12); run > 0; --run) {
    CharFormat format;
    format.bold = random.one_in(2);
    format.italic = random.one_in(3);
    format.underline = random.one_in(3);
    format.strike_through = random.one_in(4);
    format.small_caps = random.one_in(4);
    format.offset = random.one_in(3) ? std::int16_t{45}
                                     : static_cast<std::int16_t>(random.one_in(3) ? -125 : 0);
    format.color = random.one_in(2) ? 0 : static_cast<Color>(random.below(3) * 1000 + 7);
    format.font_name = random.pick(fonts);
    format.size = random.one_in(3) ? 10.5F : 8.0F;
    const FormatPool::Id id = document.intern(format);
    for (std::size_t piece = 1 + random.below(2); piece > 0; --piece)
      document.append(random.pick(texts), id);
    if (random.one_in(2)) document.append_break(id, static_cast<Alignment>(random.below(3)));
  }
  document.align_last(static_cast<Alignment>(random.below(3)));
  return document;
}

void expect_equal(const Document& left, const Document& right) {
  EXPECT_EQ(left.text(), right.text());
  EXPECT_EQ(described(left), described(right));
  for (std::size_t i = 0; i <= left.size(); ++i)
    ASSERT_EQ(left.alignment_at(i), right.alignment_at(i)) << i;
}

TEST(RtfWriter, IsReadBackAsItWas) {
  EXPECT_EQ(write_rtf(read(u"{\\rtf1 a\\b b\\par}"), {0, 4}, {}),
            u"{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0 Arial;}}{\\colortbl "
            u";\\red0\\green0\\blue0;}\\cf1\\fs24 a\\b b\\par }");
  CharFormat raised;
  raised.offset = 49;
  const Document odd = plain_document(u"x", raised);
  EXPECT_EQ(read(write_rtf(odd, {0, 1}, {})).format_at(0).offset, 45) << "half-points";
  for (std::uint32_t i = 0; i < 500; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    const Document document = random_document(random);
    ASSERT_TRUE(document.check());
    Document again = document;
    for (int round = 0; round < 3; ++round) again = read(write_rtf(again, {0, again.size()}, {}));
    expect_equal(document, again);
    expect_equal(document, read_bytes(rtf_to_bytes(write_rtf(document, {0, document.size()}, {}))));
  }
}

TEST(Document, ReplacesLikeAModel) {
  // One paragraph's worth of alignment, and a format for each character, kept side by side.
  for (std::uint32_t i = 0; i < 500; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    Document document = random_document(random);
    for (int edit = 0; edit < 8; ++edit) {
      const std::size_t start = random.below(document.size() + 1);
      const std::size_t end = start + random.below(document.size() - start + 1);
      const Extent extent = document.without_cut_breaks({start, end});
      const Document before = document;
      const Document content = random_document(random);
      document.replace(extent, content);
      ASSERT_TRUE(document.check());
      const std::size_t inserted_end = extent.start + content.size();
      expect_equal(
          document.part({extent.start, inserted_end}).size() == content.size() ? content : before,
          [&] {
            Document part = document.part({extent.start, inserted_end});
            for (std::size_t at = 0; at <= part.size(); ++at)
              part.align({at, at}, content.alignment_at(at));
            return part;
          }());
      ASSERT_EQ(described(document.part({0, extent.start})),
                described(before.part({0, extent.start})));
      ASSERT_EQ(described(document.part({inserted_end, document.size()})),
                described(before.part({extent.end, before.size()})));
      ASSERT_EQ(document.alignment_at(document.size()), before.alignment_at(before.size()));
    }
  }
}

std::string with_header(std::string_view magic, std::string_view content) {
  return "\x2d\0\0\0\x05\0\0\0"s.append(magic).append("\xf1\xc5\xc7\xa7").append(content);
}

TEST(CompressedRtf, IsUnpackedAsFarAsItIsSound) {
  constexpr auto hello =
      "\x03\0\x0a\0rcpg125\x42\x32\x0a\xf3 hel\x09\0 bw\x05\xb0ld}\x0a\x80\x0f\xa0"sv;
  std::string long_text;  // longer than the dictionary
  std::string bytes_as_they_are;
  for (int i = 0; i < 7992; ++i) {
    if (i % 8 == 0) bytes_as_they_are.push_back('\0');
    long_text.push_back(static_cast<char>('a' + i % 23));
    bytes_as_they_are.push_back(long_text.back());
  }
  struct Row {
    std::string_view magic;
    std::string content, rtf;
  };
  const Row rows[] = {
      {"LZFu", std::string(hello), "{\\rtf1\\ansi\\ansicpg1252\\pard hello world}\r\n"},
      {"LZFu", "\x41\0\x04 WXYZ\x0dn}\x01\x0e\xb0"s, "{\\rtf1 WXYZWXYZWXYZWXYZWXYZ}"},
      {"LZFu", bytes_as_they_are + "\x03\xff\xf3\x07\xb7"s,
       long_text + long_text.substr(7984, 5) + long_text.substr(4012, 9)},
      {"LZFu", "\x02x\xff\xffy", "x"},
      {"MELA", "{\\rtf padding", "{\\rtf"},
      {"MELA", "{\\rt", "{\\rt"},
      {"LZFx", std::string(hello), ""},
  };
  for (const Row& row : rows) {
    const std::string packed = with_header(row.magic, row.content);
    EXPECT_EQ(unpack_rtf(packed), row.rtf);
    EXPECT_EQ(is_compressed_rtf(packed), !row.rtf.empty());
    std::string last;
    for (std::size_t size = 0; size < std::min<std::size_t>(packed.size(), 64); ++size) {
      const std::string part = unpack_rtf(packed.substr(0, size));
      EXPECT_TRUE(part.starts_with(last) && row.rtf.starts_with(part)) << size;
      last = part;
    }
  }
  test::Random random(test::base_seed());
  SCOPED_TRACE(random.describe());
  for (int i = 0; i < 300; ++i) {
    std::string noise(random.below(2000), '\0');
    for (char& byte : noise) byte = static_cast<char>(random.below(256));
    EXPECT_LE(unpack_rtf(with_header("LZFu", noise)).size(), noise.size() * 9);
  }
}

TEST(RunList, ReplacesLikeAVector) {
  for (std::uint32_t i = 0; i < 300; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    RunList runs;
    std::vector<RunList::Value> model;
    for (int edit = 0; edit < 30; ++edit) {
      RunList inserted;
      std::vector<RunList::Value> values;
      for (std::size_t run = random.below(4); run > 0; --run) {
        const auto value = static_cast<RunList::Value>(random.below(3));
        const std::size_t length = random.below(4);
        inserted.append(length, value);
        values.insert(values.end(), length, value);
      }
      const std::size_t at = random.below(model.size() + 1);
      const std::size_t erased = random.below(model.size() - at + 1);
      const auto position = model.begin() + static_cast<std::ptrdiff_t>(at);
      if (random.one_in(3)) {
        runs.transform(at, at + erased, [](RunList::Value value) { return value / 2; });
        std::for_each(position, position + static_cast<std::ptrdiff_t>(erased),
                      [](auto& value) { value /= 2; });
      } else {
        runs.replace(at, erased, inserted);
        const auto rest = model.erase(position, position + static_cast<std::ptrdiff_t>(erased));
        model.insert(rest, values.begin(), values.end());
      }
      ASSERT_TRUE(runs.check());
      ASSERT_EQ(runs.size(), model.size());
      for (std::size_t k = 0; k < model.size(); ++k) ASSERT_EQ(runs.at(k), model[k]);
    }
  }
}

}  // namespace
}  // namespace qel::richtext
