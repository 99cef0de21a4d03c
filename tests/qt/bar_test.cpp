// The bar of formats, and the menu of the box, which has the same actions.

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

#include "qel/qt/FormatBar.h"
#include "qel/qt/TextBox.h"
#include "qt/Printing.h"
#include "qt/platform/BoxView.h"

namespace qel::qt {
namespace {

class Bar : public testing::Test {
 public:
  ~Bar() override {
    for (QWidget* const part : {static_cast<QWidget*>(&bar), static_cast<QWidget*>(&line),
                                static_cast<QWidget*>(&box), static_cast<QWidget*>(&other)}) {
      part->setParent(nullptr);
    }
  }

 protected:
  Bar() {
    auto* const middle = new QWidget;
    auto* const layout = new QVBoxLayout(middle);
    for (TextBox* const each : {&box, &other}) {
      each->put_FontName(QStringLiteral("Arial"));
      layout->addWidget(each);
    }
    layout->addWidget(&line);
    window.setCentralWidget(middle);
    window.addToolBar(&bar);
    window.resize(900, 300);
    window.show();
    QApplication::setActiveWindow(&window);
    box.setFocus();
  }

  QAction* action(const char* name) {
    for (QAction* const each : bar.actions()) {
      if (each->objectName() == QLatin1String(name)) return each;
    }
    ADD_FAILURE() << name;
    return nullptr;
  }
  QWidget* button(const char* name) { return bar.widgetForAction(action(name)); }
  /// Chooses in the menu of one of the bar's buttons.
  void choose(const char* menu, const char* name) {
    QMenu& shown = *action(menu)->menu();
    emit shown.aboutToShow();
    shown.findChild<QAction*>(QLatin1String(name))->trigger();
  }
  void load(const char* markup, int start, int length) {
    box.put_TextQEL(QLatin1String(markup));
    select(start, length);
  }
  void select(int start, int length) {
    box.control().CurrentRichTextBox()->select({start, length});
    QTest::qWait(1);
  }
  static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }

  QMainWindow window;
  FormatBar bar;
  TextBox box;
  TextBox other;
  QLineEdit line;
};

TEST_F(Bar, GivesTheFormatsItNames) {
  const struct {
    const char* name;
    const char* tip;
    const char* markup;
  } rows[] = {
      {"Bold", "Bold (Ctrl+B)", "/b1ab/b0"},
      {"Italic", "Italic (Ctrl+I)", "/i1ab/i0"},
      {"Underline", "Underline (Ctrl+U)", "/u1ab/u0"},
      {"StrikeOut", "Strikeout (Ctrl+Shift+K)", "/k1ab/k0"},
      {"Superscript", "Superscript (Ctrl+Shift+P)", "/p1ab/p0"},
      {"Subscript", "Subscript (Ctrl+Shift+B)", "/s1ab/s0"},
      {"SmallCaps", "Small Capitals", "/c1ab/c0"},
  };
  for (const auto& [name, tip, markup] : rows) {
    load("ab", 0, 2);
    EXPECT_EQ(action(name)->toolTip(), QLatin1String(tip));
    EXPECT_FALSE(action(name)->isChecked()) << name;
    QTest::mouseClick(button(name), Qt::LeftButton);
    EXPECT_EQ(box.get_TextQEL(), QLatin1String(markup));
    EXPECT_TRUE(action(name)->isChecked()) << name;
    EXPECT_TRUE(box.focusProxy()->hasFocus()) << name;
    action("Plain")->trigger();
    EXPECT_EQ(box.get_TextQEL(), QStringLiteral("ab"));
    action("UndoStep")->trigger();
    EXPECT_EQ(box.get_TextQEL(), QLatin1String(markup));
    EXPECT_TRUE(action("Redo")->isEnabled());
  }
  press(Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("ab")) << "Ctrl+Space is plain";
}

TEST_F(Bar, OffersTheTablesOfTheBox) {
  load("ab", 0, 2);
  choose("Font", "AltFont3");
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("/f3ab/f0"));
  QTest::qWait(1);
  EXPECT_EQ(action("Font")->iconText(), QStringLiteral("Times New Roman"));
  choose("Color", "Color4");
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("/y4/f3ab/f0/y0"));
  emit action("Color")->menu()->aboutToShow();
  QStringList names;
  for (const QAction* const color : action("Color")->menu()->actions()) {
    if (!color->isSeparator())
      names << color->text() + QLatin1String(color->isChecked() ? "*" : "");
  }
  EXPECT_EQ(names.join(u'|').replace(u'\t', u' '),
            QStringLiteral("Plain colour|Ignored text Ctrl+F1|Hidden text Ctrl+F2|Note text "
                           "Ctrl+F3|Orange Ctrl+F4*|Red Ctrl+F5|Green Ctrl+F6|Dark grey "
                           "Ctrl+F7|Grey Ctrl+F8|Light grey Ctrl+F9"));
  emit action("Font")->menu()->aboutToShow();
  EXPECT_EQ(action("Font")->menu()->actions().size(), 4) << "only fonts in use";
  box.put_ForeColor(0xFF0000);
  choose("Color", "Color0");
  EXPECT_EQ(box.control().get_SelColor(), 0xFF0000);
  box.put_FontName(QStringLiteral("Tahoma"));
  choose("Font", "AltFont0");
  EXPECT_EQ(box.control().get_SelFontName(), u"Tahoma") << "although no font of the table";
}

