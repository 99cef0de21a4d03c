// The large editor in its window.

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <functional>

#include "qel/qt/FormatBar.h"
#include "qel/qt/TextBox.h"
#include "qt/Printing.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/EditorDialog.h"

namespace qel::qt {
namespace {

class QtEditor : public testing::Test {
 protected:
  QtEditor() { box.put_AsksBeforeClosing(false); }

  /// Opens the editor on the markup, lets a user act in it, and returns the markup afterwards.
  QString edit(const char* markup, const std::function<void(EditorDialog&)>& user) {
    box.put_TextQEL(QLatin1String(markup));
    bool has_acted = false;
    const auto act = [&] {
      const QPointer<EditorDialog> dialog =
          qobject_cast<EditorDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      QTest::qWait(1);
      user(*dialog);
      has_acted = true;
      if (dialog != nullptr && dialog->isVisible()) dialog->close();
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
                   EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Large Editor"));
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
    ASSERT_EQ(menus.size(), 5);
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

TEST_F(QtEditor, StandsBeforeTheWindowOfItsBox) {
  auto* const owner = new QWidget;
  box.setParent(owner);
  owner->show();
  QWidget active;
  active.show();
  QApplication::setActiveWindow(&active);
  EXPECT_EQ(edit("ab",
                 [&](EditorDialog& dialog) {
                   EXPECT_EQ(dialog.parentWidget(), owner);
                   QTest::keyClick(&view(dialog), Qt::Key_A, Qt::ControlModifier);
                   QTest::keyClick(&view(dialog), Qt::Key_B, Qt::ControlModifier);
                   dialog.done(0);
                 }),
            QStringLiteral("/b1ab/b0"));
  box.setParent(nullptr);
  delete owner;
}

TEST_F(QtEditor, IsAsLargeAsItsBoxAndThenAsItWasLeft) {
  const QTemporaryDir folder;
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
  QCoreApplication::setOrganizationName(QStringLiteral("test"));
  box.put_Multiline(true);
  box.resize(480, 460);
  box.show();
  box.put_Zoom(150);
  const QSize of_box = BoxView::of(*box.control().CurrentRichTextBox())->size();
  QSize left;
  edit("a", [&](EditorDialog& dialog) {
    EXPECT_GE(view(dialog).width(), of_box.width());
    EXPECT_GE(view(dialog).height(), of_box.height());
    EXPECT_EQ(view(dialog).options().zoom, 150);
    const QSize screen = dialog.screen()->availableSize();
    EXPECT_LE(dialog.width(), screen.width() * 2 / 3);
    dialog.resize(dialog.size() - QSize(100, 50));
    QTest::qWait(1);
    left = view(dialog).size();
  });
  edit("a", [&](EditorDialog& dialog) { EXPECT_EQ(view(dialog).size(), left); });
  QCoreApplication::setOrganizationName({});
  box.put_Zoom(100);
  box.resize(3000, 3000);
  edit("a", [&](EditorDialog& dialog) {
    EXPECT_LE(view(dialog).width(), dialog.screen()->availableSize().width() * 2 / 3);
  });
}

TEST_F(QtEditor, AsksBeforeItDropsWhatWasEdited) {
  box.put_AsksBeforeClosing(true);
  const auto answer = [](QMessageBox::StandardButton with) {
    QTimer::singleShot(0, [with] {
      auto* const question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(question, nullptr);
      question->button(with)->click();
    });
  };
  EXPECT_EQ(edit("ab",
                 [&](EditorDialog& dialog) {
                   QTest::keyClick(&view(dialog), Qt::Key_X);
                   answer(QMessageBox::Cancel);
                   QTest::keyClick(&view(dialog), Qt::Key_Escape);
                   EXPECT_TRUE(dialog.isVisible());
                   answer(QMessageBox::Discard);
                   QTest::keyClick(&view(dialog), Qt::Key_Escape);
                   EXPECT_FALSE(dialog.isVisible());
                 }),
            QStringLiteral("ab"));
  EXPECT_EQ(edit("ab",
                 [&](EditorDialog& dialog) {
                   QTest::keyClick(&view(dialog), Qt::Key_X);
                   answer(QMessageBox::Cancel);
                   dialog.close();
                   EXPECT_TRUE(dialog.isVisible());
                   answer(QMessageBox::Save);
                   dialog.close();
                 }),
            QStringLiteral("xab"));
  const auto closes_in_silence = [&](const char* why, auto edits) {
    EXPECT_EQ(edit("ab",
                   [&](EditorDialog& dialog) {
                     edits(dialog);
                     EXPECT_FALSE(dialog.isVisible()) << why;
                   }),
              QStringLiteral("ab"))
        << why;
  };
  closes_in_silence("nothing edited", [](EditorDialog& dialog) { dialog.close(); });
  closes_in_silence("the button", [](EditorDialog& dialog) {
    QTest::keyClick(&view(dialog), Qt::Key_X);
    for (QPushButton* const button : dialog.findChildren<QPushButton*>()) {
      if (!button->isDefault()) button->click();
    }
  });
  box.put_Lossless(false);
  closes_in_silence("the stated way", [](EditorDialog& dialog) {
    QTest::keyClick(&view(dialog), Qt::Key_X);
    dialog.close();
  });
}

TEST_F(QtEditor, GoesWithItsWindowEvenWhileItAsks) {
  box.put_AsksBeforeClosing(true);
  for (const bool by_frame : {false, true}) {
    auto* const owner = new QWidget;
    box.setParent(owner);
    owner->show();
    bool has_asked = false;
    const auto end_window = [&] {
      has_asked = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr;
      box.setParent(nullptr);
      delete owner;
    };
    edit("ab", [&](EditorDialog& dialog) {
      QTest::keyClick(&view(dialog), Qt::Key_X);
      QTimer::singleShot(0, end_window);
      by_frame ? static_cast<void>(dialog.close()) : dialog.reject();
    });
    EXPECT_TRUE(has_asked);
  }
}

TEST_F(QtEditor, HasTheBarAndTheMenuOfItsBox) {
  QSignalSpy menus(&box, &TextBox::AboutToShowMenu);
  EXPECT_EQ(edit("ab",
                 [&](EditorDialog& dialog) {
                   QTest::keyClick(&view(dialog), Qt::Key_A, Qt::ControlModifier);
                   auto* const bar = dialog.findChild<FormatBar*>();
                   ASSERT_NE(bar, nullptr);
                   for (QAction* const action : bar->actions()) {
                     if (action->objectName() == QLatin1String("Italic")) action->trigger();
                   }
                   QContextMenuEvent by_key(QContextMenuEvent::Keyboard, QPoint(5, 5),
                                            QPoint(5, 5));
                   QApplication::sendEvent(&view(dialog), &by_key);
                   ASSERT_NE(QApplication::activePopupWidget(), nullptr);
                   QApplication::activePopupWidget()->close();
                   ASSERT_EQ(menus.size(), 1);
                   EXPECT_EQ(menus[0][1].toInt(), 2) << "where the caret is";
                   QTest::keyClick(&view(dialog), Qt::Key_Return);
                 }),
            QStringLiteral("/i1ab/i0"));
  box.put_Lossless(false);
  edit("ab", [](EditorDialog& dialog) {
    EXPECT_EQ(dialog.findChild<FormatBar*>(), nullptr);
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Text Editor"));
    EXPECT_EQ(dialog.findChild<QMenuBar*>()->actions().size(), 2);
  });
}

}  // namespace
}  // namespace qel::qt
