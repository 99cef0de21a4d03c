#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "qel/headless/SvgCanvas.h"
#include "support/Text.h"

namespace qel::headless {
namespace {

using platform::CanvasText;
using platform::TextFont;

constexpr float em = 2048;  // a size at which widths are whole numbers

/// The document's lines between its root's tags.
std::string elements(const SvgCanvas& canvas) {
  const std::string svg = canvas.svg();
  const std::size_t begin = svg.find('\n') + 1;
  return svg.substr(begin, svg.rfind("</svg>\n") - begin);
}

std::string drawn(const CanvasText& text) {
  SvgCanvas canvas(100);
  canvas.draw_text(text);
  return elements(canvas);
}

/// What stands between the tags of the drawn text.
std::string content(std::u16string_view text, std::u16string_view font = u"Arial") {
  const std::string element = drawn({text, 0, 0, 1, {std::u16string(font), 8}});
  const std::size_t begin = element.find('>') + 1;
  return element.substr(begin, element.rfind("</text>") - begin);
}

// The widths were read from the fonts by another program.
TEST(SvgCanvas, MeasuresAsTheFontsDo) {
  struct Row {
    std::u16string_view text;
    TextFont font;
    float width;
  };
  const std::vector<Row> rows = {
      {u"Hello", {u"Arial", em}, 4667},
      {u"Hello", {u"ARIAL CE", em, true}, 5007},
      {u"Häße Жук €", {u"Arial", em, true, true}, 11361},
      {u"Quick Ελλάς", {u"times new roman", em}, 10638},
      {u"Wi…", {u"Courier New", em, true}, 3687},
      {u"\t", {u"Consolas", em}, 1229},
      {u"\uF061\uF0A0", {u"SYMBOL", em, true, true}, 1292 + 1536},
      {u"\u4E2D\U0001F600", {u"Arial", em}, 2 * 2048},
      {u"e\u0301\u200B\u00AD\uFE0F", {u"Courier New", em}, 1229},
      {u"👨\u200D👩\u200D👧🇩🇪👍🏽ที่", {u"Arial", em}, 3 * 2048 + 1208},
      {u"\xD83D\xDE00\xDE00", {u"Arial", em}, 2048 + 1208},
      {u"Hello", {u"Arial", -1}, 0},
      {u"Hello", {u"Arial", std::numeric_limits<float>::quiet_NaN()}, 0},
  };
  const SvgCanvas canvas(100);
  for (const Row& row : rows) {
    EXPECT_FLOAT_EQ(canvas.text_width(row.text, row.font), row.width)
        << test::shown(row.text) << " in " << test::shown(row.font.name);
  }
  const platform::FontExtent arial = canvas.font_extent({u"Arial", em});
  EXPECT_FLOAT_EQ(arial.ascent, 1854);
  EXPECT_FLOAT_EQ(arial.descent, 434);
  EXPECT_FLOAT_EQ(arial.leading, 67);
  EXPECT_FLOAT_EQ(canvas.font_extent({u"Courier New", em}).ascent, 1705);
}

TEST(SvgCanvas, WritesTextWithItsFormat) {
  EXPECT_EQ(drawn({u"Hi", 1.5F, 20.25F, 11.1234F, {u"ARIAL", 12, true, true}, rgb(255, 128, 1)}),
            "<text x=\"1.5\" y=\"20.25\" textLength=\"11.123\" lengthAdjust=\"spacingAndGlyphs\""
            " font-family=\"Arial, 'Liberation Sans', Helvetica, sans-serif\" font-size=\"12\""
            " font-weight=\"bold\" font-style=\"italic\" fill=\"#ff8001\" "
            "xml:space=\"preserve\">Hi</text>\n");
  struct Row {
    CanvasText text;
    std::string_view part;
  };
  const std::vector<Row> rows = {
      {{u"(", 1, 2, 3, {}, 0, true}, "<text x=\"4\" y=\"2\" direction=\"rtl\" font-family"},
      {{u"x", -1e30F, -0.0001F, 1, {}}, "x=\"-1000000000\" y=\"0\""},
      {{u"x", std::nanf(""), 1.0F / 3, 1, {}}, "x=\"0\" y=\"0.333\""},
      {{u"x", 0, 0, 1, {u"Verdana", 8}}, "\"'Verdana', Arial, 'Liberation Sans', Helvetica"},
      {{u"x", 0, 0, 1, {u"Symbol", 8}}, "\"'Times New Roman', 'Liberation Serif', Times, serif"},
      {{u"x", 0, 0, 1, {u"\"'\\><&\n", 8}}, "\"'&quot;\\'\\\\&gt;&lt;&amp;\uFFFD', Arial, "},
      {{u"x", 0, 0, 1, {test::repeated(u"x", 65), 8}}, "\"Arial, "},
  };
  for (const Row& row : rows) {
    const std::string element = drawn(row.text);
    EXPECT_NE(element.find(row.part), std::string::npos) << element << row.part;
  }
  for (const float width : {0.0F, -1.0F, 0.0001F, std::nanf("")}) {
    EXPECT_EQ(drawn({u"x", 0, 0, width, {}}).find("Length"), std::string::npos) << width;
  }
}

TEST(SvgCanvas, WritesCharactersThatXmlAllows) {
  EXPECT_EQ(content(u" <a href=\"x\">&amp; "), " &lt;a href=&quot;x&quot;&gt;&amp;amp; ");
  EXPECT_EQ(content(std::u16string_view(u"\0\x1F\r\uFFFE\uFFFF", 5)),
            "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(content(u"\xDE00 \xD83D"), "\uFFFD \uFFFD");
  EXPECT_EQ(content(u"a\tb"), "a b");
  EXPECT_EQ(content(u"aDWmp+-1(", u"symbol"), "αΔΩμπ+−1(");
  EXPECT_EQ(content(u"\uF061\uF0E6<\uF026 \u00AE\u03B2\u00A0", u"Symbol"), "α⎛&lt;&amp; →β\u00A0");
  EXPECT_EQ(content(u"aa", u"Segoe UI Symbol"), "aa");
}

/// What each element shows, behind "=" where the viewer has to keep its width.
std::vector<std::string> parts(std::u16string_view text) {
  std::istringstream lines(drawn({text, 0, 0, 1, {}}));
  std::vector<std::string> found;
  for (std::string line; std::getline(lines, line);) {
    const std::size_t begin = line.find('>') + 1;
    const bool is_kept = line.find("textLength") != std::string::npos;
    found.push_back((is_kept ? "=" : "") + line.substr(begin, line.rfind("</") - begin));
  }
  return found;
}

TEST(SvgCanvas, TearsNothingApart) {
  using Parts = std::vector<std::string>;
  const std::pair<std::u16string_view, Parts> rows[] = {
      {u"a\u0301 b\u200B\u00AD c\n", {"=a\u0301 b\u200B\u00AD c\uFFFD"}},
      {u"שלום עולם", {"שלום עולם"}},
      {u"a שָׁלוֹם 12 b", {"a שָׁלוֹם 12 b"}},
      {u"\u0646\u200C\u0645 \U00010A00.", {"\u0646\u200C\u0645 \U00010A00."}},
      {u" น้ำ ที่นี่  ab ", {" น้ำ ที่นี่  ", "=ab "}},
      {u"x क्\u200Dष हि", {"=x ", "क्\u200Dष हि"}},
      {u"x👨‍👩‍👧 👍🏽y🇩🇪❤\uFE0F",
       {"=x", "👨‍👩‍👧 👍🏽", "=y", "🇩🇪❤\uFE0F"}},
      {u"1\uFE0F\u20E3中 a\u304B\u3099", {"1\uFE0F\u20E3中 ", "=a", "\u304B\u3099"}},
  };
  for (const auto& [text, expected] : rows) EXPECT_EQ(parts(text), expected);
}

TEST(SvgCanvas, IsAsHighAsWhatIsDrawn) {
  SvgCanvas canvas(100, 10, rgb(255, 255, 255));
  EXPECT_EQ(elements(canvas),
            "<rect x=\"-10\" y=\"-10\" width=\"120\" height=\"20\" fill=\"#ffffff\"/>\n");
  canvas.draw_text({u"", 0, 500, 0, {}});
  canvas.fill_rectangle({0, 500, 0, 9}, 0);
  EXPECT_EQ(canvas.height(), 0) << "nothing was drawn";
  EXPECT_NE(SvgCanvas(0).svg().find(" width=\"1pt\" height=\"1pt\""), std::string::npos);
  canvas.fill_rectangle({1, 2, 3, 4.5F}, rgb(0, 0, 16));
  EXPECT_NE(
      canvas.svg().find("<rect x=\"1\" y=\"2\" width=\"3\" height=\"4.5\" fill=\"#000010\"/>"),
      std::string::npos);
  EXPECT_FLOAT_EQ(canvas.height(), 6.5F);
  canvas.draw_text({u"  ", 0, 20, 10, {u"Arial", 20.48F}});
  EXPECT_FLOAT_EQ(canvas.height(), 24.34F) << "blanks take their place";
  canvas.draw_text({u"x   ", 90, 1, 40, {u"Arial", 8}});
  const std::string svg = canvas.svg();
  EXPECT_EQ(svg.find(">  </text>"), std::string::npos);
  EXPECT_EQ(svg.find("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"120pt\" height=\"44.34pt\""
                     " viewBox=\"-10 -10 120 44.34\""),
            0U);
}

}  // namespace
}  // namespace qel::headless