TEST_F(Bar, NamesAnyColor) {
  const struct {
    int color;
    const char* name;
  } rows[] = {
      {0x000000, "Black"},       {0xFFFFFF, "White"},      {0x808080, "Grey"},
      {0x0000FF, "Red"},         {0x008000, "Dark green"}, {0x80FF80, "Light green"},
      {0x00C0C0, "Dark yellow"}, {0xFF0000, "Blue"},       {0x003F7F, "Brown"},
      {0xFF00FF, "Pink"},        {0x800080, "Dark pink"},  {0xFFFF00, "Turquoise"},
  };
  for (const auto& [color, name] : rows) {
    EXPECT_EQ(FormatBar::color_name(color), QLatin1String(name));
  }
}

TEST_F(Bar, FollowsTheBoxWithTheFocus) {
  other.put_TextQEL(QStringLiteral("/b1x/b0"));
  load("a/b1b/b0", 0, 1);
  EXPECT_EQ(bar.box(), &box);
  EXPECT_FALSE(action("Bold")->isChecked());
  select(2, 0);
  EXPECT_TRUE(action("Bold")->isChecked()) << "the format of what is typed there";
  press(Qt::Key_B, Qt::ControlModifier);
  QTest::qWait(1);
  EXPECT_FALSE(action("Bold")->isChecked());
  other.setFocus();
  EXPECT_EQ(bar.box(), &other);
  EXPECT_TRUE(action("Bold")->isChecked());
  line.setFocus();
  EXPECT_EQ(bar.box(), nullptr);
  EXPECT_FALSE(action("Bold")->isEnabled());
  bar.follow(&box);
  EXPECT_EQ(bar.box(), &box) << "wherever the focus is";
  bar.follow(nullptr);
  EXPECT_EQ(bar.box(), nullptr);
  auto* const brief = new TextBox(window.centralWidget());
  brief->show();
  brief->setFocus();
  EXPECT_EQ(bar.box(), brief);
  bar.follow(brief);
  delete brief;
  QTest::qWait(1);
  EXPECT_EQ(bar.box(), nullptr);
  EXPECT_FALSE(action("UndoStep")->isEnabled());
}

TEST_F(Bar, IsGreyWhereNothingCanBeFormatted) {
  load("ab", 0, 2);
  const auto states = [&] {
    QTest::qWait(1);
    QString enabled;
    for (const char* const name : {"Bold", "SmallCaps", "Color", "CopyFormat"}) {
      enabled += action(name)->isEnabled() ? u'+' : u'-';
    }
    return enabled;
  };
  EXPECT_EQ(states(), QStringLiteral("++++"));
  window.centralWidget()->setEnabled(false);
  EXPECT_EQ(states(), QStringLiteral("----")) << "as all on the form";
  window.centralWidget()->setEnabled(true);
  box.setFocus();
  EXPECT_EQ(states(), QStringLiteral("++++"));
  box.put_RevealCodes(true);
  EXPECT_EQ(states(), QStringLiteral("----"));
  box.put_RevealCodes(false);
  box.put_Lossless(false);
  EXPECT_EQ(states(), QStringLiteral("+-++")) << "nothing that saving would lose";
  box.put_AllowEdits(false);
  EXPECT_EQ(states(), QStringLiteral("----"));
}

