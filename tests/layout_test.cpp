#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "qel/base/Error.h"
#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"
#include "qel/headless/FixedCanvas.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/model/QELCode.h"
#include "qel/platform/Common.h"
#include "qel/text/TextAndFormatting.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel {
namespace {

using Layout = TextAndFormatting;

/// An engine on a canvas on which a character is one unit wide, 1.2 when bold.
struct OnFixedCanvas {
  OnFixedCanvas() {
    canvas->put_FontSize(2);
    engine.put_DefaultFontSize(2);
    engine.put_Canvas(canvas);
  }
  std::shared_ptr<headless::FixedCanvas> canvas = std::make_shared<headless::FixedCanvas>();
  Layout engine;
};

TEST(LayoutStrings, CountOnlyTheirOwnCodes) {
  struct Row {
    std::u16string_view text;
    std::int16_t length;
  };
  const Row rows[] = {{u"/B1ab", 2},     {u"/k1ab", 5},  {u"/nl", 3},  {u"~/b1", 1},
                      {u"/f9/Y0/t1", 0}, {u"/b2", 3},    {u"/f", 2},   {u"//b1/", 2},
                      {u"", 0},          {u"/z1/r1", 6}, {u"/C0x", 1}, {u"b1", 2},
                      {u"/\u01301", 0}};  // its lower case is "i"
  for (const Row& row : rows)
    EXPECT_EQ(Layout::fmtLen(row.text), row.length) << test::shown(row.text);
}

TEST(LayoutStrings, SearchTheMarkupItself) {
  struct Row {
    std::u16string_view text, search;
    std::int16_t first, last;
  };
  const Row rows[] = {{u"/b1abc/b0", u"c", 3, 3}, {u"/b1abc/b0", u"abcd", 0, 0},
                      {u"a/b1b", u"ab", 0, 0},    {u"a/b1ba/b1b", u"a/b1", 1, 3},
                      {u"xAx", u"X", 0, 0},       {u"x/b1x", u"x", 1, 2},
                      {u"ab", u"", 1, 1},         {u"", u"", 0, 0},
                      {u"/b1x", u"/b1", 1, 1},    {u"/b1x", u"1", 0, 0}};
  for (const Row& row : rows) {
    EXPECT_EQ(Layout::fmtInStr(row.text, row.search), row.first) << test::shown(row.search);
    EXPECT_EQ(Layout::fmtRevInStr(row.text, row.search), row.last) << test::shown(row.search);
  }
}

TEST(LayoutStrings, Cut) {
  struct Row {
    std::u16string_view text;
    std::int16_t count;
    std::u16string_view left, right;
  };
  const Row rows[] = {
      {u"/b1abc/b0d/u1", 2, u"/b1ab", u"c/b0d/u1"},
      {u"/b1abc/b0d/u1", 4, u"/b1abc/b0d", u"abc/b0d/u1"},
      {u"/b1abc/b0d/u1", 5, u"/b1abc/b0d/u1", u"/b1abc/b0d/u1"},
      {u"/b1abc/b0d/u1", 0, u"/b1", u""},
      {u"abc", -1, u"abc", u"abc"},
      {u"a/k1b", 3, u"a/k", u"k1b"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Layout::fmtLeft(row.text, row.count), row.left) << row.count;
    EXPECT_EQ(Layout::fmtRight(row.text, row.count), row.right) << row.count;
  }
  struct MidRow {
    std::int16_t start, length;
    std::u16string_view result;
  };
  const MidRow mids[] = {{1, 1, u"a"}, {1, 2, u"a/b1b"}, {2, 1, u"b"}, {2, 0, u"b/b0c/i1"},
                         {4, 1, u""},  {0, 1, u""},      {1, -1, u""}};
  for (const MidRow& row : mids) {
    EXPECT_EQ(Layout::fmtMid(u"/u1a/b1b/b0c/i1", row.start, row.length), row.result)
        << row.start << " " << row.length;
  }
}

TEST(LayoutStrings, TellCodes) {
  for (const auto* const code : {u"/y0", u"/y1", u"/y2"}) EXPECT_TRUE(Layout::IsSortCode(code));
  for (const auto* const code : {u"/y3", u"/Y1", u"/y1 ", u""})
    EXPECT_FALSE(Layout::IsSortCode(code));
  for (const auto* const code : {u"\\\\b1", u"\\\\c0", u"\\\\f9", u"\\\\y0"}) {
    EXPECT_TRUE(Layout::IsEscapeCode(code)) << test::shown(code);
  }
  for (const auto* const code :
       {u"\\\\b2", u"\\\\B1", u"\\b1", u"\\\\t1", u"\\\\f", u"\\\\f12", u"/b1", u""}) {
    EXPECT_FALSE(Layout::IsEscapeCode(code)) << test::shown(code);
  }
}

TEST(LayoutStrings, ReadRomanNumbers) {
  struct Row {
    std::u16string_view roman, arabic;
  };
  const Row rows[] = {
      {u"MCMXCIV", u"1994"},  {u"", u"0"},    {u"abc", u""}, {u"xxxx", u"40"},    {u"xxxxx", u"50"},
      {u"xxxxxx", u"60"},     {u"ic", u""},   {u"iv", u"4"}, {u"CDxlIX", u"449"}, {u"m ", u"4000"},
      {u"mmmmmmmm", u"8000"}, {u"viv", u"9"}, {u"i1", u""}};
  for (const Row& row : rows) {
    EXPECT_EQ(Layout::RomanToArabic(row.roman), row.arabic) << test::shown(row.roman);
  }
}

TEST(WordWrap, BreaksAtBlanks) {
  using Lines = std::vector<std::u16string>;
  struct Row {
    std::u16string_view text;
    float width, indent;
    Lines lines;
  };
  const Row rows[] = {
      {u"/b1/i0", 10, 0, {}},
      {u"ab cd ef", 5, 4, {u"ab cd", u"e", u"f"}},
      {u"ab   cd", 3, 0, {u"ab ", u"cd"}},              // the blanks that fit stay, the others go
      {u" abcdef", 3, 0, {u" ab", u"cde", u"f"}},       // a blank at the beginning is no break
      {u"/i1ab/i0 /u1cd", 3, 0, {u"/i1ab", u"/u1cd"}},  // codes before the blank are in neither
      {u"/b1abcde/b0f", 5, 0, {u"/b1abcd", u"e/b0f"}},  // only the first line is bold, and wider
      {u"a\U0001F600\U0001F600b", 2, 0, {u"a\U0001F600", u"\U0001F600b"}},
      {u"abc", -5, 9, {u"a", u"b", u"c"}},
      {u"ab cd", std::numeric_limits<float>::infinity(), 0, {u"ab cd"}},
      {u"/y2hidden/y0 x", 2, 0, {u"/y2hi", u"dd", u"en", u"x"}},
      {u"\\\\b1 a~/b1", 3, 0, {u"\\\\b1", u"a", u"~/b1"}},
      {u"~/b1~/i1~/u1", 3, 0, {u"~/b1", u"~/i1", u"~/u1"}},
      {u"ab ~/b1 cd\\\\b1", 6, 0, {u"ab ~/b1", u"cd\\\\b1"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(test::shown(row.text));
    OnFixedCanvas on;
    EXPECT_EQ(on.engine.LineCount(row.text, row.width, row.indent),
              static_cast<std::int16_t>(row.lines.size()));
    std::int16_t number = 0;
    for (const std::u16string& line : row.lines) {
      EXPECT_EQ(on.engine.GetLine(row.text, row.width, row.indent, ++number), line);
    }
    EXPECT_EQ(on.engine.GetLine(row.text, row.width, row.indent, ++number), u"");
    EXPECT_EQ(on.engine.GetLine(row.text, row.width, row.indent, 0), u"");
  }
}

TEST(WordWrap, MeasuresWithTheFontsItIsGiven) {
  OnFixedCanvas on;
  on.engine.put_DefaultFontSize(4);
  EXPECT_EQ(on.engine.LineCount(u"ab cd", 5, 0), 1) << "in the font of the canvas";
  EXPECT_EQ(on.engine.GetLine(u"ab cd", 5, 0, 2), u"cd") << "in the default size";
  EXPECT_EQ(on.canvas->get_FontSize(), 4);
  EXPECT_EQ(on.engine.LineCount(u"ab cd", 5, 0), 2) << "which stays set";
  on.engine.put_DefaultFontSize(2);
  EXPECT_EQ(on.engine.GetLine(u"ab/y2cd/y0 ef", 5, 0, 1), u"ab/y2cd");
  on.engine.put_ShowHiddenText(false);
  EXPECT_EQ(on.engine.GetLine(u"ab/y2cd/y0 ef", 5, 0, 1), u"ab/y2cd/y0 ef");
  on.canvas = std::make_shared<headless::FixedCanvas>();
  on.engine.put_Canvas(on.canvas);
  on.engine.put_DefaultFontSize(4);
  EXPECT_EQ(on.engine.GetLine(u"ab/y2cd/y0 ef", 5, 0, 1), u"ab/y2cd");
  EXPECT_EQ(on.engine.fmtTextWidth(u"a/y2hidden/y0b"), 4);
  EXPECT_EQ(on.engine.fmtTextWidth(u"<b1]"), 6) << "as it is shown";
  EXPECT_FLOAT_EQ(on.engine.fmtTextWidth(u"a\tb/b1\t/b0c"), 34) << "by the stops of a line";
  on.engine.put_RevealCodes(true);
  EXPECT_EQ(on.engine.fmtTextWidth(u"a/y2b"), 10);
  const std::u16string words = test::repeated(u"ab cd ", 20000);
  ASSERT_EQ(on.engine.LineCount(words, 4, 0), static_cast<std::int16_t>(40000));
  for (std::int16_t line = 1; line < 3000; ++line) {
    ASSERT_EQ(on.engine.GetLine(words, 4, 0, line), line % 2 == 0 ? u"cd" : u"ab") << "in time";
  }
}

TEST(WordWrap, SeesThatTheCanvasMeasuresInAnotherWay) {
  struct Zooming : headless::FixedCanvas {
    float text_width(std::u16string_view text, const platform::TextFont& font) const override {
      return FixedCanvas::text_width(text, font) * (font.name == zoomed ? 2.0F : 1.0F);
    }
    std::u16string zoomed;
  };
  const auto canvas = std::make_shared<Zooming>();
  OnFixedCanvas on;
  on.engine.put_Canvas(canvas);
  struct Row {
    std::u16string zoomed, second, third;
  };
  const Row rows[] = {{u"", u"fg /f2h/i1i", u""},
                      {u"Courier New", u"fg", u"/f2h/i1i"},
                      {u"", u"fg /f2h/i1i", u""},
                      {u"Arial", u"cd", u"e"}};
  for (const Row& row : rows) {
    canvas->zoomed = row.zoomed;
    EXPECT_EQ(on.engine.GetLine(u"abcde fg /f2h/i1i", 5.5F, 0, 2), row.second);
    EXPECT_EQ(on.engine.GetLine(u"abcde fg /f2h/i1i", 5.5F, 0, 3), row.third);
  }
}

TEST(WordWrap, MeasuresOnThePlatformWithoutACanvas) {
  struct WithFixedFonts : headless::HeadlessPlatform {
    std::shared_ptr<platform::Canvas> create_measuring_canvas() const override {
      return std::make_shared<headless::FixedCanvas>();
    }
  };
  Layout without_canvas;
  EXPECT_EQ(without_canvas.LineCount(u"iiii WWWW", 49, 0), 2) << "Arial 10";
  EXPECT_EQ(without_canvas.LineCount(u"iiii WWWW", 50, 0), 1);
  without_canvas.put_DefaultFontSize(20);
  EXPECT_FLOAT_EQ(without_canvas.fmtTextWidth(u"/f2iiii"), 4 * 20 * 1229.0F / 2048)
      << "Courier New";
  EXPECT_EQ(without_canvas.GetLine(u"iiii WWWW", 41, 0, 2), u"WW");
  Common::set_platform(std::make_shared<WithFixedFonts>());
  EXPECT_EQ(without_canvas.GetLine(u"iiii WWWW", 41, 0, 2), u"WWWW");
  Common::set_platform(nullptr);
  EXPECT_GT(without_canvas.TextHeight(u"a"), 20);
  EXPECT_EQ(without_canvas.get_Canvas(), nullptr);
  EXPECT_THROW(without_canvas.WriteParagraph(u"a", 0, 0, 1), Error);
}

/// Whether a cut at `at` goes through a code, an escaped code, its placeholder or a surrogate pair.
bool goes_through_something(std::u16string_view text, std::size_t at) {
  for (std::size_t begin = at - std::min<std::size_t>(at, 3); begin < at; ++begin) {
    const std::u16string_view rest = text.substr(begin);
    const bool is_long = begins_with_placeholder(rest) || begins_with_escaped_code(rest) ||
                         Layout::IsEscapeCode(rest.substr(0, 4));
    const std::size_t size = is_long ? 4 : IsQELCode(rest.substr(0, 3)) ? 3 : 1;
    if (begin + size > at) return true;
  }
  return at < text.size() && is_pair_at(text, at - 1);
}

/// The first `count` characters, and what a tilde at their end makes text.
std::u16string beginning_of(const std::u16string& rest, std::int16_t count) {
  std::u16string beginning = Layout::fmtLeft(rest, count);
  const std::size_t size = beginning.size();
  if (!begins_with_escaped_code(std::u16string_view(rest).substr(size - 1))) return beginning;
  return rest.substr(0, size + 3);
}

/// The rule taken literally: back off from the end word by word, then take as much of a word as
/// fits; every line takes at least one character, and does not break at a blank at its beginning.
std::vector<std::u16string> lines_step_by_step(const Layout& engine, std::u16string rest,
                                               float available, float indent) {
  std::vector<std::u16string> lines;
  while (Layout::fmtLen(rest) > 0) {
    std::u16string line = rest;
    while (engine.fmtTextWidth(line) > available) {
      const std::int16_t blank = Layout::fmtRevInStr(line, u" ");
      if (blank > 1) {
        line = beginning_of(rest, static_cast<std::int16_t>(blank - 1));
        continue;
      }
      std::u16string fitting;
      for (std::int16_t k = 1; k <= Layout::fmtLen(line); ++k) {
        const std::u16string beginning = beginning_of(rest, k);
        const bool is_all = k == Layout::fmtLen(line);
        if (!is_all && goes_through_something(rest, beginning.size())) continue;
        const bool fits = engine.fmtTextWidth(beginning) <= available;
        if (fits || fitting.empty()) fitting = beginning;
        if (!fits) break;
      }
      line = fitting;
      break;
    }
    lines.push_back(line);
    rest = Layout::fmtMid(rest, static_cast<std::int16_t>(Layout::fmtLen(line) + 1), 0);
    rest.erase(0, rest.find_first_not_of(u' '));
    if (lines.size() == 1) available -= indent;
  }
  return lines;
}

TEST(WordWrap, FollowsTheRuleStepByStep) {
  OnFixedCanvas on;
  test::Random random(test::base_seed());
  std::vector<std::u16string_view> pieces = test::markup_vocabulary();
  pieces.insert(pieces.end(),
                {u" ", u"  ", u"abc ", u"de ", u"longword", u"/k1", u"/k0", u"\\\\b1"});
  for (int i = 0; i < 4000; ++i) {
    const std::u16string text = random.text(pieces, random.below(30));
    const auto width = static_cast<float>(random.below(16));
    const auto indent = static_cast<float>(random.below(4));
    SCOPED_TRACE(random.describe() + " " + test::shown(text) + " " + std::to_string(width) + " " +
                 std::to_string(indent));
    const auto lines = on.engine.all_lines(text, width, indent);
    ASSERT_EQ(lines, lines_step_by_step(on.engine, text, width, indent));
  }
}

std::string hundredths(float value) { return std::to_string(std::lround(value * 100)); }

TEST(Drawing, PutsStylesOntoTheCanvas) {
  OnFixedCanvas on;
  QELIndexColors colors;
  colors.put_Color(4, 0x123456);
  QELIndexFonts fonts;
  fonts.put_FontSize(10);
  on.engine.SetFontAndColors(fonts, colors);
  const float below = on.engine.WriteParagraph(
      u"a/b1b/i1c/b0/i0/u1d/k1e/u0/k0/p1f/p0/s1g/s0/f2/y4h/f0/y0/c1iJ/c0/y1k/f4l", 1, 2, 500);
  EXPECT_FLOAT_EQ(below, 14);
  // Text, place, width, font and colour, in hundredths.
  const std::vector<std::string> expected = {
      "a 100 1100 500 Arial 1000 0",      "b 600 1100 600 Arial 1000 b 0",
      "c 1200 1100 600 Arial 1000 bi 0",  "d 1800 1100 500 Arial 1000 0",
      "e 2300 1100 500 Arial 1000 0",     "f 2800 800 333 Arial 667 0",
      "g 3133 1235 333 Arial 667 0",      "h 3467 1100 500 Courier New 1000 1193046",
      "I 3967 1100 400 Arial 800 0",      "J 4367 1100 500 Arial 1000 0",
      "k 4867 1100 500 Arial 1000 49152", "l 5367 1100 500 Arial 1000 49152",
  };
  std::vector<std::string> found;
  for (const headless::DrawnText& drawn : on.canvas->texts()) {
    std::string line = test::shown(drawn.text);
    for (const float value : {drawn.x, drawn.y, drawn.width}) line += " " + hundredths(value);
    line += " " + test::shown(drawn.font.name) + " " + hundredths(drawn.font.size) + " ";
    if (drawn.font.bold) line += drawn.font.italic ? "bi " : "b ";
    found.push_back(line + std::to_string(drawn.color));
  }
  EXPECT_EQ(found, expected) << "font 4 is unused: the default font";
  ASSERT_EQ(on.canvas->rectangles().size(), 2U) << "one bar for all that is underlined";
  const headless::DrawnRectangle& underline = on.canvas->rectangles()[0];
  const headless::DrawnRectangle& strike_through = on.canvas->rectangles()[1];
  EXPECT_FLOAT_EQ(underline.left, 18);
  EXPECT_FLOAT_EQ(underline.width, 10);
  EXPECT_GT(underline.top, 11);
  EXPECT_FLOAT_EQ(strike_through.left, 23);
  EXPECT_FLOAT_EQ(strike_through.width, 5);
  EXPECT_LT(strike_through.top + strike_through.height, 11);
}

/// What was drawn, one "x,y text" for each line.
std::vector<std::string> drawn(const headless::FixedCanvas& canvas) {
  std::vector<std::string> lines;
  for (const headless::DrawnText& text : canvas.texts()) {
    lines.push_back(std::to_string(std::lround(text.x * 10)) + "," +
                    std::to_string(std::lround(text.y * 10)) + " " + test::shown(text.text));
  }
  return lines;
}

TEST(Drawing, LaysLinesOut) {
  struct Row {
    std::u16string_view text;
    float indent;
    std::int16_t align, printed;
    std::vector<std::string> lines;
  };
  // Ten characters fit; a line is 2.4 high, its base line 1.8 below its top.
  const Row rows[] = {
      {u"one two three", 2, alRight, 2, {"30,18 one two", "50,42 three"}},
      {u"one two   three  ", 0, alCenter, 2, {"15,18 one two  ", "25,42 three  "}},
      {u"/u1one two three", 0, alLeft, 2, {"0,18 one two", "0,42 three"}},
      {u"a/nl/nl b/nl", 0, alRight, 3, {"90,18 a", "80,66  b"}},
      {u"a\r\nb\nc", 5, alLeft, 3, {"0,18 a", "0,42 b", "0,66 c"}},
      {u"/nl", 0, alLeft, 1, {}},
      {u"a~/b1\\\\i1<b1]", 0, alLeft, 1, {"0,18 a/b1/i1/b1"}},
      {u"<b1]cd <ef\\", 0, alLeft, 1, {"0,18 /b1cd <ef\\"}},
      {u"1.\tab cd ef", 3, alLeft, 2, {"0,18 1.", "30,18 ab cd", "30,42 ef"}},
      {u"abcdefgh ij\tk", 3, alLeft, 2, {"0,18 abcdefgh", "30,42 ij", "80,42 k"}},
      {u"a/b1b\t/b0c\nd\te",
       0,
       alRight,
       2,
       {"10,18 a", "20,18 b", "90,18 c", "10,42 d", "90,42 e"}},
      {u"abcdefgh\ti", 0, alLeft, 2, {"0,18 abcdefgh", "80,42 i"}},
      {u"abcdefghijkl", 3, alLeft, 2, {"0,18 abcdefghij", "30,42 kl"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(test::shown(row.text));
    OnFixedCanvas on;
    on.engine.put_Align(row.align);
    const float below = on.engine.WriteParagraph(row.text, 0, 0, 10, row.indent);
    EXPECT_EQ(drawn(*on.canvas), row.lines);
    EXPECT_EQ(on.engine.get_LinesPrinted(), row.printed);
    EXPECT_NEAR(below, 2.4F * row.printed, 0.001);
  }
}

TEST(Drawing, PutsRunsIntoTheOrderOfTheirDirections) {
  struct Row {
    std::u16string_view text;
    std::int16_t align;
    std::vector<std::string> lines;  // with "<" before what reads from right to left
  };
  const Row rows[] = {
      {u"אב 12 cd", alLeft, {"0 <אב 12 cd"}},
      {u"ab אב 12", alLeft, {"0 ab אב 12"}},
      {u"/u1א/u0 ב 12 /y4cd/y0, (ה)",
       alLeft,
       {"0 <, (ה)", "5 cd", "7 < ", "8 12", "10 < ב ", "13 <א"}},
      {u"ab /y4אב/y0 /y5גד/y0 34 ef",
       alLeft,
       {"0 ab ", "3 34", "5 < ", "6 <גד", "8 < ", "9 <אב", "11  ef"}},
      {u"/y4אב/y0ג  ", alRight, {"15 <ג  ", "18 <אב"}},
      {u"/y4אבגד/y0 הוזחט/y4יכלמנ/y0 abcd/y4צ",
       alRight,
       {"5 <יכלמנ", "10 < הוזחט", "16 <אבגד", "15 <צ", "16 abcd"}},
      {u"/y4א/y0\tב", alLeft, {"0 <ב", "8 <א"}},
      {u"/y4123/y0-אב/nlcd /y4אב", alLeft, {"0 <-אב", "3 123", "0 cd ", "3 <אב"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(test::shown(row.text));
    OnFixedCanvas on;
    on.engine.put_Align(row.align);
    on.engine.WriteParagraph(row.text, 0, 0, 20);
    std::vector<std::string> lines;
    for (const headless::DrawnText& text : on.canvas->texts()) {
      lines.push_back(std::to_string(std::lround(text.x)) + (text.right_to_left ? " <" : " ") +
                      to_utf8(text.text));
    }
    EXPECT_EQ(lines, row.lines);
    if (row.text.starts_with(u"/u1")) {
      EXPECT_EQ(on.canvas->rectangles().front().left, 13) << "bars go with their text";
    }
  }
}

TEST(Drawing, FollowsItsSettings) {
  OnFixedCanvas on;
  on.engine.put_RevealCodes(true);
  on.engine.WriteParagraph(u"a/b1b/nlc", 0, 0, 20);
  on.engine.put_RevealCodes(false);
  on.engine.put_WordWrap(false);
  on.engine.put_ShowHiddenText(false);
  on.engine.put_IgnoreColors(true);
  on.engine.put_ForeColor(5);
  on.engine.put_LabelID(2);
  on.engine.WriteParagraph(u"/y2x/y0one two three/y3 four", 4, 10, 3);
  EXPECT_EQ(drawn(*on.canvas),
            (std::vector<std::string>{"0,18 a/b1b/nlc", "40,118 one two three", "170,118  four"}));
  EXPECT_EQ(on.canvas->texts().back().color, 5);
  ASSERT_EQ(on.canvas->rectangles().size(), 1U);
  const headless::DrawnRectangle& label = on.canvas->rectangles().front();
  EXPECT_EQ(label.color, on.engine.get_Colors()->get_LabelColor(2));
  EXPECT_EQ(label.left, 4);
  EXPECT_EQ(label.top, 10);
  EXPECT_EQ(label.width, 3);
  EXPECT_NEAR(label.height, 2.4, 0.001);
  EXPECT_NEAR(on.engine.TextHeight(u"a/nlb"), 2.4, 0.001);
}

TEST(Drawing, KeepsStylesAcrossLinesAndLosesNothing) {
  OnFixedCanvas on;
  on.engine.WriteParagraph(u"/b1one two", 0, 0, 5);
  EXPECT_TRUE(on.canvas->texts().back().font.bold);
  test::Random random(test::base_seed());
  std::vector<std::u16string_view> pieces = test::markup_vocabulary();
  std::erase(pieces, u"\t");  // wider than a line may be
  for (int i = 0; i < 1000; ++i) {
    const std::u16string text = random.text(pieces, random.below(40));
    SCOPED_TRACE(random.describe() + " " + test::shown(text));
    const auto all_of = [&](float width) {
      on.canvas->clear();
      on.engine.WriteParagraph(text, 0, 0, width);
      std::u16string shown;
      for (const headless::DrawnText& piece : on.canvas->texts()) {
        EXPECT_LE(piece.x + piece.width, std::max(width, 1.2F) + 0.001F);
        shown.append(piece.text);
      }
      std::erase(shown, u' ');
      return shown;
    };
    const std::u16string unwrapped = all_of(100000);
    ASSERT_EQ(all_of(static_cast<float>(1 + random.below(12))), unwrapped);
  }
}

}  // namespace
}  // namespace qel
