#include "qel/convert/Lint.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/convert/Normalize.h"
#include "qel/model/Parser.h"
#include "qel/model/StyleDecoder.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel::convert {
namespace {

using Kind = Finding::Kind;

std::vector<Finding> findings_in(std::u16string_view markup, const LintOptions& options = {}) {
  std::vector<Finding> findings;
  lint(markup, options, [&](const Finding& finding) { findings.push_back(finding); });
  return findings;
}

/// A line with the initial of each finding below its code.
std::string marked(std::u16string_view markup, const LintOptions& options = {}) {
  std::string line;
  for (const Finding& finding : findings_in(markup, options)) {
    line.resize(std::max(line.size(), finding.position + 1), ' ');
    line[finding.position] = "noerucfy"[static_cast<std::size_t>(finding.kind)];
  }
  return line;
}

/// What a reader sees: each character in its style, breaks without one.
using Items = std::vector<std::pair<char16_t, style_codes::CodeState>>;

Items items_of(std::u16string_view markup, bool to_rtf) {
  MarkupScanner scanner(markup, Way::lossless);
  if (to_rtf) scanner.read_codes_of_rtf();
  Items items;
  for (auto item = scanner.next(); item != MarkupScanner::Item::end; item = scanner.next()) {
    if (item == MarkupScanner::Item::line_break) {
      items.push_back({u'\n', {}});
      continue;
    }
    for (const char16_t c : scanner.text()) items.push_back({c, scanner.state()});
  }
  return items;
}

bool are_equal(std::u16string_view one, std::u16string_view other) {
  return items_of(one, false) == items_of(other, false) &&
         items_of(one, true) == items_of(other, true);
}

std::u16string without_effectless_codes(std::u16string_view markup) {
  std::u16string rest;
  std::size_t begin = 0;
  for (const Finding& finding : findings_in(markup)) {
    if (finding.kind != Kind::no_effect) continue;
    rest.append(markup.substr(begin, finding.position - begin));
    begin = finding.position + finding.length;
  }
  return rest.append(markup.substr(begin));
}

std::u16string random_markup(test::Random& random) {
  static const std::vector<std::u16string_view> joints = {
      u"/", u"~", u"b", u"c", u"1", u"n", u"l", u"r", u"\r", u"\n", u"/b0", u"/c1", u"/r1", u"/p1"};
  std::u16string markup;
  for (std::size_t left = random.below(14); left > 0; --left) {
    markup.append(random.pick(random.one_in(2) ? joints : test::markup_vocabulary()));
  }
  return markup;
}

TEST(Lint, FindsCodesThatMaySayWhatWasNotMeant) {
  struct Row {
    std::u16string_view markup;
    std::string_view marks;
  };
  const Row rows[] = {
      {u"/b1a/b1b/b0/b0", "    n      n"},
      {u"/b1/i1/b0a/i0", "n     n"},
      {u"/b1/nl/b0a/t1", "n     n   n"},
      {u"a/b0/b1b/b0/b1c/b0", " n      n  n"},
      {u"a/b1", " n"},
      {u"/b1a/i1b/b0c/i0", "        o"},
      {u"/b1/i1a/b0b/i0", ""},
      {u"/f2a/b1b/f0/f1c/b0/f0", "        o"},
      {u"/f2/f1a/f0/f1b/f2c/f0/f2d/f0", "   n              n  n"},
      {u"/f3/f1/f0/f2a/f0", "n  n  n"},
      {u"/y1a/y3b", "    c"},
      {u"~/b1~~/c0/b1/r1/z1/B1/b2//1/1a", "e        c  r  u  u  u"},
      {u"//b0c1 ~/c0/b1a~/c0/b0//b0/b0b1", "                          n"},
      {u"//i0b/u0/nl/i0x~/c0", " n   n     n    n"},
      {u"//i0b/u01", " n"},
      {u"//b1b/i01/b0", "     n"},
      {u"/c1~/c0/c1/b1x/b0/c0", ""},
      {u"/y2a\r/y3\n/y0/y2b/y0", ""},
      {u"/p1a/r0b/p1c/p0/p0", "    r          n"},
      {u"/p1a/i1b/r0c/p1d/p0", "    c   r       o"},
  };
  for (const Row& row : rows) EXPECT_EQ(marked(row.markup), row.marks) << test::shown(row.markup);
}

TEST(Lint, CountsLinesAndColumnsAsEditorsDo) {
  const auto findings = findings_in(u"a\r\nb\rc/nl\n\U0001F600/z1/z2\n\n/b1/nl\r/b0x");
  const std::pair<std::size_t, std::size_t> places[] = {{4, 3}, {4, 6}, {6, 1}, {7, 1}};
  ASSERT_EQ(findings.size(), std::size(places));
  for (std::size_t i = 0; i < findings.size(); ++i) {
    EXPECT_EQ(std::pair(findings[i].line, findings[i].column), places[i]);
  }
}

TEST(Lint, FindsFontsAndColorsThatTheTablesLack) {
  QELIndexFonts fonts;
  fonts.put_Font(2, u"");
  fonts.put_Font(3, u"<nOne>");
  QELIndexColors colors;
  colors.put_Color(5, colors.get_DefaultColor());
  EXPECT_EQ(marked(u"/f1a/f2b/f3c/f9d/f0/y1e/y5f/y0", {&fonts, &colors}),
            "    f   f   f          y");
}

TEST(Normalize, SpellsMarkupInTheShortestWay) {
  struct Row {
    std::u16string_view markup, shortest;
  };
  const Row rows[] = {
      {u"/b1/i0a/b1b/i1/i0/b0", u"/b1ab/b0"},
      {u"/f1a/f0/f3b/f0/f2c/f0", u"/f1a/f3b/f0/f2c/f0"},
      {u"/b1/nl/b0a/i1 /i0b", u"/nla/i1 /i0b"},
      {u"/i1/b1a/b0/i0/f2/y2b/y0/f0", u"/b1/i1a/i0/b0/y2/f2b/f0/y0"},
      {u"//b0b1 //b0c1 //i0b/i01", u"~/b1 //b0c1 ~/b1"},
      {u"~/c0/b1/c1a~/c0/b0/nl/c0~/c0/i1b", u"~/c1/b1a~/nl/c0/b0~/c0/i1b"},
      {u"a\r\nb\r/b0\nc/nl", u"a\nb\n\nc/nl"},
      {u"/b1a/i1", u"/b1a"},
      {u"a//b0", u"a/"},
      {u"/p1a/r0b/p1c/p0/p0", u"/p1a/r0b/p1c/p0"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(test::shown(normalized(row.markup)), test::shown(row.shortest));
  }
}

TEST(Normalize, KeepsEveryCharacterInItsStyleAndIsNeverLonger) {
  test::Random random(test::base_seed());
  SCOPED_TRACE(random.describe());
  for (int i = 0; i < 40'000; ++i) {
    const std::u16string markup = random_markup(random);
    SCOPED_TRACE(test::shown(markup));
    ASSERT_TRUE(are_equal(without_effectless_codes(markup), markup));
    const std::u16string shortest = normalized(markup);
    SCOPED_TRACE(test::shown(shortest));
    ASSERT_TRUE(are_equal(shortest, markup));
    ASSERT_LE(shortest.size(), markup.size());
    ASSERT_EQ(normalized(shortest), shortest);
    ASSERT_EQ(without_effectless_codes(shortest), shortest);
    // Texts that are written anew from their runs are closed, and have "/nl" for every break.
    StyleDecoder decoder;
    decoder.put_Lossless(true);
    decoder.put_QELText(markup);
    const std::u16string rewritten = decoder.get_QELText();
    decoder.put_QELText(shortest);
    ASSERT_EQ(normalized(decoder.get_QELText()), normalized(rewritten));
  }
}

}  // namespace
}  // namespace qel::convert
