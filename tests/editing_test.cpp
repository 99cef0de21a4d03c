#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "qel/base/Error.h"
#include "qel/control/QELTextbox.h"
#include "qel/embedded/BoxUser.h"
#include "qel/embedded/EmbeddedPlatform.h"
#include "qel/embedded/PropertyBag.h"
#include "support/Form.h"
#include "support/Text.h"

namespace qel {
namespace {

/// Writes down what the host is told, and may swallow a key.
class Host : public ControlEvents {
 public:
  void Change() override { log += "change "; }
  void Click() override { log += "click "; }
  void KeyDown(std::int16_t& KeyCode, std::int16_t& Shift) override {
    log += "down" + std::to_string(KeyCode) + "/" + std::to_string(Shift) + " ";
  }
  void KeyPress(std::int16_t& KeyAscii) override {
    log += "press" + std::to_string(KeyAscii) + " ";
  }
  void MouseUp(std::int16_t Button, std::int16_t, float X, float Y) override {
    log += "up" + std::to_string(Button) + "@" + std::to_string(static_cast<int>(X + Y)) + " ";
  }

  std::string log;
};

class Editing : public testing::Test {
 protected:
  Editing() { control.listen(&host); }

  embedded::RichEdit& memory_box() const {
    return static_cast<embedded::RichEdit&>(*control.CurrentRichTextBox());
  }
  platform::BoxListener& box() const { return memory_box().listener(); }
  int press(int key, int shift) {
    return embedded::BoxUser(memory_box())
        .press(static_cast<std::int16_t>(key), static_cast<std::int16_t>(shift));
  }
  void select(std::int32_t start, std::int32_t length) {
    control.put_SelStart(start);
    control.put_SelLength(length);
  }

  test::Form form;
  std::shared_ptr<embedded::EmbeddedPlatform> platform =
      std::make_shared<embedded::EmbeddedPlatform>();
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
  EXPECT_TRUE(control.get_SelHide() && !control.get_SelNote() && !control.get_SelIgnore());
  control.put_SelNote(true);
  EXPECT_TRUE(control.get_SelNote() && !control.get_SelHide());
  control.put_SelNote(false);
  EXPECT_EQ(control.get_SelColor(), 0);
  control.put_SelCharOffset(30);
  EXPECT_FALSE(control.get_SelSuperscript()) << "only what the control raised";
  control.put_SelSuperscript(true);
  EXPECT_TRUE(control.get_SelSuperscript() && !control.get_SelSubscript());
  EXPECT_EQ(control.get_SelCharOffset(), 45);
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

TEST_F(Editing, QuotesBecomeTypographic) {
  const auto typed = [&](std::u16string_view text, char16_t character) {
    control.put_Text(text);
    control.put_SelStart(static_cast<std::int32_t>(text.size()));
    auto code = static_cast<std::int16_t>(character);
    box().on_key_press(code);
    return static_cast<char16_t>(code);
  };
  EXPECT_EQ(typed(u"a", u'"'), u'"') << "only where it is wanted";
  control.ReadProperties(embedded::PropertyBag(u"SmartQuotes=True"));
  EXPECT_EQ(typed(u"", u'"'), u'\u201C');
  EXPECT_EQ(typed(u"a", u'"'), u'\u201D');
  EXPECT_EQ(typed(u"(", u'"'), u'\u201D') << "brackets close too";
  EXPECT_EQ(typed(u"a ", u'"'), u'\u201C');
  EXPECT_EQ(typed(u"\u00E9", u'\''), u'\u2018');
  EXPECT_EQ(typed(u"9", u'\''), u'\u2019');
  EXPECT_EQ(typed(u"9", u'x'), u'x');
  std::int16_t ansi = u'"';
  control.TE_KeyPress(ansi);
  EXPECT_EQ(ansi, 148) << "from outside, in the code page";
  EXPECT_NE(host.log.find("press34 "), std::string::npos) << "the host sees what was typed";
}

TEST_F(Editing, PastesWhatMarkupCanSay) {
  platform::Clipboard& clipboard = platform->clipboard();
  control.put_TextQEL(u"a/b1bc/b0d");
  const auto paste = [&](std::int32_t start, std::int32_t length) {
    select(start, length);
    host.log.clear();
    control.PasteClipboardContents();
    return control.get_TextQEL();
  };
  EXPECT_EQ(paste(0, 0), u"a/b1bc/b0d") << "an empty clipboard";
  clipboard.put(u"plain", u"{\\rtf1 \\i x\\par y\\tab z\\par}");
  EXPECT_EQ(paste(2, 1), u"a/b1b/b0/i1x y z/i0d");
  EXPECT_EQ(control.get_SelStart(), 7) << "behind what was pasted";
  EXPECT_EQ(host.log, "change ");
  EXPECT_FALSE(control.get_RecognizeCRLF());
  control.put_PasteTextOnly(true);
  clipboard.put(u"1\r\n2\r3\n4\t5   6", u"{\\rtf1 no}");
  EXPECT_EQ(paste(0, 1), u"1 2 3 4 5  6/b1b/b0/i1x y z/i0d");
  control.put_PasteTextOnly(false);
  clipboard.put(u"text", u"");
  EXPECT_EQ(paste(0, 1), u"1 2 3 4 5  6/b1b/b0/i1x y z/i0d") << "empty RTF";
  clipboard.put(u"t", u"{\\rtf1 r}");
  EXPECT_EQ(press('V', 2), 0);
  EXPECT_EQ(control.get_Text().substr(0, 1), u"r") << "by its key";
  control.put_Multiline(true);
  control.put_RecognizeCRLF(true);
  control.put_ConvertNLToSpace(false);
  control.put_TextQEL(u"one/nltwo");
  EXPECT_EQ(paste(3, 0), u"oner/nltwo") << "the text around keeps its lines";
  EXPECT_TRUE(control.get_RecognizeCRLF());
  Common::publish(nullptr, nullptr);
  EXPECT_THROW(control.PasteClipboardContents(), Error);
  EXPECT_EQ(control.get_Text(), u"oner\r\ntwo") << "an error leaves the text as it was";
}

TEST_F(Editing, TellsTheHostOnce) {
  control.put_Text(u"x");
  EXPECT_EQ(host.log, "change ");
  box().on_click();
  box().on_mouse_up(1, 0, 2, 3);
  EXPECT_EQ(host.log, "change click up1@5 ");
  control.TE_Change();
  control.InsertCRLF();
  EXPECT_EQ(host.log, "change click up1@5 change change ");
}

class NamedMembers : public platform::Dispatch {
 public:
  Variant get(std::u16string_view name) const override { return values.at(std::u16string(name)); }
  void put(std::u16string_view name, const Variant& value) override {
    values[std::u16string(name)] = value;
    log.append(name).append(std::get<bool>(value) ? u"+ " : u"- ");
  }
  void call(std::u16string_view name) override { log.append(name).append(u"() "); }

  std::map<std::u16string, Variant> values = {
      {u"SelBold", true},       {u"SelItalic", false},   {u"SelIgnore", false}, {u"SelHide", {}},
      {u"SelUnderline", false}, {u"SelAltFont1", false}, {u"SelAltFont2", true}};
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
                      {'T', 2, 0, u"SelHide+ "},
                      {'U', 2, 0, u"SelUnderline+ "},
                      {f1, 4, 0, u"SelAltFont1+ "},
                      {f1 + 1, 4, 0, u"SelAltFont2- "},
                      {f1 + 2, 4, 0, u"SelPlain() "},
                      {'B', 3, 'B', u""},
                      {'B', 0, 'B', u""},
                      {13, 0, 0, u""},
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
