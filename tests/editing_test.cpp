#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "qel/base/Error.h"
#include "qel/control/QELTextbox.h"
#include "qel/headless/BoxUser.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/headless/PropertyBag.h"
#include "support/Form.h"
#include "support/Text.h"

namespace qel {
namespace {

/// Writes down what the host is told, and may swallow a key.
class Host : public ControlEvents {
 public:
  void Change() override {
    log += "change ";
    if (control != nullptr) text_when_told = control->get_TextQEL();
  }
  void KeyPress(std::int16_t& KeyAscii) override {
    log += "press" + std::to_string(KeyAscii) + " ";
  }
  void DblClick() override { log += "dblclick "; }
  void MouseMove(std::int16_t Button, std::int16_t, float X, float Y) override {
    log += "move" + std::to_string(Button) + "@" + std::to_string(static_cast<int>(X + Y)) + " ";
  }

  const QELTextbox* control = nullptr;
  std::u16string text_when_told;
  std::string log;
};

class Editing : public testing::Test {
 protected:
  Editing() {
    host.control = &control;
    control.listen(&host);
  }

  platform::BoxListener& box() const {
    return headless::BoxView::of(*control.CurrentRichTextBox()).box().listener();
  }
  int press(int key, int shift) {
    return headless::BoxUser(*control.CurrentRichTextBox())
        .press(static_cast<std::int16_t>(key), static_cast<std::int16_t>(shift));
  }
  void select(std::int32_t start, std::int32_t length) {
    control.put_SelStart(start);
    control.put_SelLength(length);
  }

