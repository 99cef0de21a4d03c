#include <gtest/gtest.h>

#include "qel/base/CaseMapping.h"
#include "qel/base/Error.h"
#include "qel/base/Records.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"
#include "qel/tables/QELIndexLabels.h"
#include "support/Text.h"

namespace qel {
namespace {

template <class Action>
std::uint32_t error_of(Action action) {
  try {
    action();
  } catch (const Error& error) {
    return error.number();
  }
  return 0;
}

TEST(Records, ConvertWholeNumbersOnly) {
  using namespace records;
  EXPECT_EQ(to_integer16(u" 12 "), 12);
  EXPECT_EQ(to_integer16(u"2.5"), 2);
  EXPECT_EQ(to_integer16(u"3.5"), 4);
  EXPECT_EQ(to_integer16(u"-32768.4"), -32768);
  EXPECT_EQ(to_integer16(u"1e3"), 1000);
  EXPECT_EQ(to_integer16(u"4e-320"), 0);
  for (const auto* bad : {u"", u" ", u"32768", u"1 2", u"0x10", u"nan", u"inf", u"+-1", u"++1",
                          u"1.5.2", u"1e", u"1e999", u"1e-999", u"\u0663"}) {
    EXPECT_FALSE(to_integer16(bad)) << test::shown(bad);
  }
  EXPECT_EQ(to_single(u".5"), 0.5F);
  EXPECT_EQ(to_boolean(u" tRuE"), true);
  EXPECT_EQ(to_boolean(u"-0"), false);
  EXPECT_FALSE(to_boolean(u"yes"));
  EXPECT_EQ(write(0.1F), u"0.1");
}

TEST(CaseMapping, IsSimpleAndTheSameEverywhere) {
  EXPECT_EQ(to_upper(u"aé ÿß ǆ ж ա ⅷ \U00010428"), u"AÉ Ÿß Ǆ Ж Ա Ⅷ \U00010400");
  EXPECT_EQ(to_lower(u"AÉ Ÿ İΣ Ж ǅ Ω\U00010400"), u"aé ÿ iσ ж ǆ ω\U00010428");
  EXPECT_EQ(without_accents(U'\u1EC7'), U'e');
  EXPECT_EQ(without_accents(U'\u00DF'), U'\u00DF');
  EXPECT_TRUE(equal_ignoring_case(u"Straße", u"sTRAßE"));
  EXPECT_FALSE(equal_ignoring_case(u"a", u"ab"));
  for (const char32_t c : {U'.', U'\u201C', U'\u20AC'})
    EXPECT_TRUE(is_punctuation(c)) << std::uint32_t{c};
  for (const char32_t c : {U' ', U'5', U'\u4E2D'})
    EXPECT_FALSE(is_punctuation(c)) << std::uint32_t{c};
}

TEST(Labels, RefuseAColorTwiceAndKeepNameZero) {
  QELIndexLabels labels;
  const std::u16string fresh = labels.get_All();
  EXPECT_EQ(error_of([&] { labels.put_Color(2, labels.get_Color(5)); }), 0x80042AFAU);
  EXPECT_EQ(labels.get_Color(2), 16760226);
  EXPECT_EQ(error_of([&] { labels.put_Color(10, labels.get_Color(2)); }), 0U);
  EXPECT_EQ(labels.get_Color(10), 0);
  labels.put_Name(0, u"x");
  EXPECT_EQ(labels.get_Name(0), u"");
  EXPECT_EQ(labels.get_All(), fresh);
  for (const int index : {0, 10, -1}) labels.put_ActiveLabelIndex(static_cast<std::int16_t>(index));
  EXPECT_EQ(labels.get_ActiveLabelIndex(), 1);
  EXPECT_EQ(labels.get_ActiveLabelColor(), labels.get_Color(1));
}

TEST(Labels, RecordIsReadWithoutChecksIn16Bits) {
  QELIndexLabels labels;
  labels.put_All(
      u"1\t1\t40000\tx\t2.5<Labels:Rec>zero\tone\t\tthree<Labels:Rec>0<Labels:Rec>extra");
  EXPECT_EQ(labels.get_Color(0), 1);
  EXPECT_EQ(labels.get_Color(1), 1) << "no check for doubles";
  EXPECT_EQ(labels.get_Color(2), 16760226) << "does not fit";
  EXPECT_EQ(labels.get_Color(4), 2);
  EXPECT_EQ(labels.get_Name(1), u"one");
  EXPECT_EQ(labels.get_Name(9), u"") << "missing names become empty";
  EXPECT_EQ(labels.get_ActiveLabelIndex(), 0);

  QELIndexLabels copy;
  copy.CopyFrom(labels);
  EXPECT_EQ(copy.get_All(), labels.get_All());
  EXPECT_EQ(error_of([&] { labels.CopyTo(copy); }), 0x80042AFAU) << "goes through the checks";
  QELIndexLabels source, target;
  source.put_Name(4, u"four");
  source.put_ActiveLabelIndex(4);
  source.CopyTo(target);
  EXPECT_EQ(target.get_All(), source.get_All());
}

TEST(Fonts, AreFoundByNameAndKeptAsOneRecord) {
  QELIndexFonts fonts;
  const std::u16string fresh = fonts.get_All();
  fonts.put_Font(4, u"Caf\u00E9");
  fonts.put_Font(7, u"caf\u00C9");
  fonts.put_Font(5, u"arial");
  fonts.put_Font(10, u"x");
  fonts.put_Font(-1, u"x");
  EXPECT_EQ(fonts.FontIndexGivenFontName(u"CAF\u00C9"), 4);
  EXPECT_EQ(fonts.FontIndexGivenFontName(u"ARIAL"), 0);
  EXPECT_EQ(fonts.FontIndexGivenFontName(u"x"), -1);
  fonts.put_FontSize(10.5F);
  QELIndexFonts copy;
  copy.CopyFrom(fonts);
  EXPECT_EQ(copy.get_All(), fonts.get_All());
  copy.put_All(u"A\tB\tC<Fonts:Rec>large");
  EXPECT_EQ(copy.get_All(), u"A\tB\tC\t\t\t\t\t\t\t<Fonts:Rec>10.5");
  copy.put_All(fresh + u"<Fonts:Rec>99");
  EXPECT_EQ(copy.get_All(), fresh);
}

/// Reports odd numbered fonts as symbol fonts, and has no answer for names with "B".
class OddSurface : public platform::MeasuringSurface {
 public:
  explicit OddSurface(QELIndexFonts& fonts) : fonts_(fonts) {}
  void put_TestFont(std::u16string_view name) override {
    if (name.starts_with(u"B")) throw Error(5, "OddSurface", "no such font");
    fonts_.put_Font(0, name);  // as a host does whose own font the table shows
    ++tried_;
  }
  std::uintptr_t get_hDC() const override { return 0; }
  platform::CharacterSet test_font_character_set() const override {
    return tried_ % 2 == 0 ? platform::CharacterSet::symbol : platform::CharacterSet::ansi;
  }
  int tried() const { return tried_; }

