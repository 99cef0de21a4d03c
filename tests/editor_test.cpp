#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "qel/control/QELTextbox.h"
#include "qel/headless/BoxUser.h"
#include "qel/headless/HeadlessPlatform.h"
#include "qel/headless/PropertyBag.h"
#include "qel/platform/Keys.h"
#include "support/Form.h"
#include "support/Text.h"

namespace qel {
namespace {

using headless::EditorWindow;

class Host : public ControlEvents {
 public:
  void Change() override { ++changes; }
  void KeyDown(std::int16_t& KeyCode, std::int16_t&) override { last_key = KeyCode; }

  int changes = 0;
  std::int16_t last_key = 0;
};

class LargeEditor : public testing::Test {
 protected:
  LargeEditor() { control.listen(&host); }

  /// Opens the editor on the markup with that selection, lets the user act, and returns the markup
  /// that the control has then.
  std::u16string edit(std::u16string_view markup, platform::Range selection,
                      const EditorWindow::User& user) {
    control.put_TextQEL(markup);
    control.CurrentRichTextBox()->select(selection);
    platform->put_user(user);
    control.InvokeLargeEditor();
    return control.get_TextQEL();
  }

  static int press(const std::shared_ptr<platform::RichEdit>& box, int key, int shift) {
    return headless::BoxUser(*box).press(static_cast<std::int16_t>(key),
                                         static_cast<std::int16_t>(shift));
  }