  test::Form form;
  std::shared_ptr<headless::HeadlessPlatform> platform =
      std::make_shared<headless::HeadlessPlatform>();
  QELTextbox control{form, platform};
  Host host;
};

constexpr int f1 = 112;

TEST_F(Editing, SelectionMembersKeepTheirRules) {
  control.put_TextQEL(u"abc");
  select(0, 1);
  host.log.clear();
  control.put_SelColor(255);
  EXPECT_EQ(control.get_SelColor(), 255);
  control.put_SelColor(12345);
  EXPECT_EQ(control.get_SelColor(), 255) << "no colour of the table";
  EXPECT_EQ(host.log, "change ") << "and no event";
  control.put_SelColor(QELTextbox::ConvertSystemColor(8));
  EXPECT_EQ(control.get_SelColor(), 0);
  control.put_SelFontName(u"COURIER new");
  EXPECT_EQ(control.get_SelFontName(), u"Courier New") << "as the table writes it";
  control.put_SelFontName(u"Zed");
  EXPECT_EQ(control.get_SelFontName(), u"Courier New");
  control.put_SelHide(true);
  control.put_SelNote(true);
  EXPECT_TRUE(control.get_SelNote());
  EXPECT_FALSE(control.get_SelHide());
  control.put_SelCharOffset(30);
  EXPECT_FALSE(control.get_SelSuperscript()) << "only what the control raised";
  control.put_SelSuperscript(true);
  EXPECT_TRUE(control.get_SelSuperscript());
  EXPECT_FALSE(control.get_SelSubscript());
  select(0, 3);
  EXPECT_EQ(control.get_SelFontName(), u"") << "mixed";
  EXPECT_EQ(control.get_SelCharOffset(), 0);
  EXPECT_FALSE(control.get_SelSuperscript());
  select(3, 0);
  host.log.clear();
  control.put_SelBold(true);
  EXPECT_EQ(host.log, "change ") << "also where nothing is selected";
  EXPECT_TRUE(control.get_SelBold());
  control.put_SelText(u"d");
  EXPECT_EQ(control.get_Text(), u"abcd");
  EXPECT_EQ(control.get_SelRTF().substr(0, 6), u"{\\rtf1");
}

TEST_F(Editing, PlainTextIsTheHosts) {
  control.put_FontName(u"Verdana");
  control.put_ForeColor(0x123456);
  control.put_TextQEL(u"abc");
  select(0, 3);
  using Look = std::pair<std::u16string, Color>;
  const auto look = [&] { return Look(control.get_SelFontName(), control.get_SelColor()); };
  control.SelPlain();
  EXPECT_EQ(look(), Look(u"Verdana", 0x123456));
  for (const auto put :
       {&QELTextbox::put_SelBold, &QELTextbox::put_SelItalic, &QELTextbox::put_SelUnderline,
        &QELTextbox::put_SelStrikeOut, &QELTextbox::put_SelSuperscript, &QELTextbox::put_SelHide}) {
    (control.*put)(true);
  }
  control.put_SelFontName(control.GetFontNameGivenFontIndex(3));
  EXPECT_EQ(control.get_TextQEL(), u"/b1/i1/u1/k1/p1/f3/y2abc/b0/i0/u0/k0/p0/y0/f0");
  control.SelPlain();
  EXPECT_EQ(look(), Look(u"Verdana", 0x123456));
  EXPECT_EQ(control.get_TextQEL(), u"abc");
  control.get_Colors()->put_Color(9, 0x90909);
  control.get_Fonts()->put_Font(9, u"Nine");
  press(f1 + 8, 2);
  press(f1 + 8, 4);
  EXPECT_EQ(look(), Look(u"Nine", 0x90909));
}

TEST_F(Editing, SelectionIsFoundInTheMarkup) {
  struct Row {
    std::int32_t start, length;
    std::int32_t start_in_markup;
    std::u16string_view text;
  };
  // "ab", bold "cd", italic "e".
  const Row rows[] = {{0, 2, 0, u"ab"},
                      {0, 3, 0, u"ab/b1c"},
                      {2, 2, 5, u"cd"},
                      {3, 2, 6, u"d/b0/i1e"},
                      {0, 5, 0, u"ab/b1cd/b0/i1e"},
                      {1, 0, 1, u""},
                      {5, 0, 14, u""},
                      {2, 0, 2, u""}};
  control.put_TextQEL(u"ab/b1cd/b0/i1e/i0");
  for (const Row& row : rows) {
    select(row.start, row.length);
    EXPECT_EQ(control.get_SelTextQEL(), row.text) << row.start << " " << row.length;
    EXPECT_EQ(control.get_SelStartQEL(), row.start_in_markup) << row.start << " " << row.length;
    EXPECT_EQ(control.get_SelLengthQEL(), static_cast<std::int32_t>(row.text.size()));
  }
  control.put_Text(u"");
  EXPECT_EQ(control.get_SelStartQEL(), 0);
}

TEST_F(Editing, QuotesOfAnEditorAreCodes) {
  control.ReadProperties(headless::PropertyBag(u"SmartQuotes=True\nTextQEL=9"));
  const auto told = [&](char16_t typed, std::int32_t caret) {
    control.put_SelStart(caret);
    auto code = static_cast<std::int16_t>(typed);
    control.TE_KeyPress(code);
    return code;
  };
  EXPECT_EQ(told(u'"', 0), 147) << "in the code page";
  EXPECT_EQ(told(u'\'', 1), 146);
  EXPECT_NE(host.log.find("press34 "), std::string::npos) << "the host sees what was typed";
}

TEST_F(Editing, PastingLeavesTheSwitchesAndTheLines) {
  platform::Clipboard& clipboard = platform->clipboard();
  control.put_Multiline(true);
  control.put_RecognizeCRLF(true);
  control.put_ConvertNLToSpace(false);
  control.put_TextQEL(u"one/nltwo");
  clipboard.put(u"t", u"{\\rtf1 r\\par}");
  select(3, 0);
  control.PasteClipboardContents();
  EXPECT_EQ(control.get_TextQEL(), u"oner/nltwo") << "the text around keeps its lines";
  EXPECT_TRUE(control.get_RecognizeCRLF());
  EXPECT_FALSE(control.get_ConvertNLToSpace());
  EXPECT_EQ(host.text_when_told, u"oner/nltwo") << "a host can read the text when it is told";
  Common::publish(nullptr, nullptr);
  EXPECT_THROW(control.PasteClipboardContents(), Error);
  EXPECT_EQ(control.get_Text(), u"oner\r\ntwo") << "an error leaves the text as it was";
}

TEST_F(Editing, PastedTextLooksLikeTheTextAround) {
  struct Row {
    std::u16string_view font_here, pasted, font;
  };
  const Row rows[] = {
      {u"Tahoma", u"{\\rtf1 x}", u"Tahoma"},
      {u"Elsewhere", u"{\\rtf1{\\fonttbl{\\f0 Some Font;}}\\f0\\fs40 x}", u"Elsewhere"},
      {u"Courier New", u"{\\rtf1 x}", u"Tahoma"},
      {u"Tahoma", u"{\\rtf1{\\fonttbl{\\f0 Courier New;}}\\f0\\fs40 x}", u"Courier New"}};
  control.put_FontName(u"Tahoma");
  for (const Row& row : rows) {
    platform::RichEdit& here = *control.CurrentRichTextBox();
    control.put_Text(u"ab");
    select(0, 2);
    here.put_SelFontName(row.font_here);
    here.put_SelFontSize(9);
    select(1, 0);
    platform->clipboard().put(u"t", row.pasted);
    control.PasteClipboardContents();
    select(1, 1);
    EXPECT_EQ(control.get_SelText(), u"x");
    EXPECT_EQ(control.get_SelFontName(), row.font);
    EXPECT_EQ(here.get_SelFontSize(), 9) << test::shown(row.font_here);
  }
}

TEST_F(Editing, TellsTheHost) {
  box().on_double_click();
  box().on_mouse_move(1, 0, 1, 1);
  control.TE_Change();
  EXPECT_EQ(host.log, "dblclick move1@2 change ");
  control.put_SelAlignment(2);
  host.log.clear();
  control.put_TextQEL(u"y");
  EXPECT_EQ(host.log, "change ");
  press('Z', 2);
  EXPECT_EQ(control.get_SelAlignment(), 2) << "it comes with the text";
}

class NamedMembers : public platform::Dispatch {
 public:
  Variant get(std::u16string_view name) const override { return values.at(std::u16string(name)); }
  void put(std::u16string_view name, const Variant& value) override {
    values[std::u16string(name)] = value;
    log.append(name).append(std::get<bool>(value) ? u"+ " : u"- ");
  }
  void call(std::u16string_view name) override { log.append(name).append(u"() "); }