 private:
  QELIndexFonts& fonts_;
  int tried_ = 0;
};

TEST(Fonts, TableMarksSymbolFonts) {
  QELIndexFonts fonts;
  fonts.put_Font(1, u"B{a\\};d");
  OddSurface surface(fonts);
  EXPECT_EQ(
      fonts.FontTable(&surface),
      u"{\\fonttbl{\\f0 Arial;}{\\f1 Bad;}{\\f2\\ftech Courier New;}{\\f3 Times New Roman;}"
      u"{\\f4 <none>;}{\\f5 <none>;}{\\f6 <none>;}{\\f7 <none>;}{\\f8 <none>;}{\\f9 <none>;}}");
  EXPECT_EQ(surface.tried(), 3) << "unused entries are not tried";
  EXPECT_EQ(error_of([&] { fonts.FontTable(nullptr); }), Error::object_not_set);
}

TEST(Colors, AreFoundByValueAndResolveSystemColors) {
  QELIndexColors colors;
  colors.put_Color(6, colors.get_Color(4));
  EXPECT_EQ(colors.ColorIndexGivenColor(colors.get_Color(4)), 4);
  colors.put_Color(5, 0);
  EXPECT_EQ(colors.ColorIndexGivenColor(0), 0);
  EXPECT_EQ(colors.ColorIndexGivenColor(123456), -1);
  colors.put_NoteColor(system_color(24));
  EXPECT_EQ(colors.get_Color(3), rgb(255, 255, 225));
  EXPECT_EQ(QELIndexColors::ConvertSystemColor(24), rgb(255, 255, 225)) << "whatever the high bit";
  const std::u16string before = colors.get_All();
  colors.put_Color(10, 5);
  EXPECT_EQ(colors.get_All(), before);
  EXPECT_EQ(error_of([&] { colors.put_LabelColor(2, colors.get_LabelColor(3)); }), 0x80042AFAU);
  EXPECT_EQ(error_of([&] { colors.require_unused_color(49152, 2); }), 0x80042AF9U);
  EXPECT_EQ(error_of([&] { colors.require_unused_label_color(49152, 2); }), 0x80042AFAU);
}

TEST(Colors, RecordLeavesTheColorTableStale) {
  QELIndexColors colors;
  const std::u16string fresh = colors.get_All();
  const std::u16string table = colors.get_ColorTable();
  colors.put_All(fresh);
  EXPECT_EQ(colors.get_All(), fresh);
  colors.put_All(u"7\t255\t-1\t70000<Colors:Rec>1\t1<Colors:Rec>zero\tone\t<Colors:Rec>12");
  EXPECT_EQ(colors.get_Color(0), 7);
  EXPECT_EQ(colors.get_Color(1), 255);
  EXPECT_EQ(colors.get_Color(3), 49344) << "does not fit 16 bits";
  EXPECT_EQ(colors.get_LabelColor(1), 14602187) << "a double is skipped";
  EXPECT_EQ(colors.get_LabelName(1), u"one");
  EXPECT_EQ(colors.get_LabelName(3), u"Label 3") << "missing names stay";
  EXPECT_EQ(colors.get_ActiveLabelIndex(), 1);
  EXPECT_EQ(colors.get_ColorTable(), table);

  QELIndexColors copied;
  copied.CopyFrom(colors);
  EXPECT_EQ(copied.get_ColorTable(), table) << "copied straight";
  QELIndexColors set;
  colors.put_Color(2, 2);
  colors.CopyTo(set);
  EXPECT_EQ(set.get_All(), colors.get_All());
  EXPECT_EQ(set.get_ColorTable(), colors.get_ColorTable());
  EXPECT_EQ(set.get_ColorTable().find(u"{\\colortbl\\red7\\green0\\blue0;\\red255\\green0\\blue0;"),
            0U);
}

}  // namespace
}  // namespace qel
