#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "qel/base/CaseMapping.h"
#include "qel/model/StyleDecoder.h"
#include "qel/text/TextCase.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel {
namespace {

using SpanMember = std::u16string (*)(std::u16string_view, std::int16_t, std::int16_t, Way);

struct SpanRow {
  SpanMember member;
  std::u16string_view text;
  int start, length;
  std::u16string_view expected;
};

void expect_rows(const std::vector<SpanRow>& rows) {
  for (const SpanRow& row : rows) {
    EXPECT_EQ(row.member(row.text, static_cast<std::int16_t>(row.start),
                         static_cast<std::int16_t>(row.length), Way::stated),
              row.expected)
        << test::shown(row.text) << " " << row.start << "," << row.length;
  }
}

TEST(TextCase, ConvertsSpans) {
  const SpanMember lower = &TextCase::LowerCase;
  const SpanMember upper = &TextCase::UpperCase;
  const SpanMember change = &TextCase::ChangeCase;
  expect_rows({
      {lower, u"/b1ABC/b0DEF", 0, -1, u"/b1abc/b0def"},
      {upper, u"abcdefgh", 2, 3, u"abCDEfgh"},
      {upper, u"ab/b1cd/b0ef", 1, 4, u"aB/b1CD/b0Ef"},
      {upper, u"abc", 1, 99, u"aBC"},
      {upper, u"abc", 1, 0, u"aBc"},
      {lower, u"ABC", 0, 0, u"aBC"},
      {change, u"aBc", 1, 0, u"aBc"},
      {change, u"aBc", 0, 0, u"aBc"},
      {change, u"aB1", 0, -1, u"Ab1"},
      {change, u"\u01C4\u01C5\u01C6", 0, -1, u"\u01C6\u01C5\u01C4"},  // title case stays
      {upper, u"\u03BF\u03B4\u03CC\u03C2 \xD801", 0, -1, u"\u039F\u0394\u038C\u03A3 \xD801"},
      // The walk stops where the numbers say, whether they make sense or not.
      {upper, u"abcdef", 1, -5, u"aBCDEF"},
      {upper, u"abcdef", -2, 4, u"ABcdef"},
      {upper, u"a~/b1b/x1", 0, -1, u"A~/b1B/X1"},
      {change, u"~/f3~/y0<c1]", 0, -1, u"~/f3~/y0<C1]"},
      {upper, u"/y2hid/y0/y1ign", 0, -1, u"/y2HID/y0/y1IGN/y0"},
  });
}

TEST(TextCase, RaisesWords) {
  struct Row {
    std::u16string_view text;
    int start, length;
    bool list;
    std::u16string_view expected;
  };
  const Row rows[] = {
      {u"the LORD of the rings", 0, -1, true, u"The Lord of the Rings"},
      {u"the LORD of the rings", 1, -1, false, u"The Lord Of The Rings"},
      {u"what, from. (the) end for!", 0, -1, true, u"What, from. (the) End For!"},
      {u"a \"the\" \u201Con\u201D 'by' \u2018tis {x} [y]", 0, -1, true,
       u"A \"the\" \u201Con\u201D 'by' \u2018Tis {X} [Y]"},
      {u"1ST o'clock WELL-known )x -y", 0, -1, false, u"1st O'clock Well-known )X -Y"},
      {u"x\ty\rz\nw/nlv", 0, -1, false, u"X\tY\rZ\nWV"},
      {u"o/b1ne t/b0wo/i1 three", 0, -1, false, u"O/b1ne T/b0wo/i1 Three/i0"},
      {u"~/b1bold on~/b0 ~/i1", 0, -1, true, u"~/b1bold On~/b0 ~/i1"},
      {u"\u201EHALLO\u201C \u00ABon\u00BB \u00BFqu\u00C9? -\u00A1no! \u2014 \U0001F600ja", 0, -1,
       true, u"\u201EHallo\u201C \u00ABon\u00BB \u00BFQu\u00E9? -\u00A1No! \u2014 \U0001F600Ja"},
      {u"ONE TWO three FOUR", 5, 6, false, u"ONE Two Three FOUR"},
      {u"ONE TWO of FOUR", 4, 6, true, u"ONE Two of FOUR"},
      {u"\u043C\u0418\u0440 \U00010428\U00010400", 0, -1, true,
       u"\u041C\u0438\u0440 \U00010400\U00010428"},
  };
  const TextCase letters;
  for (const Row& row : rows) {
    EXPECT_EQ(letters.TitleCase(row.text, static_cast<std::int16_t>(row.start),
                                static_cast<std::int16_t>(row.length), row.list),
              row.expected)
        << test::shown(row.text);
  }
}

TEST(TextCase, RaisesTheFirstLetter) {
  const SpanMember initial = &TextCase::InitialCap;
  const SpanMember first_upper = &TextCase::FirstToUpper;
  const SpanMember first_lower = &TextCase::FirstToLower;
  expect_rows({
      {initial, u"hELLO World", 0, -1, u"Hello world"},
      {initial, u" \u201C(\u2018/b1hELLO", 0, -1, u" \u201C(\u2018/b1Hello/b0"},
      {initial, u"- \u00BF/i1\u00ABHOLA\u00BB", 0, -1, u"- \u00BF/i1\u00ABHola\u00BB/i0"},
      {initial, u"~/b1BOLD", 0, -1, u"~/b1bold"},
      {initial, u"ABC DEF", 4, 2, u"ABC DeF"},
      {initial, u"\U00010428\U00010400", 0, -1, u"\U00010400\U00010428"},
      {first_upper, u" \"aB Cd", 0, -1, u" \"AB Cd"},
      {first_upper, u"ab cd", 2, 3, u"ab Cd"},
      {first_lower, u"[AB/i1CD", 0, -1, u"[aB/i1CD/i0"},
      {first_lower, u"ABCD", 2, 2, u"ABcD"},
  });
  EXPECT_EQ(TextCase::AutoInitialCap(u"/i1oNE/i0 TWO"), u"/i1One/i0 two");
}

TEST(TextCase, ChangesTheVisibleTextOfRtfOnly) {
  struct Row {
    std::u16string_view rtf;
    std::u16string_view title, initial;
  };
  const Row rows[] = {
      {u"the end OF all", u"The End of All", u"The end of all"},
      {u"{\\rtf1{\\fonttbl{\\f0 arial;}}{\\info{\\title a title;}}{\\*\\gen some;}"
       u"\\pard\\f0\\fs20 one {\\b tW}O\\par of\\line me\\tab you\\par\r\n}\r\nover and OUT",
       u"{\\rtf1{\\fonttbl{\\f0 arial;}}{\\info{\\title a title;}}{\\*\\gen some;}"
       u"\\pard\\f0\\fs20 One {\\b Tw}o\\par of\\line Me\\tab You\\par\r\n}\r\nover and OUT",
       u"{\\rtf1{\\fonttbl{\\f0 arial;}}{\\info{\\title a title;}}{\\*\\gen some;}"
       u"\\pard\\f0\\fs20 One {\\b tw}o\\par of\\line me\\tab you\\par\r\n}\r\nover and OUT"},
      {u"\\b on\\b0e {\\i two}} three", u"\\b On\\b0e {\\i Two}} Three",
       u"\\b On\\b0e {\\i two}} three"},
      {u"\\'e9t\\'C9 \\'ff\\'FF \\'b5\\'41", u"\\'c9t\\'e9 \\'9f\\'FF \\'b5\\'61",
       u"\\'c9t\\'e9 \\'ff\\'FF \\'b5\\'61"},
      {u"\\u1078?\\u1046 ?\\u1046\\'c6 \\u-10239?\\u-9175?",
       u"\\u1046?\\u1078 ?\\u1078\\'c6 \\u-10239?\\u-9215?",
       u"\\u1046?\\u1078 ?\\u1078\\'c6 \\u-10239?\\u-9175?"},
      {u"{\\uc2\\u1078 zz}a{\\v HID}B \\ldblquote x\\~y",
       u"{\\uc2\\u1046 zz}a{\\v HID}b \\ldblquote X\\~y",
       u"{\\uc2\\u1046 zz}a{\\v HID}b \\ldblquote x\\~y"},
      {u"a/b1B/i0 /y4of/nlc \\{d", u"A/b1b/i0 /y4of/nlC \\{D", u"A/b1b/i0 /y4of/nlc \\{d"},
      {u"{\\upr{old}{\\*\\ud new}}{\\field{\\*\\fldinst LINK a}{\\fldrslt click me}}",
       u"{\\upr{old}{\\*\\ud New}}{\\field{\\*\\fldinst LINK a}{\\fldrslt click Me}}",
       u"{\\upr{old}{\\*\\ud New}}{\\field{\\*\\fldinst LINK a}{\\fldrslt click me}}"},
      {u"{\\pict\\bin4 ab}c d}e{\\listtext 1.\\tab}f\\",
       u"{\\pict\\bin4 ab}c d}E{\\listtext 1.\\tab}F\\",
       u"{\\pict\\bin4 ab}c d}E{\\listtext 1.\\tab}f\\"},
      // Letters of other code pages are read, but only 1252 is written.
      {u"{\\rtf1\\ansicpg1251 \\'ff\\'df \\'e9 abc}", u"{\\rtf1\\ansicpg1251 \\'ff\\'df \\'e9 Abc}",
       u"{\\rtf1\\ansicpg1251 \\'ff\\'df \\'e9 abc}"},
  };
  const TextCase letters;
  for (const Row& row : rows) {
    EXPECT_EQ(test::shown(letters.AutoTitleCaseRTF(row.rtf)), test::shown(row.title));
    EXPECT_EQ(test::shown(TextCase::AutoInitialCapRTF(row.rtf)), test::shown(row.initial));
  }
}

TEST(TextCase, LowersTheWordsOfItsList) {
  TextCase letters;
  letters.put_IgnoredWordList(u"of, the,Etc,vs.,,");
  EXPECT_EQ(letters.get_IgnoredWordList(), u"of, the,Etc,vs.,,");
  EXPECT_EQ(letters.AutoTitleCase(u"a of the etc VS. vs in"), u"A of The Etc vs. Vs In");
}

TEST(TextCase, TellsCharacters) {
  struct Row {
    std::u16string_view text;
    bool alphabet, quote, whitespace, left_quote;
  };
  const Row rows[] = {
      {u"", false, true, false, false},        {u"Ab", true, false, false, false},
      {u"A1", false, false, false, false},     {u"\u0416\U00010400", true, false, false, false},
      {u"\u00FF", false, false, false, false},  // its upper case has the higher code
      {u"\u00DF", false, false, false, false}, {u"ab", true, false, false, false},
      {u" ", false, false, true, false},       {u"{", false, false, true, false},
      {u"[", false, false, true, false},       {u"\t", false, false, false, false},
      {u"\"", false, true, true, true},        {u"'", false, true, false, true},
      {u"\u201C", false, true, true, true},    {u"\u2019", false, true, false, false},
      {u"\u201E", false, true, false, false},  {u"\"'", false, true, false, true},
      {u"'\"", false, false, true, true},      {u"\u2018x", false, false, false, false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(test::shown(row.text));
    EXPECT_EQ(TextCase::IsAlphabet(row.text), row.alphabet);
    EXPECT_EQ(TextCase::IsQuote(row.text), row.quote);
    EXPECT_EQ(TextCase::IsWhitespace(row.text), row.whitespace);
    EXPECT_EQ(TextCase::IsLeftQuote(row.text), row.left_quote);
  }
}

/// The codes and the text, ignoring the case of whatever is not a code.
std::u16string folded(std::u16string_view markup) {
  StyleDecoder decoder;
  decoder.put_QELText(markup);
  std::u16string out;
  for (const auto& segment : *decoder.get_Segments()) {
    out.append(decoder.OnCodes(segment->get_Style())).append(to_lower(to_upper(segment->text())));
  }
  return out;
}

TEST(TextCase, ChangesNothingButTheCase) {
  std::vector<std::u16string_view> vocabulary = test::markup_vocabulary();
  std::erase(vocabulary, u"/B1");  // would become a code
  const TextCase letters;
  for (std::uint32_t i = 0; i < 1500; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    const std::u16string markup = random.text(vocabulary, random.below(30));
    StyleDecoder decoder;
    decoder.put_QELText(markup);
    const std::u16string encoded = decoder.get_QELText();
    const auto start = static_cast<std::int16_t>(random.below(10));
    const auto length = static_cast<std::int16_t>(random.below(10) + 1);
    StyleDecoder divided;
    divided.put_QELText(markup);
    divided.DivideSegmentsGivenSelStartAndLength(start, length);
    for (const SpanMember member :
         {&TextCase::LowerCase, &TextCase::UpperCase, &TextCase::ChangeCase, &TextCase::InitialCap,
          &TextCase::FirstToLower, &TextCase::FirstToUpper}) {
      const std::u16string converted = member(markup, 0, -1, Way::stated);
      ASSERT_EQ(converted.size(), encoded.size()) << test::shown(markup);
      ASSERT_EQ(folded(converted), folded(encoded)) << test::shown(markup);
      ASSERT_EQ(to_lower(member(markup, start, length, Way::stated)),
                to_lower(divided.get_QELText()))
          << test::shown(markup);
    }
    const std::u16string title = letters.AutoTitleCase(markup);
    ASSERT_EQ(folded(title), folded(encoded)) << test::shown(markup);
    ASSERT_EQ(TextCase::LowerCase(TextCase::UpperCase(markup, 0, -1), 0, -1),
              TextCase::LowerCase(TextCase::LowerCase(markup, 0, -1), 0, -1));
    ASSERT_EQ(to_lower(letters.AutoTitleCaseRTF(markup)), to_lower(markup));
  }
}

}  // namespace
}  // namespace qel
