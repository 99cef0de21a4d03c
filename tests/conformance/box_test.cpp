#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

#include "conformance/Stage.h"
#include "qel/platform/Keys.h"

namespace qel::conformance {
namespace {

using platform::RichEdit;
using platform::Scope;
using richtext::Alignment;

class Box : public testing::Test {
 protected:
  RichEdit& new_box() {
    boxes_.push_back(stage->platform()->create_rich_edit(stage->window()));
    return *boxes_.back();
  }

  std::unique_ptr<Stage> stage = make_stage();

 private:
  std::vector<std::shared_ptr<RichEdit>> boxes_;
};

TEST_F(Box, CountsBreaksAsTwoPositions) {
  RichEdit& box = new_box();
  box.put_Text(u"a\nb\r\nc\rd");
  EXPECT_EQ(box.get_Text(), u"a\r\nb\r\nc\r\nd");
  box.select({2, 3});  // from within one break to within the next
  EXPECT_EQ(box.get_SelText(), u"\r\nb\r\n") << "a break is not cut";
  box.put_SelText(u"-");
  EXPECT_EQ(box.get_Text(), u"a-c\r\nd");
  EXPECT_EQ(box.selection(), (platform::Range{2, 0}));
  box.select({4, 0});
  box.put_SelText(u"x");
  EXPECT_EQ(box.get_Text(), u"a-cx\r\nd") << "a caret within a break is before it";
  box.select({-5, 99});
  EXPECT_EQ(box.selection(), (platform::Range{0, 7}));
  box.select({100, -1});
  EXPECT_EQ(box.selection(), (platform::Range{7, 0}));
}

TEST_F(Box, ReportsMixedFormatsAsEmpty) {
  RichEdit& box = new_box();
  box.put_Text(u"abcd");
  box.select({1, 2});
  box.put_SelBold(true);
  box.put_SelFontName(u"Symbol");
  box.put_SelCharOffset(-45);
  EXPECT_EQ(box.get_SelBold(), true);
  box.select({0, 2});
  EXPECT_EQ(box.get_SelBold(), std::nullopt);
  EXPECT_EQ(box.get_SelFontName(), std::nullopt);
  EXPECT_EQ(box.get_SelCharOffset(), std::nullopt);
  EXPECT_EQ(box.get_SelItalic(), false);
  EXPECT_EQ(box.get_SelColor(), 0);
  box.put_SelItalic(true);
  box.select({1, 2});
  EXPECT_EQ(box.get_SelItalic(), std::nullopt);
  EXPECT_EQ(box.get_SelBold(), true) << "other attributes are left alone";
  box.select({2, 0});
  EXPECT_EQ(box.get_SelBold(), true) << "typed text takes the format before the caret";
  box.put_SelBold(false);
  box.select({2, 0});
  EXPECT_EQ(box.get_SelBold(), false) << "a caret that stays keeps what was chosen";
  for (const float size : {std::numeric_limits<float>::quiet_NaN(), -1.0F, 0.0F, 1e9F}) {
    box.put_SelFontSize(size);
  }
  EXPECT_EQ(box.get_SelFontSize(), 8) << "no size at all";
}

TEST_F(Box, TakesRTFForTheDocumentAndTheSelection) {
  RichEdit& box = new_box();
  platform::BoxAppearance appearance = box.appearance();
  appearance.font_name = u"Verdana";
  box.put_appearance(appearance);
  box.put_SelColor(99);
  box.put_TextRTF(u"{\\rtf1 one\\par two}");
  EXPECT_EQ(box.get_Text(), u"one\r\ntwo");
  box.select({0, 8});
  EXPECT_EQ(box.get_SelFontName(), u"Verdana");
  EXPECT_EQ(box.get_SelColor(), 99);
  box.select({1, 5});
  box.put_SelRTF(u"{\\rtf1\\b X}");
  EXPECT_EQ(box.get_Text(), u"oXwo");
  box.select({1, 2});
  EXPECT_EQ(box.get_SelRTF(),
            u"{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0 Verdana;}}{\\colortbl ;\\red99"
            u"\\green0\\blue0;}\\b\\cf1\\fs16 X\\b0 w}");
  box.put_SelRTF(u"not RTF");
  EXPECT_EQ(box.get_Text(), u"onot RTFo");
  const std::u16string rtf = box.get_TextRTF();
  box.put_TextRTF(rtf);
  EXPECT_EQ(box.get_TextRTF(), rtf);
  appearance.font_name = u"Symbol";
  box.put_appearance(appearance);
  box.select({0, 9});
  EXPECT_EQ(box.get_SelFontName(), u"Symbol") << "all text changes its font with the box";
}

TEST_F(Box, CutsAndPastesSmallCapitals) {
  RichEdit& box = new_box();
  box.put_TextRTF(u"{\\rtf1 a\\scaps bc\\b d\\scaps0 e}");
  const std::u16string rtf = box.get_TextRTF();
  box.select({1, 3});
  stage->press(box, 'X', keys::ctrl_key);
  EXPECT_EQ(box.get_Text(), u"ae");
  stage->press(box, 'V', keys::ctrl_key);
  EXPECT_EQ(box.get_TextRTF(), rtf);
}

TEST_F(Box, AlignsParagraphs) {
  RichEdit& box = new_box();
  box.put_alignment(Alignment::center);
  box.put_Text(u"x\ny");
  EXPECT_EQ(box.alignment(), Alignment::center) << "new text keeps the alignment";
  box.put_alignment(Alignment::left);
  box.put_Text(u"one\ntwo\nthree");
  box.select({5, 4});
  box.put_alignment(Alignment::center);
  box.select({0, 20});
  EXPECT_EQ(box.alignment(), std::nullopt);
  box.select({0, 5});
  EXPECT_EQ(box.alignment(), Alignment::left)
      << "a selected break belongs to the paragraph it ends";
  box.select({1, 0});
  box.put_alignment(Alignment::right);
  EXPECT_NE(box.get_TextRTF().find(u"\\pard\\qr"), std::u16string::npos);
  RichEdit& other = new_box();
  other.put_TextRTF(box.get_TextRTF());
  other.select({1, 0});
  EXPECT_EQ(other.alignment(), Alignment::right);
  other.select({6, 0});
  EXPECT_EQ(other.alignment(), Alignment::center);
}

}  // namespace
}  // namespace qel::conformance