TEST_F(Bar, IsWorkedByKeys) {
  load("ab", 0, 2);
  for (const bool mirrored : {false, true}) {
    window.setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
    const Qt::Key next = mirrored ? Qt::Key_Left : Qt::Key_Right;
    press(Qt::Key_F6);
    press(Qt::Key_Home);
    EXPECT_EQ(QApplication::focusWidget(), button("Font")) << "there is nothing to undo";
    EXPECT_EQ(bar.box(), &box);
    press(next);
    press(next);
    ASSERT_EQ(QApplication::focusWidget(), button("Bold"));
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("Bold"));
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    press(next);
    press(Qt::Key_Space);
    EXPECT_EQ(box.get_TextQEL(), QStringLiteral("/i1ab/i0"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(box.focusProxy()->hasFocus());
    press(Qt::Key_F6);
    EXPECT_EQ(QApplication::focusWidget(), button("Italic")) << "where it was left";
    press(Qt::Key_Escape);
    load("ab", 0, 2);
  }
}

TEST_F(Bar, PaintsFormats) {
  auto& view = *static_cast<BoxView*>(box.focusProxy());
  const auto select_by_keys = [&](int at) {
    box.control().put_SelStart(at);
    press(Qt::Key_Right, Qt::ShiftModifier);
    QTest::qWait(1);
  };
  load("/b1a/b0bcd", 0, 1);
  QTest::mouseClick(button("CopyFormat"), Qt::LeftButton);
  select_by_keys(1);
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("/b1ab/b0cd"));
  EXPECT_FALSE(action("CopyFormat")->isChecked());
  select_by_keys(2);
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("/b1ab/b0cd")) << "once";
  load("/c1/y5a/y0/c0bcd", 0, 1);
  QTest::mouseClick(button("CopyFormat"), Qt::LeftButton);
  QTest::mouseDClick(button("CopyFormat"), Qt::LeftButton);
  select_by_keys(1);
  const QPoint start = view.cursorRect().center();
  press(Qt::Key_End);
  const QPoint end = view.cursorRect().center();
  QTest::mousePress(view.viewport(), Qt::LeftButton, {}, start);
  QTest::mouseEvent(QTest::MouseMove, view.viewport(), Qt::NoButton, {}, end);
  QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, end);
  EXPECT_EQ(box.control().get_SelLength(), 2);
  QTest::qWait(1);
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("/c1/y5abcd/y0/c0"));
  EXPECT_TRUE(action("CopyFormat")->isChecked());
  press(Qt::Key_Escape);
  EXPECT_FALSE(action("CopyFormat")->isChecked());
}

TEST_F(Bar, SharesItsActionsWithTheMenuOfTheBox) {
  load("/b1ab/b0c", 0, 2);
  box.put_ShowEditorOnShiftF2(true);
  int position = -1;
  QObject::connect(&box, &TextBox::AboutToShowMenu, [&](QMenu* menu, int at) {
    position = at;
    menu->addAction(QStringLiteral("of the host"));
  });
  QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(1, 5), QPoint(1, 5));
  QApplication::sendEvent(static_cast<BoxView*>(box.focusProxy())->viewport(), &event);
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  QStringList shown;
  for (QAction* const item : menu->actions()) {
    if (!item->isSeparator()) shown << item->text().section(u'\t', 0, 0).remove(u'&');
    if (item->text().startsWith(u"&Bold")) {
      EXPECT_TRUE(item->isChecked());
    }
  }
  EXPECT_EQ(shown.join(u'|'),
            QStringLiteral("Undo|Redo|Cut|Copy|Paste|Paste as Text|Delete|Select All|Bold|Italic|"
                           "Underline|Strikeout|Superscript|Subscript|Small Capitals|Font|Colour|"
                           "Plain|Change Case|Large Editor|of the host"));
  EXPECT_EQ(position, 0);
  for (const QAction* const item : menu->actions()) {
    if (!item->text().startsWith(u"Change")) continue;
    item->menu()->actions()[1]->trigger();
  }
  menu->close();
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("/b1AB/b0c"));
}

}  // namespace
}  // namespace qel::qt
