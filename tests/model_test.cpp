#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

#include "qel/base/Error.h"
#include "qel/model/StyleDecoder.h"
#include "qel/model/TextAttribute.h"
#include "qel/model/cReplaceData.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel {
namespace {

TEST(QELCode, IsToldByLetterAndDigitForEachKind) {
  struct Row {
    std::u16string_view code;
    std::string_view accepted_by;  // digits of the flag values
  };
  const Row rows[] = {{u"/b1", "01234"},  {u"/b0", "01235"}, {u"/k1", "01234"}, {u"/t0", "01235"},
                      {u"/c1", "023"},    {u"/c0", "023"},   {u"/f0", "01235"}, {u"/f5", "0134"},
                      {u"/y5", "0124"},   {u"/y0", "01235"}, {u"/y1", "01234"}, {u"/nl", "012345"},
                      {u"/r1", "23"},     {u"/z0", "23"},    {u"/b2", ""},      {u"/B1", "23"},
                      {u"/f", ""},        {u"b1", ""},       {u"", ""},         {u"ab1", ""},
                      {u"/bxx1", "01234"}};
  for (const Row& row : rows) {
    for (std::int32_t flag = 0; flag <= 5; ++flag) {
      const bool expected =
          row.accepted_by.find(static_cast<char>('0' + flag)) != std::string::npos;
      EXPECT_EQ(IsQELCode(row.code, flag), expected) << test::shown(row.code) << " flag " << flag;
    }
  }
  EXPECT_TRUE(IsQELCode(u"/nl", 6)) << "the line code comes before the flags";
  EXPECT_FALSE(IsQELCode(u"/b1", 6));
  EXPECT_FALSE(IsQELCode(u"/b1", -1));
}

iStyle full_style() {
  iStyle style;
  style.put_All(
      u"Arial<Font:Rec>8<Font:Rec>True<Font:Rec>1<Font:Rec>-1<Font:Rec>TRUE<Font:Rec>True"
      u"<Font:Rec>2<Font:Rec>4<Font:Rec>True<Font:Rec>true<Font:Rec>True");
  return style;
}

TEST(Style, BuildsCodesInTheirOrders) {
  const iStyle plain;
  const iStyle all = full_style();
  EXPECT_EQ(iStyle::OnCodes(all), u"/b1/i1/u1/c1/k1/s1/p1/t1/y4/f2");
  EXPECT_EQ(iStyle::OffCodes(all), u"/f0/y0/t0/p0/s0/k0/c0/u0/i0/b0");
  EXPECT_EQ(iStyle::DifferentOnCodes(all, plain), iStyle::OnCodes(all));
  EXPECT_EQ(iStyle::DifferentOffCodes(all, &plain), iStyle::OffCodes(all));
  EXPECT_EQ(iStyle::v6OnCodes(all), u"/b1/i1/u1/c1/s1/p1/f2");
  EXPECT_EQ(iStyle::v6OffCodes(all), u"/f0/p0/s0/c0/u0/i0/b0");
  EXPECT_EQ(iStyle::v6DifferentOffCodes(all, nullptr), iStyle::v6OffCodes(all));
}

TEST(Style, PassesFromFontToFontAndColorToColor) {
  struct Row {
    int font, color, last_font, last_color;
    std::u16string_view on, off_of_last, v6_on, v6_off_of_last;
  };
  const Row rows[] = {
      {3, 1, 3, 0, u"/f0/y1", u"", u"/y1", u""},  // the font is lost where a colour comes on
      {3, 1, 3, 1, u"/f0", u"", u"", u""},
      {0, 1, 0, 0, u"/y1", u"", u"/y1", u""},
      {2, 5, 1, 4, u"/y5/f2", u"/f0/y0", u"/f2", u"/f0"},
      {1, 2, 5, 1, u"/y2/f1", u"/f0/y0", u"/z1/f1", u"/f0/y0"},
      {5, 3, 1, 2, u"/y3/f5", u"/f0/y0", u"", u"/f0/z0"},
      {12, -1, 2, 3, u"", u"/f0/y0", u"", u"/f0"},
      {12, 1, 12, 0, u"/y1", u"", u"/y1", u""},  // an index out of range writes nothing
      {0, 0, 9, 9, u"", u"/f0/y0", u"", u"/f0"},
  };
  for (const Row& row : rows) {
    iStyle style, last;
    style.FontID = static_cast<std::int16_t>(row.font);
    style.ColorID = static_cast<std::int16_t>(row.color);
    last.FontID = static_cast<std::int16_t>(row.last_font);
    last.ColorID = static_cast<std::int16_t>(row.last_color);
    EXPECT_EQ(iStyle::DifferentOnCodes(style, last), row.on);
    EXPECT_EQ(iStyle::DifferentOffCodes(last, &style), row.off_of_last);
    EXPECT_EQ(iStyle::v6DifferentOnCodes(style, last), row.v6_on);
    EXPECT_EQ(iStyle::v6DifferentOffCodes(last, &style), row.v6_off_of_last);
  }
}

TEST(Style, RecordKeepsWhatDoesNotConvert) {
  iStyle style;
  style.Bold = true;
  style.TitleCase = true;
  style.put_All(u"Times New Roman<Font:Rec>10.5");
  style.put_All(
      u"N<Font:Rec>big<Font:Rec>no<Font:Rec> 2e0 <Font:Rec>0x1<Font:Rec><Font:Rec><Font:Rec>"
      u"40000<Font:Rec>2.5<Font:Rec>yes");
  // 40000 does not fit 16 bits, and 2.5 rounds half to even.
  EXPECT_EQ(style.get_All(),
            u"N<Font:Rec>10.5<Font:Rec>True<Font:Rec>True<Font:Rec>False<Font:Rec>False<Font:Rec>"
            u"False<Font:Rec>0<Font:Rec>2<Font:Rec>False<Font:Rec>False<Font:Rec>False");
  style.Name = u"A<Font:Rec>100000";
  style.put_All(style.Name);
  EXPECT_EQ(style.get_All().substr(0, 17), u"A<Font:Rec>100000") << "no exponent";
  style.Initialize();
  EXPECT_TRUE(style.TitleCase);
  style.TitleCase = false;
  EXPECT_EQ(style, iStyle());
}

template <class Record>
void expect_reserved_colors() {
  Record record;
  record.put_Note(true);
  EXPECT_EQ(record.ColorID, 3);
  EXPECT_TRUE(record.get_Note());
  EXPECT_FALSE(record.get_Hidden());
  record.put_Ignored(true);
  EXPECT_EQ(record.ColorID, 1);
  EXPECT_FALSE(record.get_Note());
  record.ColorID = 7;
  record.put_Hidden(false);
  EXPECT_EQ(record.ColorID, 0) << "whatever the colour was";
}

TEST(Records, ReservedColorsAreTheColorIndex) {
  expect_reserved_colors<iStyle>();
  expect_reserved_colors<cReplaceData>();
}

TEST(ReplaceData, RecordReadsTolerantly) {
  cReplaceData data;
  const std::u16string fresh = data.get_All();
  data.put_All(u"x<Repl:Data>False<Repl:Data>-0.0");
  EXPECT_EQ(data.get_All().substr(0, 36), u"True<Repl:Data>False<Repl:Data>False");
  data.put_All(
      u"0<Repl:Data>0<Repl:Data>0<Repl:Data>1<Repl:Data>1<Repl:Data>1<Repl:Data>1<Repl:Data>1"
      u"<Repl:Data>1<Repl:Data>-7<Repl:Data>12<Repl:Data>surplus");
  EXPECT_EQ(data.get_All(),
            u"False<Repl:Data>False<Repl:Data>False<Repl:Data>True<Repl:Data>True<Repl:Data>True"
            u"<Repl:Data>True<Repl:Data>True<Repl:Data>True<Repl:Data>-7<Repl:Data>12");
  data.Initialize();
  EXPECT_EQ(data.get_All(), fresh);
}

std::u16string texts_of(const SegmentCollection& segments) {
  std::u16string texts;
  for (const auto& segment : segments) texts.append(segment->get_Text()).push_back(u'|');
  return texts;
}

TEST(Segments, KeepOrderAndCopiesOfStyles) {
  SegmentCollection segments;
  iStyle style;
  style.Bold = style.TitleCase = true;
  style.Name = u"Odd<Font:Rec>3";
  EXPECT_EQ(segments.InsertAfter(u"x", style, 0), nullptr);
  const auto b = segments.Add(u"b", style);
  style.Bold = false;
  EXPECT_TRUE(b->get_Style().Bold) << "later changes do not reach the segment";
  EXPECT_FALSE(b->get_Style().TitleCase);
  EXPECT_EQ(b->get_Style().Name, u"Odd") << "the copy goes through the record text";
  EXPECT_EQ(segments.InsertBefore(u"x", style, 2), nullptr);
  segments.InsertBefore(u"a", style, 1);
  segments.InsertAfter(u"d", style, 2);
  const auto c = segments.InsertAfter(u"c", style, 2);
  EXPECT_EQ(texts_of(segments), u"a|b|c|d|");
  EXPECT_EQ(segments.IndexOf(c), 3);
  EXPECT_EQ(segments.IndexOf(std::make_shared<Segment>(u"c", c->get_Style())), 0);
  EXPECT_EQ(segments.Item(5), nullptr);
  segments.Remove(2);
  segments.Remove(100);
  segments.Remove(0);
  EXPECT_EQ(texts_of(segments), u"c|") << "beyond the end the last goes, at 0 the first";
  segments.Clear();
  EXPECT_EQ(c->get_Text(), u"c") << "shared with the caller";
}

std::uint32_t error_number_of_remove(SegmentCollection& segments, std::int32_t index) {
  try {
    segments.Remove(index);
  } catch (const Error& error) {
    return error.number();
  }
  return 0;
}

TEST(Segments, RemovingWhatIsNotThereIsAnError) {
  SegmentCollection segments;
  segments.Add(u"a", iStyle());
  EXPECT_EQ(error_number_of_remove(segments, -1), 9U);
  EXPECT_EQ(texts_of(segments), u"a|");
  segments.Clear();
  EXPECT_EQ(error_number_of_remove(segments, 0), 9U);
  EXPECT_EQ(segments.Count(), -1);
  EXPECT_EQ(segments.Item(-1), nullptr);
  EXPECT_NE(segments.Add(u"a", iStyle()), nullptr) << "lands in the unused slot";
  EXPECT_EQ(segments.Count(), 0);
  segments.Clear();
  segments.Add(u"b", iStyle());
  EXPECT_EQ(texts_of(segments), u"b|");
}

struct Decoded {
  std::u16string_view markup;
  std::u16string_view runs;     // texts, each with its on codes in brackets before it
  std::u16string_view encoded;  // empty when it is the markup itself
};

std::u16string runs_of(StyleDecoder& decoder) {
  std::u16string runs;
  for (std::int32_t i = 1; i <= decoder.get_SegmentCount(); ++i) {
    runs.append(u"[").append(decoder.OnCodes(*decoder.SegmentStyle(i))).append(u"]");
    runs.append(decoder.SegmentText(i));
  }
  return runs;
}

static_assert(!std::is_copy_constructible_v<StyleDecoder>, "copies would share their segments");

TEST(Decoder, DecodesRunsAndEncodesThemBack) {
  const Decoded rows[] = {
      {u"", u"", u""},
      {u"/y5A/y3/y1B/y0C", u"[/y5]A[/y5]B[]C", u"/y5AB/y0C"},
      {u"/y1i/y0/y2h/y0/y3n", u"[/y1]i[/y2]h[/y3]n", u"/y1i/y0/y2h/y0/y3n/y0"},
      {u"line/nlnext", u"[]line[]next", u"linenext"},
      {u"/c1S/c0/k1K/k0/p1P/p0/s1S/s0/t1T/t0", u"[/c1]S[/k1]K[/p1]P[/s1]S[]T",
       u"/c1S/c0/k1K/k0/p1P/p0/s1S/s0T"},
      {u"//b1x", u"[]/[/b1]x", u"//b1x/b0"},
      {u"a~/b1b", u"[]a<b1]b", u""},
      {u"~/t0~/f7~/y0~~/k1", u"[]<t0]<f7]<y0]~<k1]", u""},
      {u"<b1]<f9]<c1]<b2]<x", u"[]<b1]<f9]<c1]<b2]<x", u"~/b1~/f9<c1]<b2]<x"},
      {u"\\\\b1", u"[]\\\\b1", u""},
  };
  StyleDecoder decoder;
  for (const Decoded& row : rows) {
    decoder.put_QELText(row.markup);
    EXPECT_EQ(runs_of(decoder), row.runs) << test::shown(row.markup);
    const std::u16string_view encoded = row.encoded.empty() ? row.markup : row.encoded;
    EXPECT_EQ(decoder.get_QELText(), encoded) << test::shown(row.markup);
  }
}

/// The style of each character; a font goes where a colour comes on while it stays, and does not
/// come back before another.
std::vector<iStyle> styles_after_encoding(StyleDecoder& decoder) {
  std::vector<iStyle> styles;
  std::int16_t last_font = 0;
  bool lost = false;
  for (const auto& segment : *decoder.get_Segments()) {
    iStyle style = segment->get_Style();
    const std::int16_t font = style.FontID;
    lost = font != 0 && font == last_font && (style.ColorID != 0 || lost);
    last_font = font;
    if (lost) style.FontID = 0;
    styles.insert(styles.end(), segment->get_Text().size(), style);
  }
  return styles;
}

TEST(Decoder, KeepsTextAndStylesThroughEncoding) {
  const std::vector<std::u16string_view> texts = {
      u"a", u"b c ", u"/x1 and/or", u"~/b1 ", u"1 < 2 ", u"\u00E9\U0001F600", u"{\\}"};
  for (std::uint32_t i = 0; i < 2000; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    std::u16string markup;
    for (std::size_t piece = random.below(20); piece > 0; --piece) {
      const std::u16string_view letters = u"biukcpst";
      const bool is_index = random.one_in(2);
      const char16_t letter =
          is_index ? u"fy"[random.below(2)] : letters[random.below(letters.size())];
      const auto digit = static_cast<char16_t>(u'0' + random.below(is_index ? 5 : 2));
      markup.append({u'/', letter, digit});
      if (!random.one_in(3)) markup.append(random.pick(texts));
    }
    StyleDecoder decoder;
    decoder.put_QELText(markup);
    const std::u16string text = decoder.get_Text();
    const std::vector<iStyle> styles = styles_after_encoding(decoder);
    std::size_t length = 0;
    for (const auto& segment : *decoder.get_Segments()) length += segment->get_Text().size();
    ASSERT_EQ(text.size(), length);

    StyleDecoder again;
    again.put_QELText(decoder.get_QELText());
    ASSERT_EQ(again.get_Text(), text) << test::shown(markup);
    std::vector<iStyle> read;
    for (const auto& segment : *again.get_Segments()) {
      read.insert(read.end(), segment->get_Text().size(), segment->get_Style());
    }
    ASSERT_EQ(read, styles) << test::shown(markup);
  }
}

TEST(Decoder, WritesTheOtherForms) {
  StyleDecoder decoder;
  decoder.put_QELText(u"  /b1Two  /b0  words/nl/y1 ign/y0/y2hid/y0/y3 note/k1x/k0/y0~/b1 /nl");
  struct Row {
    std::int32_t flags;
    bool trim, single;
    std::u16string_view expected;
  };
  const Row rows[] = {
      {ofPlainText, false, false, u"  Two    words ignhid notex~/b1 "},
      {ofPlainText, true, true, u"Two words ignhid notex~/b1"},
      {ofPlainText | ofWithoutIgnored | ofWithoutHidden, true, true, u"Two words notex~/b1"},
      {ofPlainText | ofWithoutNote | ofLineCodes, false, false,
       u"  Two    words\r\n ignhid~/b1 \r\n"},
      {ofMarkup, true, true, u"/b1Two /b0words/y1 ign/y0/y2hid/y0/y3 note/k1x/y0/k0~/b1"},
      {ofMarkup | ofLineCodes | ofWithoutIgnored | ofWithoutHidden | ofWithoutNote, false, false,
       u"  /b1Two  /b0  words/nl~/b1 /nl"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(decoder.GetQELText(row.flags, row.trim, row.single), row.expected) << row.flags;
  }
  EXPECT_EQ(decoder.get_Text(), rows[0].expected);
  EXPECT_EQ(decoder.get_QELTextv6(), u"  /b1Two  /b0  words/y1 ign/y0/z1hid/z0 notex~/b1 ");
  EXPECT_EQ(decoder.GetQELTextv6(ofWithoutHidden | ofLineCodes, true, false),
            u"/b1Two  /b0  words/nl/y1 ign/y0 notex~/b1/nl");
  EXPECT_EQ(decoder.get_QELTextWithoutIgnored(),
            u"  /b1Two  /b0  words/y2hid/y0/y3 note/k1x/y0/k0~/b1 ");
  decoder.put_QELText(u"/nl/nl");
  EXPECT_EQ(decoder.GetQELText(ofLineCodes, false, false), u"/nl/nl");
  decoder.put_QELText(u"/b1many words/b0  and a long last run");
  EXPECT_EQ(decoder.GetQELText(ofMarkup, true, true), u"/b1many words/b0 and a long last run");
  decoder.put_Lossless(true);
  decoder.put_QELText(u"a\r\nb\rc\n/r1d~/b1/b1~");
  EXPECT_EQ(decoder.get_QELText(), u"a/nlb/nlc/nl/r1d~/b1/b1~/c0/b0") << "what is markup stays";
  decoder.get_Segments()->Item(1)->put_Text(u"/r1\r\n");
  EXPECT_EQ(decoder.get_QELText(), u"//b0r1/nl/nlb/nlc/nl/r1d~/b1/b1~/c0/b0");
  EXPECT_EQ(decoder.RemoveLeadingPunctuation(u"(~/b1) x"), u"~/b1) x");
}

TEST(Decoder, WritesCustomCodes) {
  StyleDecoder decoder;
  decoder.put_QELText(u"/b1bold/nl/i1both/i0/b0 & /y4rest");
  EXPECT_EQ(decoder.get_TextCustom(), u"boldboth & rest");
  decoder.SetCustomCodes(
      u"/b1=<b class=\"x\">\t/b0=</b>\t/nl=<br>\tbad\t/q1=no\t/y4=(\t/y4={\t/y0=}");
  EXPECT_EQ(decoder.get_TextCustom(), u"<b class=\"x\">bold<br>both</b> & {rest}");
  decoder.SetCustomCodes(u"/b1=<b1]\t/nl=<");
  decoder.put_QELText(u"/b1x~/b0/nlb1]");
  EXPECT_EQ(decoder.get_TextCustom(), u"<b1]x~/b0<b1]") << "the host's own spelling stays";
  decoder.SetCustomCodes(
      u"nested\t/b1=<b>\t/b0=</b>\t/i1=<i>\t/i0=</i>\t/f2=<tt>\t/f0=</tt>\t/"
      u"nl=<br>\t<=&lt;\t&=&amp;");
  decoder.put_QELText(u"/b1a/f2/i1b/k1/b0&/nl<b1]/y4c/f0d/b1e/i0");
  EXPECT_EQ(decoder.get_TextCustom(),
            u"<b>a<i><tt>b</tt></i></b><i><tt>&amp;<br>~/b1c</tt>d<b>e</b></i>");
  decoder.put_QELText(u"/b1/i1a/i0/nlb/b0/nlc/i1d/nl");
  EXPECT_EQ(decoder.get_TextCustom(), u"<b><i>a</i><br>b</b><br>c<i>d</i><br>");
  decoder.SetCustomCodes(u"/b0=</b>");
  iStyle style;
  style.Bold = style.Italic = true;
  EXPECT_EQ(decoder.OnCodes(style), u"/b1/i1");
  EXPECT_EQ(decoder.OnCodes(style, u"/i1=I"), u"I");
  EXPECT_EQ(decoder.OffCodes(style), u"/i0/b0");
  EXPECT_EQ(decoder.CustomOffCodes(style), u"</b>");
}

TEST(Decoder, DividesSpans) {
  struct Row {
    std::u16string_view markup;
    int start, length;
    std::u16string_view texts;
    int first, last;
  };
  const Row rows[] = {
      {u"abc/b1def", 2, 2, u"ab|c|d|ef|", 2, 3},
      {u"abcdefgh", 2, 3, u"ab|cde|fgh|", 2, 2},
      {u"abc/b1def", 3, 3, u"abc|def|", 2, 2},
      {u"abc", 9, 1, u"abc|", 0, -7},
      {u"abc", 0, 0, u"|abc|", 1, 1},
      {u"abc", 1, 0, u"a|bc|", 2, 2},
      {u"abc", -2, 3, u"a|bc|", 0, -7},
      {u"", 0, 0, u"", 0, -7},
      {u"ab/b1cd/b0ef", 1, 4, u"a|b|cd|e|f|", 2, 4},
  };
  for (const Row& row : rows) {
    StyleDecoder decoder;
    decoder.put_QELText(row.markup);
    std::int16_t last = -7;
    const auto start = static_cast<std::int16_t>(row.start);
    const auto length = static_cast<std::int16_t>(row.length);
    EXPECT_EQ(decoder.GetSegmentIndexGivenStartAndLength(start, length, last), row.first);
    EXPECT_EQ(last, row.last);
    EXPECT_EQ(texts_of(*decoder.get_Segments()), row.texts) << row.start << "," << row.length;
    EXPECT_EQ(decoder.GetSegmentGivenStartAndLength(start, length),
              decoder.get_Segments()->Item(row.first));
  }
}

TEST(Decoder, StylesSpans) {
  StyleDecoder decoder;
  const auto restyled = [&](std::u16string_view markup, int start, int length, auto... arguments) {
    decoder.put_QELText(markup);
    if constexpr (sizeof...(arguments) == 1) {
      decoder.ApplyStyleToText(static_cast<std::int16_t>(start), static_cast<std::int16_t>(length),
                               arguments...);
    } else {
      decoder.ApplyAttributeToSegmentedText(static_cast<std::int16_t>(start),
                                            static_cast<std::int16_t>(length), arguments...);
    }
    return decoder.get_QELText();
  };
  iStyle italic;
  italic.Italic = true;
  EXPECT_EQ(restyled(u"ab/b1cd/b0ef", 1, 4, italic), u"a/i1bcde/i0f");
  EXPECT_EQ(restyled(u"ab/b1cd", 3, 99, italic), u"ab/b1c/b0/i1d/i0");
  EXPECT_EQ(restyled(u"ab/i1cd/i0", 1, 2, taBold, true), u"a/b1b/i1c/b0d/i0");
  EXPECT_EQ(restyled(u"/b1abcd", 1, 2, taBold, false), u"/b1a/b0bc/b1d/b0");
  EXPECT_EQ(restyled(u"/y4abc", 1, 1, taColor1, false), u"/y4a/y0b/y4c/y0");
  EXPECT_EQ(restyled(u"/b1/k1abc", 0, 2, taPlain, true), u"ab/b1/k1c/k0/b0");
  // Both halves of an escaped code that is cut stay text.
  EXPECT_EQ(restyled(u"a~/b1b", 2, 9, taColor1, false), u"a~/b1b");
  EXPECT_EQ(restyled(u"a~/b1b", 0, 2, taItalic, true), u"/i1a~/c0/i0//b0b1b");
  EXPECT_EQ(restyled(u"a~/b1b", 2, 4, taBold, true), u"a~/c0/b1//b1b1b/b0");
  EXPECT_EQ(restyled(u"a~/b1b", 3, 3, taBold, true), u"a~//b1b1b/b0");
  EXPECT_EQ(restyled(u"~/f3~/b1", 1, 4, taBold, true), u"~/c0/b1//b1f3~/c0/b0//b0b1");
}

TEST(Words, AreRunsOfNonBlanksWhateverTheSegments) {
  StyleDecoder decoder;
  decoder.put_QELText(u" on/b1ce /b0upon\ta\u00A0b\r\n/nlti/i1m/i0e ");
  ASSERT_EQ(decoder.get_WordCount(), 4);
  EXPECT_EQ(decoder.WordText(1), u"once");
  EXPECT_EQ(decoder.WordText(4), u"time");
  EXPECT_EQ(decoder.WordText(5), u"");
  EXPECT_EQ(decoder.WordSegmentCount(4), 3);
  EXPECT_EQ(decoder.WordSegment(4, 2)->get_Text(), u"m");
  EXPECT_EQ(decoder.WordSegmentIndex(4, 2),
            decoder.get_Segments()->IndexOf(decoder.WordSegment(4, 2)));
  EXPECT_EQ(decoder.WordSegment(4, 4), nullptr);
  EXPECT_EQ(decoder.WordSegmentIndex(9, 1), 0);
  decoder.DivideSegmentsGivenSelStartAndLength(2, 1);
  EXPECT_EQ(decoder.WordSegmentCount(1), 3) << "the words follow a division";
}

TEST(Words, DivideSegmentsOnRequest) {
  StyleDecoder decoder;
  const std::u16string_view markup = u"/b1No. 7: 1,000.5m/b0 \u201Cend.\u201D";
  const std::u16string_view divided[] = {u"No. 7: 1,000.5m| \u201Cend.\u201D|",
                                         u"No.| |7:| |1,000.5m| |\u201Cend.\u201D|",
                                         u"No.| |7|:| |1,000.5|m| |\u201Cend.\u201D|",
                                         u"No|.| |7|:| |1,000.5|m| |\u201C|end|.\u201D|"};
  decoder.SetQELText(markup, 0);
  const std::u16string encoded = decoder.get_QELText();
  for (std::int32_t option = -1; option <= 4; ++option) {
    decoder.SetQELText(markup, option);
    const bool divides = option >= 1 && option <= 3;
    EXPECT_EQ(texts_of(*decoder.get_Segments()), divided[divides ? option : 0]) << option;
    EXPECT_EQ(decoder.get_QELText(), encoded);
  }
}

TEST(Words, KeepEscapedCodesWhole) {
  StyleDecoder decoder;
  for (const bool lossless : {false, true}) {
    decoder.put_Lossless(lossless);
    decoder.SetQELText(u"a~/b12.~/i1 b", 3);
    EXPECT_EQ(texts_of(*decoder.get_Segments()),
              lossless ? u"a|/b1|2|.|/i1| |b|" : u"a|<b1]|2|.|<i1]| |b|");
    EXPECT_EQ(decoder.get_QELText(), u"a~/b12.~/i1 b");
  }
  decoder.put_QELText(u"a/nlb");
  EXPECT_EQ(decoder.get_WordCount(), 2) << "a line ends a word";
  EXPECT_EQ(decoder.TrimStr(u"  a /nl  b/nl"), u"a /nl  b/nl");
  decoder.put_QELText(u"  a  /nl  b ");
  EXPECT_EQ(decoder.GetQELText(ofMarkup, true, true), u"a /nl b");
}

TEST(Words, LoseBlanksAndPunctuationButNoCodes) {
  StyleDecoder decoder;
  EXPECT_EQ(decoder.TrimStr(u"/b1  /b0 /i1 a b /i0 "), u"/b1/b0/i1a b/i0");
  EXPECT_EQ(decoder.LTrimStr(u" /b1 a /b0 "), u"/b1a /b0 ");
  EXPECT_EQ(decoder.RTrimStr(u" /b1 a /b0 "), u" /b1 a/b0");
  EXPECT_EQ(decoder.get_QELText(), u" /b1 a /b0 ")
      << "the text that was given stays in the decoder";
  EXPECT_EQ(decoder.RemoveLeadingPunctuation(u"/b1\u201C(/b0[It's] 5."), u"/b1/b0It's] 5.");
  EXPECT_EQ(decoder.RemoveTrailingPunctuation(u"/i1end/i0.\u201D"), u"/i1end/i0");
  EXPECT_EQ(decoder.RemoveTrailingPunctuation(u"\u4E2D\u6587\u3002"), u"\u4E2D\u6587");
  EXPECT_EQ(decoder.RemoveLeadingPunctuation(u"(~/b1) x"), u"~/b1) x");
  EXPECT_EQ(decoder.TrimStr(u" a/nlb/nl"), u"ab");
  decoder.put_QELText(u"/nl  ");
  EXPECT_EQ(decoder.GetQELText(ofLineCodes, true, false), u"/nl");
}

}  // namespace
}  // namespace qel