  std::map<std::u16string, Variant> values = {{u"SelBold", true},      {u"SelItalic", false},
                                              {u"SelIgnore", false},   {u"SelHide", {}},
                                              {u"SelAltFont1", false}, {u"SelAltFont2", true}};
  std::u16string log;
};

TEST(RichEditKeyDown, ActsOnAnyObjectByName) {
  struct Row {
    int key, shift, left;
    std::u16string_view log;
  };
  const Row rows[] = {{'B', 2, 0, u"SelBold- SelItalic+ "},
                      {'I', 2, 'I', u""},
                      {'K', 2, 0, u"SelIgnore+ "},
                      {f1, 4, 0, u"SelAltFont1+ "},
                      {f1 + 1, 4, 0, u"SelAltFont2- "},
                      {f1 + 2, 4, 0, u"SelPlain() "},
                      {'B', 3, 'B', u""},
                      {13, 6, 0, u""}};
  for (const Row& row : rows) {
    NamedMembers target;
    auto key = static_cast<std::int16_t>(row.key);
    QELTextbox::RichEditKeyDown(target, key, static_cast<std::int16_t>(row.shift));
    EXPECT_EQ(target.log, row.log);
    EXPECT_EQ(key, row.left) << test::shown(row.log);
  }
}

}  // namespace
}  // namespace qel
