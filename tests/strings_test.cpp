#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "qel/base/Search.h"
#include "qel/headless/FixedCanvas.h"
#include "qel/text/MarkupStrings.h"
#include "qel/text/QELText.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel {
namespace {

TEST(QELTextStrings, Find) {
  struct Row {
    std::u16string_view text, search;
    std::int16_t first, last, ignoring_case;
  };
  const Row rows[] = {
      {u"/b1abc/b0d", u"cd", 3, 3, 3}, {u"a/nlb a/b1b/b0", u"/i1ab", 1, 4, 1},
      {u"ab", u"", 1, 1, 1},           {u"ab", u"/b1", 1, 1, 1},
      {u"aXx", u"x", 3, 3, 2},         {u"\u03A3\u03C3\u03C2", u"\u03C2", 3, 3, 1},  // three sigmas
  };
  QELText tools;
  for (const Row& row : rows) {
    EXPECT_EQ(tools.InString(row.text, row.search), row.first) << test::shown(row.text);
    EXPECT_EQ(tools.InString(row.text, row.search, 2), row.first) << test::shown(row.text);
    EXPECT_EQ(tools.InString(row.text, row.search, 1), row.ignoring_case) << test::shown(row.text);
    EXPECT_EQ(tools.InStringRev(row.text, row.search), row.last) << test::shown(row.text);
    const auto found = [](std::int16_t position) { return static_cast<std::size_t>(position) - 1; };
    EXPECT_EQ(markup::find(row.text, row.search), found(row.first));
    EXPECT_EQ(markup::find(row.text, row.search, markup::Matching::ignoring_case),
              found(row.ignoring_case));
    EXPECT_EQ(markup::find_last(row.text, row.search), found(row.last));
  }
  const std::int16_t last_before[][2] = {{-1, 4}, {9, 4}, {5, 4}, {4, 1}, {2, 1}, {1, 0}, {0, 0}};
  for (const auto& [start, position] : last_before) {
    EXPECT_EQ(tools.InStringRev(u"ab/b1 ab", u"ab", start), position) << start;
    const auto within = static_cast<std::size_t>(start);  // -1 is `npos`
    EXPECT_EQ(markup::find_last(u"ab/b1 ab", u"ab", markup::Matching::exact, within) + 1,
              static_cast<std::size_t>(position));
  }
  const std::u16string long_text = test::repeated(u"x", 40000);
  EXPECT_EQ(tools.InString(long_text + u"y", u"y"), static_cast<std::int16_t>(40001));
  EXPECT_EQ(tools.LenStr(long_text), static_cast<std::int16_t>(40000));
  EXPECT_EQ(tools.PlainText(u"/k1a/nl~/b1/b1b"), u"a~/b1b");
}

// A long search remembers how its own beginnings repeat within it.
TEST(Search, FindsLongTextsWhereTheLibraryDoes) {
  for (std::uint32_t i = 0; i < 3000; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    const std::u16string period = random.text({u"a", u"b"}, 1 + random.below(20));
    std::u16string search = test::repeated(period, 80).substr(0, 33 + random.below(40));
    if (random.one_in(2)) search[random.below(search.size())] = u'a';
    std::u16string text;
    for (std::size_t pieces = random.below(8); pieces > 0; --pieces) {
      text.append(search, random.one_in(2) ? 0 : random.below(search.size()), random.below(120));
    }
    const std::size_t from = random.below(text.size() + 1);
    ASSERT_EQ(find_text(text, search, from), text.find(search, from));
    ASSERT_EQ(find_last_text(text, search), text.rfind(search));
  }
}

TEST(QELTextStrings, Cut) {
  struct Row {
    std::u16string_view text;
    std::u16string_view left, right;
    std::int16_t length, used;
  };
  const Row rows[] = {
      {u"/b1abc/b0def", u"/b1abc/b0d", u"/b1c/b0def", 4, 4},
      {u"/b1abc/b0def", u"/b1abc/b0", u"def", 3, 3},
      {u"/b1abc/b0def", u"", u"", 0, 0},
      {u"/b1abc/b0def", u"/b1abc/b0def", u"/b1abc/b0def", 99, 12},
      {u"x/nly/i1", u"xy", u"xy", 9, 8},
      {u"/f2/y3abcd", u"/y3/f2ab/f0/y0", u"/y3/f2cd/f0/y0", 2, 2},
      {u"a~/b1b", u"a~/", u"b1b", 3, 3},  // half of an escaped code is text
  };
  QELText tools;
  for (const Row& row : rows) {
    std::int16_t left_length = row.length;
    std::int16_t right_length = row.length;
    EXPECT_EQ(tools.LeftStr(row.text, left_length), row.left) << row.length;
    EXPECT_EQ(tools.RightStr(row.text, right_length), row.right) << row.length;
    const auto count = static_cast<std::size_t>(std::max<std::int16_t>(row.length, 0));
    EXPECT_EQ(markup::left(row.text, count), row.left) << row.length;
    EXPECT_EQ(markup::right(row.text, count), row.right) << row.length;
    EXPECT_EQ(left_length, row.used) << test::shown(row.text);
    EXPECT_EQ(right_length, row.used) << test::shown(row.text);
  }
  struct MidRow {
    std::int16_t start, length;
    std::u16string_view result;
  };
  const MidRow mids[] = {{-1, 2, u""},
                         {2, 0, u""},
                         {1, -1, u"ab/b1cd/b0e"},
                         {2, -1, u"b/b1cd/b0e"},
                         {3, 1, u"/b1c/b0"},
                         {4, 9, u"/b1d/b0e"},
                         {9, -1, u""}};
  for (const MidRow& row : mids) {
    EXPECT_EQ(tools.MidStr(u"ab/b1cd/b0e", row.start, row.length), row.result)
        << row.start << " " << row.length;
    if (row.start < 1 || row.length < -1) continue;
    EXPECT_EQ(markup::mid(u"ab/b1cd/b0e", static_cast<std::size_t>(row.start - 1),
                          static_cast<std::size_t>(row.length)),
              row.result)
        << row.start << " " << row.length;
  }
  const std::u16string long_text = test::repeated(u"x", 40000) + u"/b1end/b0";
  const std::u16string nearly = test::repeated(u"a", 50000) + u"b";
  EXPECT_EQ(tools.InString(test::repeated(u"a", 100000), nearly), 0) << "in linear time";
  EXPECT_EQ(tools.InStringRev(test::repeated(u"a", 100000), u"b" + nearly.substr(0, 50000)), 0);
  EXPECT_EQ(tools.InStringRev(u"x" + nearly + nearly + u"y", nearly),
            static_cast<std::int16_t>(50003));
  std::int16_t three = 3;
  EXPECT_EQ(tools.RightStr(long_text, three), u"/b1end/b0");
  EXPECT_EQ(tools.Stuff(long_text, 1, 0, u"y", nullptr), u"y" + long_text) << "nothing gets lost";
}

TEST(QELTextStrings, Stuff) {
  struct Row {
    std::int16_t start, length;
    std::u16string_view replacement, codes, result;
  };
  const std::u16string_view text = u"/b1abc/b0def";
  const Row rows[] = {
      {1, 0, u"X", u"b", u"/b1X/b1abc/b0def"}, {3, 2, u"-/i1-/i0", u"", u"/b1ab/b0-/i1-/i0ef"},
      {3, 2, u"", u"y2", u"/b1ab/b0/y2ef"},    {7, 0, u"!", u"", u"/b1abc/b0def!"},
      {4, 99, u"", u"", u"/b1abc/b0"},         {2, -1, u"X", u"", u"/b1a/b0X/b1abc/b0def"},
  };
  QELText tools;
  for (const Row& row : rows) {
    iStyle style;
    style.Bold = row.codes == u"b";
    style.put_Hidden(row.codes == u"y2");
    iStyle* const given = row.codes.empty() ? nullptr : &style;
    EXPECT_EQ(tools.Stuff(text, row.start, row.length, row.replacement, given), row.result)
        << row.start << " " << row.length;
    EXPECT_EQ(style, iStyle()) << "the style is reset";
  }
}

TEST(MarkupStrings, KeepLineBreaksAndReachBeyond16Bits) {
  using markup::npos;
  constexpr auto kept = Way::lossless;
  constexpr std::size_t far = 70000;
  const std::u16string before = test::repeated(u"x", far);
  const std::u16string text = before + u"/nl/b1ab/nl/nlc/b0~/i1/nl";
  cReplaceData bold;
  bold.DontChangeStyle = false;
  bold.Bold = true;
  const std::pair<std::u16string, std::u16string_view> rows[] = {
      {markup::left(text, far + 3, kept), u"/nl/b1ab/nl/nlc/b0"},
      {markup::mid(text, far, npos, kept), u"/nl/b1ab/nl/nlc/b0~/i1/nl"},
      {markup::right(text, 6, kept), u"/nl/b1ab/nl/nlc/b0~/i1/nl"},
      {markup::mid(text, far + 1, 2, kept), u"/b1b/nl/nlc/b0"},
      {markup::replace(text, far + 1, 1, u"-/nl", kept), u"/nl/b1a/b0-/nl/nl/nl/b1c/b0~/i1/nl"},
      {markup::replace(text, far + 2, 4, u"-/nl-", bold, kept), u"/nl/b1ab/nl/nl-/nl-/b0/nl"},
      {markup::replace(text, far + 9, 9, u"-"), u"/b1abc/b0~/i1-"},
      {markup::toggle(text, taItalic, far + 2, 99, kept), u"/nl/b1ab/nl/nl/i1c/b0~/i1/i0/nl"},
      {markup::toggle(text, taBold, far + 9, npos, kept), u"/nl/b1ab/nl/nlc/b0~/i1/nl"},
      {markup::change_case(text, CaseChange::upper, far + 1, 2, kept),
       u"/nl/b1aB/nl/nlC/b0~/i1/nl"},
      {markup::change_case(text, CaseChange::title, far, npos, kept), u"/nl/b1Ab/nl/nlC/b0~/i1/nl"},
  };
  for (const auto& [made, end] : rows) {
    const std::u16string_view behind = std::u16string_view(made).substr(
        std::min(made.size(), std::u16string_view(made).find_first_not_of(u'x')));
    EXPECT_EQ(test::shown(behind), test::shown(end));
  }
  EXPECT_EQ(markup::split(u"/nla/nl,/nlb/nlc,", u",", kept),
            (std::vector<std::u16string>{u"/nla/nl", u"/nlb/nlc"}));
  EXPECT_EQ(markup::length(text), far + 7);
  // What is put in stays apart from its neighbours.
  EXPECT_EQ(markup::replace(u"xb1", 1, 0, u"/", kept), u"x//b0b1");
  EXPECT_EQ(markup::replace(u"x/y", 2, 1, u"b1", kept), u"x//b0b1");
  EXPECT_EQ(markup::replace(u"x/by", 3, 1, u"1", kept), u"x/b/b01");
  EXPECT_EQ(markup::replace(u"/c1x~y", 2, 1, u"/b1z", kept), u"/c1x~/c0/b1z");
  EXPECT_EQ(markup::replace(u"/b1x/y/b0", 2, 1, u"", kept), u"/b1x//b0");
  EXPECT_EQ(markup::replace(u"ay/b1b/b0", 1, 1, u"~", kept), u"a~/c0/b1b/b0");
  EXPECT_EQ(markup::replace(u"a/c1b/c0", 1, 1, u"/", cReplaceData(), kept), u"a/c1//c0");
  EXPECT_EQ(markup::left(u"x/nl", 1, kept), u"x/nl");
  EXPECT_EQ(markup::left(u"x/y", 2, kept), u"x//b0");
  EXPECT_EQ(markup::length(text, kept), far + 6);
}

TEST(QELTextStrings, HalvesOfACutCodeStayText) {
  QELText tools;
  EXPECT_EQ(tools.MidStr(u"x~/b1y", 3, 4), u"//b0b1y");
  EXPECT_EQ(tools.Stuff(u"~/i0a/b1c", 2, 4, u"", nullptr), u"~/c0/b1c/b0");
  std::int16_t length = 2;
  EXPECT_EQ(tools.LeftStr(u"/b1x~/i1/b0", length), u"/b1x~/c0/b0");
  EXPECT_EQ(tools.RightStr(u"x~/b1y", length = 4), u"//b0b1y");
  iStyle italic;
  italic.Italic = true;
  EXPECT_EQ(tools.StuffWithStyleData(u"/f1~/i0/f0", 2, 1, u"Q", italic),
            u"/f1~/c0/f0/i1Q/i0/f1i0/f0");
  EXPECT_EQ(tools.StuffWithStyleData(u"~/b1c", 1, 1, u"Q", italic), u"/i1Q/i0//b0b1c");
}

TEST(QELTextStrings, StuffWithStyleData) {
  QELText tools;
  struct Row {
    std::u16string_view record;
    std::int16_t start, length;
    std::u16string_view result;
  };
  // On "a", italic "bc" in font 5 and colour 4, "d".
  const Row rows[] = {
      {u"", 2, 1, u"a/i1/y4/f5X/f0c/f0/y0/i0d"},  // keeps everything
      {u"", 3, 1, u"a/i1/y4/f5b/f0/y0/i0Xd"},     // the next segment is plain
      {u"", 2, 0, u"aX/i1/y4/f5bc/f0/y0/i0d"},    // nothing to keep
      {u"False<Repl:Data>False<Repl:Data>False<Repl:Data>True", 2, 2, u"a/b1X/b0d"},
      {u"False<Repl:Data>True<Repl:Data>False<Repl:Data>True", 2, 2, u"a/b1/f5X/f0/b0d"},
      {u"False<Repl:Data>False<Repl:Data>True<Repl:Data>True", 2, 2, u"a/b1/y4X/y0/b0d"},
  };
  for (const Row& row : rows) {
    cReplaceData data;
    if (!row.record.empty()) data.put_All(row.record);
    EXPECT_EQ(
        tools.StuffWithStyleData(u"a/i1/f5/y4bc/f0/y0/i0d", row.start, row.length, u"X", data),
        row.result)
        << test::shown(row.record) << " " << row.start;
  }
  cReplaceData raised;
  raised.DontChangeStyle = false;
  raised.Superscript = true;
  EXPECT_EQ(tools.StuffWithStyleData(u"ab", 1, 1, u"X", raised), u"/p1X/p0b");
  tools.put_QELText(u"/b1a");
  iStyle& own = tools.get_Segments()->Item(1)->get_Style();
  EXPECT_EQ(tools.StuffWithStyleData(u"xy", 1, 1, u"X", own), u"/b1X/b0y")
      << "the style is released meanwhile";
}

/// The rule taken literally, step by step.
std::vector<std::u16string> split_step_by_step(QELText& tools, std::u16string text,
                                               const std::u16string& delimiter) {
  std::vector<std::u16string> parts;
  while (!text.empty()) {
    const std::u16string plain = tools.PlainText(text);
    const std::size_t found = delimiter.empty() ? std::u16string::npos : plain.find(delimiter);
    if (found == std::u16string::npos) {
      parts.push_back(text);
      break;
    }
    const auto position = static_cast<std::int16_t>(found + 1);
    const auto behind = static_cast<std::int16_t>(plain.size() - found);
    const auto taken = static_cast<std::int16_t>(found + delimiter.size());
    parts.push_back(tools.Stuff(text, position, behind, u"", nullptr));
    text = tools.Stuff(text, 1, taken, u"", nullptr);
  }
  return parts;
}

TEST(QELTextStrings, Split) {
  using Parts = std::vector<std::u16string>;
  QELText tools;
  EXPECT_EQ(tools.Split(u"a,b,", u","), (Parts{u"a", u"b"}));
  EXPECT_EQ(tools.Split(u"x/nl", u","), Parts{u"x/nl"}) << "a text that is not cut stays as it is";
  EXPECT_EQ(tools.Split(u"a/b1, /b0b", u", "), (Parts{u"a", u"b"}));
  EXPECT_EQ(tools.Split(u"ab", u""), Parts{u"ab"});
  EXPECT_EQ(tools.Split(u"a~/b1b~/b1c", u"b1"), (Parts{u"a~/", u"b~/", u"c"}));
  EXPECT_EQ(tools.Split(u"~~/b1~", u"~"), (Parts{u"", u"", u"//b0b1"}));
  EXPECT_EQ(tools.Split(u"/i1x~/b1y", u"/b1"), (Parts{u"/i1x~/c0/i0", u"/i1y/i0"}));
  EXPECT_EQ(tools.Split(u"x~/i1/b1y/b0", u"/i1"), (Parts{u"x~", u"/b1y/b0"}));
  test::Random random(test::base_seed());
  const std::vector<std::u16string_view> pieces = {u"/b1", u"/b0", u"/f3", u"/f0",  u"/y1",
                                                   u"/y4", u"/y0", u"/nl", u"<b1]", u",",
                                                   u"a",   u"bc ", u",,",  u"/k1"};
  for (int i = 0; i < 2000; ++i) {
    const std::u16string text = random.text(pieces, random.below(20));
    const std::u16string delimiter = random.one_in(3) ? u",," : u",";
    SCOPED_TRACE(random.describe() + " " + test::shown(text));
    QELText fresh;
    const auto parts = fresh.Split(text, delimiter);
    const std::u16string left_there = fresh.get_QELText();
    QELText stepping;
    ASSERT_EQ(parts, split_step_by_step(stepping, text, delimiter));
    EXPECT_EQ(left_there, stepping.get_QELText()) << "the text that stays in the decoder";
  }
}

TEST(QELTextStrings, Compare) {
  QELText tools;
  EXPECT_TRUE(tools.Compare(u"/b1ab/b0", u"/b1a/b1b"));
  EXPECT_FALSE(tools.Compare(u"ab", u"/b1ab/b0"));
  EXPECT_FALSE(tools.Compare(u"abc", u"abcdef"));
  EXPECT_FALSE(tools.Compare(u"abcdef", u"abc"));
}

TEST(QELTextStrings, KeepTheTextOnRandomMarkup) {
  test::Random random(test::base_seed());
  QELText tools;
  StyleDecoder decoder;
  for (int i = 0; i < 3000; ++i) {
    std::u16string text = random.text(test::markup_vocabulary(), random.below(16));
    SCOPED_TRACE(random.describe() + " " + test::shown(text));
    const std::u16string plain = tools.PlainText(text);
    std::size_t total = 0;
    for (const auto& segment : *tools.get_Segments()) total += segment->text().size();
    ASSERT_EQ(plain.size(), total) << "the plain text is as long as the segments";
    // Text that is cut between these could become a code when it is joined, or stop being one.
    if (plain.find_first_of(u"~/") != std::u16string::npos) continue;
    const auto length = static_cast<std::int16_t>(plain.size());
    const auto at = static_cast<std::int16_t>(random.below(plain.size() + 1));
    std::int16_t before = at;
    std::int16_t behind = static_cast<std::int16_t>(length - at);
    EXPECT_EQ(tools.PlainText(tools.LeftStr(text, before) + tools.RightStr(text, behind)), plain);
    EXPECT_EQ(tools.PlainText(tools.MidStr(text, static_cast<std::int16_t>(at + 1), -1)),
              plain.substr(static_cast<std::size_t>(at)));
    const std::u16string stuffed =
        tools.Stuff(text, static_cast<std::int16_t>(at + 1), 0, u"new", nullptr);
    const std::u16string again =
        tools.Stuff(stuffed, static_cast<std::int16_t>(at + 1), 3, u"", nullptr);
    EXPECT_EQ(tools.PlainText(again), plain);
    // A font in coloured text is lost where the text is cut.
    decoder.put_QELText(text);
    if (text.find(u"/f") == std::u16string::npos) {
      EXPECT_TRUE(tools.Compare(again, text)) << test::shown(again);
    }
  }
}

TEST(QELTextToggle, IsDecidedByTheFirstSegment) {
  struct Row {
    std::u16string_view text;
    std::int32_t attribute;
    std::int16_t start, length;
    std::u16string_view result;
  };
  const Row rows[] = {
      {u"a/b1b", taBold, 0, 0, u"/b1ab/b0"},
      {u"/b1a/b0b", taBold, 0, -1, u"ab"},
      {u"/f2a/f0b", taFont3, 0, 0, u"/f3ab/f0"},
      {u"/f3a/f0/f2b", taFont3, 0, 0, u"ab"},
      {u"/y9a", taColor9, 0, 0, u"a"},
      {u"/y9a", taColor8, 0, 0, u"/y8a/y0"},
      {u"/b1/i1/f2a/b0b", taPlain, 0, 0, u"ab"},
      {u"abc", taItalic, 1, 1, u"a/i1b/i0c"},
      {u"ab/b1cd", taBold, 1, 2, u"a/b1bcd/b0"},
      {u"abc", taUnderline, 2, 9, u"ab/u1c/u0"},
      {u"abc", taUnderline, 3, 1, u"abc"},
      {u"abc", 32, 0, 0, u"abc"},
      {u"a/u1b", taStrikeThru, 0, 0, u"/k1a/u1b/k0/u0"},
      {u"a", taSuperscript, 0, 0, u"/p1a/p0"},
      {u"a", taSubscript, 0, 0, u"/s1a/s0"},
      {u"a", taSmallCaps, 0, 0, u"/c1a/c0"},
      {u"THE/b1 END", taLowerCase, 0, 0, u"the/b1 end/b0"},
      {u"the/b1 end of the day", taUpperCase, 0, 0, u"THE/b1 END OF THE DAY/b0"},
      {u"aB/y2cD", taChangeCase, 0, 0, u"Ab/y2Cd/y0"},
      {u"the/b1 end of the day", taTitleCase, 0, 0, u"The/b1 End of the Day/b0"},
      {u"the/b1 end", taFirstToUpper, 0, 0, u"The/b1 end/b0"},
      {u"THE/b1 END", taFirstToLower, 0, 0, u"tHE/b1 END/b0"},
  };
  for (const Row& row : rows) {
    QELText tools;
    tools.put_QELText(row.text);
    tools.ToggleTextAttribute(row.attribute, row.start, row.length);
    EXPECT_EQ(tools.get_QELText(), row.result)
        << test::shown(row.text) << " attribute " << row.attribute;
  }
}

TEST(QELTextObjects, HandOnToTheirOwners) {
  QELText tools;
  // Each flag alone, so that none is another under a wrong name.
  struct Flag {
    bool (QELText::*get)() const;
    void (QELText::*put)(bool);
  };
  const Flag flags[] = {{&QELText::get_WordWrap, &QELText::put_WordWrap},
                        {&QELText::get_RevealCodes, &QELText::put_RevealCodes},
                        {&QELText::get_ShowHiddenText, &QELText::put_ShowHiddenText},
                        {&QELText::get_IgnoreColors, &QELText::put_IgnoreColors}};
  for (const Flag& set : flags) {
    for (const Flag& flag : flags) (tools.*flag.put)(flag.put == set.put);
    for (const Flag& flag : flags) EXPECT_EQ((tools.*flag.get)(), flag.put == set.put);
  }
  tools.put_ForeColor(10);
  tools.put_IgnoredColor(11);
  tools.put_HiddenColor(12);
  tools.put_NoteColor(13);
  for (std::int16_t i = 0; i < 4; ++i) EXPECT_EQ(tools.get_Colors()->get_Color(i), 10 + i);
  QELIndexColors colors;
  colors.put_Color(0, 7);
  tools.SetColors(colors);
  colors.put_Color(0, 8);
  EXPECT_EQ(tools.get_ForeColor(), 7) << "the tables are copies";

  const auto canvas = std::make_shared<headless::FixedCanvas>();
  tools.SetCanvas(canvas);
  tools.put_RevealCodes(false);
  tools.put_ShowHiddenText(false);
  tools.put_WordWrap(true);
  EXPECT_EQ(tools.LineCount(u"a/y2b/y0 c", 15, 0), 1) << "hidden text takes no room";
  EXPECT_EQ(tools.GetLine(u"ab cd", 15, 0, 2), u"cd");
  EXPECT_EQ(QELText::RomanToArabic(u"xiv"), u"14");

  tools.put_QELText(u"/k1a  b/nl/y2c");
  EXPECT_EQ(tools.get_QELTextv6(), u"a  b/z1c/z0");
  EXPECT_EQ(tools.GetQELTextv6(ofWithoutHidden, false, true), u"a b");
  EXPECT_EQ(tools.GetQELText(ofWithoutHidden, false, true), u"/k1a b/k0");
  tools.SetCustomCodes(u"/nl=|");
  EXPECT_EQ(tools.get_TextCustom(), u"a  b|c");
  EXPECT_EQ(tools.WordSegment(1, 1)->get_Text(), u"a  b");
  EXPECT_EQ(tools.LTrimStr(u" a "), u"a ");
  EXPECT_EQ(tools.RTrimStr(u" a "), u" a");
  EXPECT_EQ(tools.TrimStr(u" a "), u"a");
  EXPECT_EQ(tools.RemoveLeadingPunctuation(u"(a)"), u"a)");
  EXPECT_EQ(tools.RemoveTrailingPunctuation(u"(a)"), u"(a");
  EXPECT_EQ(tools.FirstLetterToUppercase(u"ab", 0, -1), u"Ab");
  tools.put_IgnoredWordList(u"ab");
  EXPECT_EQ(tools.TitleCase(u"x ab x", 0, -1, true), u"X ab X");
  EXPECT_EQ(tools.AutoTitleCase(u"ab cd"), u"Ab Cd");
  EXPECT_EQ(tools.AutoInitialCap(u"ab cd"), u"Ab cd");
  EXPECT_EQ(tools.AutoTitleCaseRTF(u"{\\b ab cd}"), u"{\\b Ab Cd}");
  EXPECT_EQ(tools.AutoInitialCapRTF(u"{\\b ab cd}"), u"{\\b Ab cd}");
  EXPECT_EQ(tools.UpperCaseRTF(u"x"), u"{\\caps x\\capsoff}");
  EXPECT_EQ(tools.LowerCaseRTF(u"x"), u"{\\caps x}");
}

}  // namespace
}  // namespace qel
