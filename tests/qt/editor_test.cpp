// The large editor in its window.

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <functional>

#include "qel/qt/TextBox.h"
#include "qt/Printing.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/EditorDialog.h"

namespace qel::qt {
namespace {

class QtEditor : public testing::Test {
 protected:
  /// Opens the editor on the markup, lets a user act in it, and returns the markup afterwards.
  QString edit(const char* markup, const std::function<void(EditorDialog&)>& user) {
    box.put_TextQEL(QLatin1String(markup));
    bool has_acted = false;
    const auto act = [&] {
      auto* const dialog = qobject_cast<EditorDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      QTest::qWait(1);
      user(*dialog);
      has_acted = true;
      if (dialog->isVisible()) dialog->close();
    };
    QMetaObject::invokeMethod(&box, act, Qt::QueuedConnection);
    box.InvokeLargeEditor();
    EXPECT_TRUE(has_acted);
    return box.get_TextQEL();
  }

  static BoxView& view(EditorDialog& dialog) { return dialog.view(); }
  static QAction* item(EditorDialog& dialog, const char* name) {
    return dialog.findChild<QAction*>(QLatin1String(name));
  }

  TextBox box;
};

TEST_F(QtEditor, IsWorkedByKeysAlone) {
  const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  };
  EXPECT_EQ(edit("ab",
                 [&](EditorDialog& dialog) {
                   EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Text Editor"));
                   ASSERT_EQ(QApplication::focusWidget(), &view(dialog));
                   press(Qt::Key_X);
                   press(Qt::Key_Tab);
                   EXPECT_EQ(QApplication::focusWidget()->property("text"), QStringLiteral("OK"));
                   press(Qt::Key_Tab);
                   press(Qt::Key_Space);
                   EXPECT_FALSE(dialog.isVisible()) << "Cancel";
                 }),
            QStringLiteral("ab"));
  EXPECT_EQ(edit("ab",
                 [&](EditorDialog& dialog) {
                   press(Qt::Key_X);
                   press(Qt::Key_Escape);
                   EXPECT_FALSE(dialog.isVisible());
                 }),
            QStringLiteral("ab"));
}

TEST_F(QtEditor, ShowsTheStateOfTheCaretInItsMenus) {
  edit("a/b1b/b0", [](EditorDialog& dialog) {
    const QList<QAction*> menus = dialog.findChild<QMenuBar*>()->actions();
    ASSERT_EQ(menus.size(), 2);
    QMenu& formats = *menus[1]->menu();
    const auto checked = [&](int start, int length, const char* name) {
      dialog.box()->select({start, length});
      emit formats.aboutToShow();
      return item(dialog, name)->isChecked();
    };
    EXPECT_TRUE(checked(1, 1, "mnuBold"));
    EXPECT_FALSE(checked(0, 2, "mnuBold"));
    EXPECT_FALSE(checked(1, 0, "mnuItalic"));
    EXPECT_TRUE(checked(2, 0, "mnuBold"));
    dialog.box()->select({0, 2});
    item(dialog, "mnuSuperscript")->trigger();
    EXPECT_TRUE(item(dialog, "mnuSuperscript")->isChecked());
    EXPECT_FALSE(item(dialog, "mnuSubscript")->isChecked());
    EXPECT_FALSE(item(dialog, "mnuCut")->isCheckable());
    EXPECT_EQ(item(dialog, "mnuStrikeOut")->text(), QStringLiteral("Stri&keout\tCtrl+Shift+K"));
    EXPECT_TRUE(item(dialog, "mnuStrikeOut")->shortcut().isEmpty()) << "keys are the listener's";
  });
}

TEST_F(QtEditor, ShowsTheMarkupInAPane) {
  edit("a/b1b/b0", [](EditorDialog& dialog) {
    auto* const pane = dialog.findChild<QPlainTextEdit*>();
    EXPECT_FALSE(pane->isVisible());
    dialog.findChild<QToolButton*>(QStringLiteral("fold"))->click();
    EXPECT_TRUE(pane->isVisible());
    EXPECT_EQ(pane->toPlainText(), QStringLiteral("a/b1b/b0"));
    dialog.box()->select({0, 1});
    dialog.box()->put_SelItalic(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return pane->toPlainText().startsWith(u"/i1a"); }, 2000));
  });
}

TEST_F(QtEditor, LaysOutItsFormAtAnySize) {
  edit("a", [](EditorDialog& dialog) {
    for (const QSize size : {QSize(500, 400), QSize(260, 200), QSize(900, 700)}) {
      dialog.resize(size);
      QTest::qWait(1);
      const QRect text = view(dialog).geometry();
      const QRect form = view(dialog).parentWidget()->rect();
      EXPECT_TRUE(form.contains(text));
      for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
        EXPECT_TRUE(form.contains(button->geometry()));
        EXPECT_FALSE(button->geometry().intersects(text));
        for (const QPushButton* other : dialog.findChildren<QPushButton*>()) {
          EXPECT_TRUE(other == button || !other->geometry().intersects(button->geometry()));
        }
      }
    }
  });
}

TEST_F(QtEditor, GoesWithTheWindowThatItStandsBefore) {
  auto* const owner = new QWidget;
  owner->show();
  QApplication::setActiveWindow(owner);
  EXPECT_EQ(edit("ab",
                 [&](EditorDialog& dialog) {
                   EXPECT_EQ(dialog.parentWidget(), owner);
                   QTest::keyClick(&view(dialog), Qt::Key_A, Qt::ControlModifier);
                   QTest::keyClick(&view(dialog), Qt::Key_B, Qt::ControlModifier);
                   dialog.done(0);
                 }),
            QStringLiteral("ab"))
      << "only styles with a menu key are the form's";
  delete owner;
}

}  // namespace
}  // namespace qel::qt