  test::Form form;
  std::shared_ptr<headless::HeadlessPlatform> platform =
      std::make_shared<headless::HeadlessPlatform>();
  QELTextbox control{form, platform};
  Host host;
};

TEST_F(LargeEditor, StandsForTheControlWhileItIsOpen) {
  control.put_ShowEditorOnShiftF2(true);
  EXPECT_EQ(press(control.CurrentRichTextBox(), 113, 1), 0) << "the key that opens it";
  edit(u"abc", {0, 3}, [&](EditorWindow& window) {
    EXPECT_TRUE(window.box_has_focus());
    EXPECT_EQ(control.CurrentRichTextBox(), window.box());
    host.changes = 0;
    control.put_SelBold(true);
    EXPECT_EQ(control.get_TextQEL(), u"/b1abc/b0");
    window.choose(u"mnuItalic");
    EXPECT_EQ(host.changes, 2) << "the host is told";
    window.leave_box();
    window.come_back();
    EXPECT_FALSE(window.box_has_focus()) << "the focus stays where the user put it";
    press(window.box(), 'Q', 0);
    EXPECT_EQ(host.last_key, 'Q');
    control.InvokeLargeEditor();
    EXPECT_TRUE(window.is_open()) << "there is only one";
    window.press_ok();
  });
  EXPECT_EQ(control.get_TextQEL(), u"/b1/i1abc/b0/i0");
}

TEST_F(LargeEditor, EndsWithTheUsersError) {
  const auto fails = [](EditorWindow&) { throw std::runtime_error("user"); };
  EXPECT_THROW(edit(u"ab", {0, 2}, fails), std::runtime_error);
  EXPECT_EQ(control.get_TextQEL(), u"ab") << "the control has its own box again";
  control.CurrentRichTextBox()->select({0, 2});
  control.put_SelCharOffset(30);
  platform->put_user([](EditorWindow& window) {
    window.choose(u"mnuSuperscript");
    window.press_cancel();
    window.press_ok();
  });
  control.InvokeLargeEditor();
  control.CurrentRichTextBox()->select({0, 2});
  EXPECT_EQ(control.get_SelCharOffset(), 30) << "to the twip, although RTF cannot say it";
}

TEST_F(LargeEditor, KeepsToWhatTheControlAllows) {
  control.put_Enabled(false);
  edit(u"a", {}, [&](EditorWindow& window) {
    const auto may_edit = [&] { return !window.box()->appearance().read_only; };
    EXPECT_FALSE(may_edit()) << "opened by the host";
    control.put_AllowEdits(true);
    EXPECT_FALSE(may_edit()) << "still disabled";
    control.put_Enabled(true);
    EXPECT_TRUE(may_edit());
    control.put_AllowEdits(false);
    EXPECT_FALSE(may_edit());
    control.put_AllowEdits(true);
    control.put_Enabled(false);
    EXPECT_FALSE(may_edit());
    EXPECT_TRUE(window.box()->appearance().enabled);
  });
}

TEST_F(LargeEditor, PutsNoSecondLineIntoABoxForOne) {
  const auto paste = [](EditorWindow& window) {
    window.choose(u"mnuPaste");
    press(window.box(), keys::insert_key, keys::shift_key);
    window.press_ok();
  };
  platform->clipboard().put(u"a\r\nb", u"{\\rtf1 c\\par d}");
  edit(u"", {}, paste);
  EXPECT_EQ(control.get_Text(), u"c dc d");
  control.put_Multiline(true);
  platform->clipboard().put(u"a\r\nb", u"");
  edit(u"", {}, paste);
  EXPECT_EQ(control.get_Text(), u"a\r\nba\r\nb");
}

TEST_F(LargeEditor, TakesHtmlAsItsControlDoes) {
  platform->clipboard().put_html_reader(
      [](std::u16string_view html, const richtext::CharFormat& base) {
        return richtext::plain_document(html, base);
      });
  platform->clipboard().put_html(u"text", u"html ");
  control.put_Multiline(true);
  for (const bool lossless : {false, true}) {
    control.put_Lossless(lossless);
    edit(u"", {}, [&](EditorWindow& window) {
      window.choose(u"mnuPaste");
      press(window.box(), keys::insert_key, keys::shift_key);
      press(window.box(), 'V', keys::ctrl_shift);
      control.PasteClipboardContents();
      control.PasteText();
      window.press_ok();
    });
    EXPECT_EQ(control.get_Text(), lossless ? u"html html texthtml text" : u"texttexttexttexttext");
  }
}

TEST_F(LargeEditor, LetsTheControlEndMeanwhile) {
  auto other = std::make_unique<QELTextbox>(form, platform);
  platform->put_user([&](EditorWindow& window) {
    other.reset();
    window.box()->put_SelText(u"x");
    EXPECT_EQ(window.pane_text(), u"x");
    window.press_ok();
  });
  other->InvokeLargeEditor();
  EXPECT_EQ(other, nullptr);
}

TEST_F(LargeEditor, RunsItsCommands) {
  struct Row {
    std::u16string_view command;
    int key, shift;
    std::u16string_view text, result;
    bool is_checked = false;  // afterwards
  };
  // On all of the text; commands have a name, a key, or both.
  const Row rows[] = {
      {u"mnuBold", 0, 0, u"a/b1b", u"/b1ab/b0", true},
      {u"mnuUnderline", 0, 0, u"ab", u"/u1ab/u0", true},
      {u"mnuStrikeOut", 'K', 3, u"ab", u"/k1ab/k0", true},
      {u"mnuSuperscript", 'P', 3, u"ab", u"/p1ab/p0", true},
      {u"mnuSuperscript", 'P', 3, u"/p1ab", u"ab"},
      {u"mnuSubscript", 'B', 3, u"/p1ab", u"/s1ab/s0", true},
      {u"mnuAltFont1", 112, 4, u"ab", u"/f1ab/f0", true},
      {u"mnuPlain", 121, 4, u"/b1/i1/u1/k1/p1/f2/y1ab", u"ab"},
      {u"mnuIgnoreText", 0, 0, u"ab", u"/y1ab/y0", true},
      {u"mnuHideText", 0, 0, u"ab", u"/y2ab/y0", true},
      {u"mnuNoteText", 'O', 3, u"ab", u"/y3ab/y0", true},
      {u"mnuLowercase", 0, 0, u"A/b1B", u"a/b1b/b0"},
      {u"mnuTitleCase", 'T', 3, u"the/b1 end of it", u"The/b1 End of It/b0"},
      {u"mnuFirstToLower", 0, 0, u"AB/nlAB", u"aB/nlAB"},
      {u"mnuFirstToUpper", 0, 0, u"ab/nlab", u"Ab/nlab"},
      {u"mnuDelete", 46, 0, u"ab", u""},
      {u"mnuCut", 'X', 2, u"ab", u""},
      {u"mnuCopy", 'C', 2, u"/b1ab", u"/b1ab/b0"},
      {u"mnuNothing", 'Q', 0, u"ab", u"ab"},
  };
  control.put_Multiline(true);
  control.put_RecognizeCRLF(true);
  control.put_ConvertNLToSpace(false);
  control.put_NoteColor(0x123456);
  for (const Row& row : rows) {
    SCOPED_TRACE(test::shown(row.command) + " " + std::to_string(row.key));
    EXPECT_EQ(edit(row.text, {0, 99},
                   [&](EditorWindow& window) {
                     window.choose(row.command);
                     EXPECT_EQ(window.is_checked(row.command), row.is_checked);
                     EXPECT_EQ(window.pane_text(), row.result);
                     window.press_ok();
                   }),
              row.result);
    if (row.key != 0) {
      EXPECT_EQ(edit(row.text, {0, 99},
                     [&](EditorWindow& window) {
                       const bool is_handled = row.command != u"mnuNothing";
                       EXPECT_EQ(press(window.box(), row.key, row.shift), is_handled ? 0 : row.key);
                       window.press_ok();
                     }),
                row.result);
    }
  }
  EXPECT_EQ(edit(u"xy", {1, 0},
                 [&](EditorWindow& window) {
                   window.choose(u"mnuPaste");
                   window.choose(u"mnuDelete");
                   window.choose(u"mnuDelete");
                   window.press_ok();
                 }),
            u"x/b1ab/b0")
      << "what was copied, and the character behind the caret";
}

}  // namespace
}  // namespace qel
