// Marks in a box's window, and the bar that finds and replaces.

#include <gtest/gtest.h>

#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <QToolButton>
#include <QVBoxLayout>
#include <string>

#include "qel/qt/FindBar.h"
#include "qel/qt/FormatBar.h"
#include "qel/qt/TextBox.h"
#include "qt/platform/BoxMarks.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/Positions.h"
#include "qt/platform/Text.h"

namespace qel::qt {
namespace {

/// Marks each occurrence of a letter.
class Letters : public MarkSource {
 public:
  Letters(char16_t letter, QTextCharFormat format) : letter_(letter), format_(std::move(format)) {}

  std::vector<Mark> marks(const box::Box& box, richtext::Extent visible) override {
    ++asked;
    last = visible;
    std::vector<Mark> found;
    for (std::size_t at = visible.start; at < visible.end; ++at) {
      if (box.text()[at] == letter_) found.push_back({{at, at + length}, format_});
    }
    return found;
  }

  std::size_t length = 1;
  int asked = 0;
  richtext::Extent last;

 private:
  char16_t letter_;
  QTextCharFormat format_;
};

QTextCharFormat colored(QColor back) {
  QTextCharFormat format;
  format.setBackground(back);
  return format;
}

QTextCharFormat waved() {
  QTextCharFormat format;
  format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
  return format;
}

class Window : public testing::Test {
 protected:
  Window() {
    box.put_Multiline(true);
    box.resize(300, 100);
    box.show();
  }

  BoxView& view() { return *static_cast<BoxView*>(box.focusProxy()); }

  /// Each mark as its text, "~" before a waved one and "#" before one with a background.
  std::string marked() {
    QCoreApplication::processEvents();
    std::string all;
    for (const QTextEdit::ExtraSelection& mark : view().marks().shown()) {
      all += all.empty() ? "" : " ";
      all += mark.format.underlineStyle() == QTextCharFormat::WaveUnderline ? "~" : "";
      all += mark.format.background().style() == Qt::NoBrush ? "" : "#";
      all += mark.cursor.selectedText().toStdString();
    }
    return all;
  }

  TextBox box;
};

TEST_F(Window, MarksFollowTheText) {
  Letters waves(u'a', waved());
  box.put_Text(QStringLiteral("xay\r\nbab"));
  view().marks().add(waves, BoxMarks::Layer::spelling);
  EXPECT_EQ(marked(), "~a ~a");
  {
    Letters hits(u'b', colored(Qt::yellow));
    hits.length = 2;
    view().marks().add(hits, BoxMarks::Layer::hits);
    EXPECT_EQ(marked(), "~a ~a #ba #b") << "the last one reaches behind the text";
    box.control().CurrentRichTextBox()->select({1, 1});
    box.control().CurrentRichTextBox()->put_SelText(u"aa\r\na");
    EXPECT_EQ(marked(), "~a ~a ~a ~a #ba #b");
  }
  EXPECT_EQ(marked(), "~a ~a ~a ~a");
  const int asked = waves.asked;
  box.put_Text(QStringLiteral("a"));
  box.put_Text(QStringLiteral("b"));
  EXPECT_EQ(marked(), "");
  EXPECT_EQ(waves.asked, asked + 1) << "once a turn";
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("b"));
  view().marks().remove(waves);
  box.put_Text(QStringLiteral("a"));
  EXPECT_EQ(marked(), "");
}

TEST_F(Window, MarksTheVisiblePartOnly) {
  Letters letters(u'a', colored(Qt::yellow));
  box.put_Text(QStringLiteral("abcdefghij\r\n").repeated(20000));
  EXPECT_LT(view().marks().visible().end, 200U);
  const QTextBlock last = view().document()->lastBlock().previous();
  EXPECT_EQ(last.layout()->lineCount(), 0) << "what is not visible is laid out later";
  view().marks().add(letters, BoxMarks::Layer::hits);
  QCoreApplication::processEvents();
  EXPECT_EQ(letters.last.start, 0U);
  EXPECT_LT(letters.last.end, 200U);
  view().verticalScrollBar()->setValue(5000);
  const std::string shown = marked();
  EXPECT_GT(letters.last.start, 1000U);
  EXPECT_LT(letters.last.length(), 200U);
  EXPECT_NE(shown, "");
  EXPECT_EQ(letters.last.start % 12, 0U) << "whole lines";
  box.put_Text(QStringLiteral("a").repeated(20000));
  QCoreApplication::processEvents();
  EXPECT_LT(letters.last.length(), 5000U);
}

TEST_F(Window, PaintsMarksBehindTheText) {
  Letters letters(u'a', colored(Qt::green));
  letters.length = 2;
  view().marks().add(letters, BoxMarks::Layer::hits);
  /// In how many columns of pixels the window is marked.
  const auto columns_marked = [this] {
    EXPECT_EQ(marked(), "#ab");
    const QImage image = view().viewport()->grab().toImage();
    int columns = 0;
    for (int x = 0; x < image.width(); ++x) {
      int y = 0;
      while (y < image.height() && image.pixelColor(x, y) != QColor(Qt::green)) ++y;
      columns += y < image.height() ? 1 : 0;
    }
    return columns;
  };
  const auto painted = [&](const char16_t* text) {
    box.put_Text(QString::fromUtf16(text));
    view().verticalScrollBar()->setValue(view().verticalScrollBar()->maximum());
    return columns_marked();
  };
  const int one = painted(u"xx ab x");
  EXPECT_GT(one, 4);
  EXPECT_LT(one, 30);
  EXPECT_NEAR(painted(u"\u05D0 ab \u05D1"), one, 1) << "in text from right to left";
  EXPECT_NEAR(painted(u"\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n\r\n ab"), one, 1)
      << "scrolled";
  painted(u"xx ab x");
  QInputMethodEvent composes(QStringLiteral("WW"), {});
  QApplication::sendEvent(&view(), &composes);
  EXPECT_NEAR(columns_marked(), one, 1) << "behind composed text";
  EXPECT_EQ(view().marks().visible().end, 7U);
}

TEST_F(Window, MarksWordsWithoutCaseAndAccents) {
  box.put_Text(QStringLiteral("CAF\u00C9 cafe\u0301s decaf\r\n\uFB01ne \u0130x"));
  box.MarkWords({QStringLiteral("caf\u00E9"), QStringLiteral("fi"), QStringLiteral("")});
  EXPECT_EQ(marked(), "#CAF\u00C9 #cafe\u0301 #\uFB01");
  box.MarkWords({});
  EXPECT_EQ(marked(), "");
}

/// A window with a box above a bar, and another box below it.
class Finder : public testing::Test {
 protected:
  Finder() {
    auto* const layout = new QVBoxLayout(&form);
    layout->addWidget(&box);
    layout->addWidget(&bar);
    layout->addWidget(&other);
    box.put_Multiline(true);
    form.resize(600, 300);
    form.show();
    form.activateWindow();
    QApplication::setActiveWindow(&form);
    box.setFocus();
  }

  BoxView& view() { return *static_cast<BoxView*>(box.focusProxy()); }
  box::Box& edited() { return *view().box(); }
  QLineEdit& text() { return *child<QLineEdit>("Find"); }
  QLineEdit& replacement() { return *child<QLineEdit>("Replace with"); }

  template <class Kind>
  Kind* child(const char* name) {
    for (Kind* const found : bar.findChildren<Kind*>()) {
      if (found->accessibleName() == QLatin1String(name)) return found;
    }
    return nullptr;
  }
  QPushButton& button(const char* caption) {
    for (QPushButton* const found : bar.findChildren<QPushButton*>()) {
      if (found->text() == QLatin1String(caption)) return *found;
    }
    throw std::runtime_error(caption);
  }

  /// The selection and what the bar says.
  std::string state() {
    const box::Selection selected = edited().selected();
    return std::to_string(selected.start()) + "-" + std::to_string(selected.end()) + " " +
           bar.status().toStdString();
  }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
  }
  void choose(const QString& caption) {
    auto* const menu = child<QToolButton>("Find Format")->menu();
    emit menu->aboutToShow();
    QList<QAction*> actions = menu->actions();
    for (qsizetype i = 0; i < actions.size(); ++i) {
      if (actions[i]->menu() != nullptr) actions += actions[i]->menu()->actions();
      if (actions[i]->text() == caption) return actions[i]->trigger();
    }
    FAIL() << qPrintable(caption);
  }

  QWidget form;
  TextBox box;
  FindBar bar;
  TextBox other;
};

TEST_F(Finder, FindsWhileOneTypesAndGoesOnAtTheOtherEnd) {
  box.put_Text(QStringLiteral("tea tent\r\nten, tea"));
  edited().put_selection({1, 1});
  EXPECT_FALSE(bar.isVisible());
  bar.open();
  ASSERT_EQ(QApplication::focusWidget(), &text());
  QTest::keyClicks(&text(), QStringLiteral("te"));
  EXPECT_EQ(state(), "4-6 2 of 4");
  QTest::keyClicks(&text(), QStringLiteral("n,"));
  EXPECT_EQ(state(), "10-14 1 of 1");
  press(Qt::Key_Backspace);
  EXPECT_EQ(state(), "10-13 2 of 2");
  press(Qt::Key_Return);
  EXPECT_EQ(state(), "4-7 1 of 2, from the beginning");
  press(Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(state(), "10-13 2 of 2, from the end");
  press(Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(state(), "4-7 1 of 2");
  bar.put_whole_words(true);
  EXPECT_EQ(state(), "10-13 1 of 1");
  bar.put_text(QStringLiteral("TEA"));
  EXPECT_EQ(state(), "15-18 2 of 2");
  view().setFocus();
  press(Qt::Key_F3);
  EXPECT_EQ(state(), "0-3 1 of 2, from the beginning");
  press(Qt::Key_Right);
  EXPECT_EQ(state(), "3-3 2 hits");
  bar.put_matches_case(true);
  EXPECT_EQ(state(), "3-3 No hits");
  text().setFocus();
  press(Qt::Key_Escape);
  EXPECT_FALSE(bar.isVisible());
  EXPECT_EQ(QApplication::focusWidget(), &view());
}

TEST_F(Finder, TakesTheSelectionAndMarksHitsWhileItIsOpen) {
  box.put_Text(QStringLiteral("one two one"));
  edited().put_selection({8, 11});
  bar.open();
  EXPECT_EQ(bar.text(), QStringLiteral("one"));
  EXPECT_EQ(state(), "8-11 2 of 2");
  QCoreApplication::processEvents();
  EXPECT_EQ(view().marks().shown().size(), 2);
  edited().put_caret(0, false);
  edited().type(u"one ");
  QCoreApplication::processEvents();
  EXPECT_EQ(view().marks().shown().size(), 3);
  EXPECT_TRUE(QTest::qWaitFor([&] { return state() == "4-4 3 hits"; }));
  press(Qt::Key_Escape);
  QCoreApplication::processEvents();
  EXPECT_EQ(view().marks().shown().size(), 0);
  bar.find_next();
  EXPECT_EQ(state(), "4-7 2 of 3") << "while it is hidden, too";
}

TEST_F(Finder, FollowsTheFocusOrAGivenBox) {
  const auto marked = [](TextBox& of) {
    QCoreApplication::processEvents();
    return static_cast<BoxView*>(of.focusProxy())->marks().shown().size();
  };
  box.put_Text(QStringLiteral("a"));
  other.put_Text(QStringLiteral("aa"));
  bar.put_text(QStringLiteral("a"));
  bar.open();
  EXPECT_EQ(marked(box), 1);
  other.setFocus();
  EXPECT_EQ(marked(box), 0);
  EXPECT_EQ(marked(other), 2);
  bar.follow(&box);
  EXPECT_EQ(marked(box), 1);
  EXPECT_EQ(marked(other), 0);
  box.put_Multiline(false);
  box.put_Text(QStringLiteral("aaa"));
  bar.find_next();
  EXPECT_EQ(marked(box), 3);
}

TEST_F(Finder, ReplacesWithTheFormatsInOneStep) {
  box.put_TextQEL(QStringLiteral("tea /b1Tea/b0 for tea"));
  bar.open_replace();
  ASSERT_TRUE(replacement().isVisible());
  QTest::keyClicks(&text(), QStringLiteral("tea"));
  replacement().setFocus();
  QTest::keyClicks(&replacement(), QStringLiteral("coffee"));
  press(Qt::Key_Return);
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("coffee /b1Tea/b0 for tea"));
  EXPECT_EQ(state(), "7-10 1 of 2");
  QTest::mouseClick(&button("Replace All"), Qt::LeftButton);
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("coffee /b1coffee/b0 for coffee"));
  EXPECT_EQ(bar.status(), QStringLiteral("2 replaced"));
  edited().undo();
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("coffee /b1Tea/b0 for tea"));
  box.put_AllowEdits(false);
  EXPECT_FALSE(button("Replace All").isEnabled());
  bar.replace();
  bar.replace_all();
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("coffee /b1Tea/b0 for tea"));
  press(Qt::Key_Escape);
  bar.open();
  EXPECT_FALSE(replacement().isVisible());
}

TEST_F(Finder, FindsFormats) {
  box.put_TextQEL(QStringLiteral("a /b1b/b0 /f2/b1a/f0/b0 /y4c/y0"));
  bar.open();
  choose(QStringLiteral("Bold"));
  EXPECT_EQ(state(), "2-3 1 of 2");
  QTest::keyClicks(&text(), QStringLiteral("a"));
  EXPECT_EQ(state(), "4-5 1 of 1");
  choose(QStringLiteral("Courier New"));
  EXPECT_EQ(state(), "4-5 1 of 1");
  choose(QStringLiteral("Any Format"));
  EXPECT_EQ(state(), "4-5 2 of 2");
  text().clear();
  choose(FormatBar::color_name(box.control().GetColorGivenColorIndex(4)));
  EXPECT_EQ(state(), "6-7 1 of 1");
  choose(FormatBar::color_name(box.control().GetColorGivenColorIndex(4)));
  EXPECT_EQ(bar.status(), QString()) << "nothing is wanted any more";
}

TEST_F(Finder, CountsNoFurtherThanAnyoneReads) {
  box.put_Text(QStringLiteral("a").repeated(200).append(QStringLiteral("\r\n")).repeated(60));
  bar.open();
  QTest::keyClicks(&text(), QStringLiteral("a"));
  EXPECT_EQ(bar.status(), QStringLiteral("1 of more than %L1").arg(10000));
  press(Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(bar.status(), QStringLiteral("more than %L1, from the end").arg(10000));
  form.resize(250, 300);
  QCoreApplication::processEvents();
  EXPECT_LE(form.width(), 250) << "it has room in a narrow window";
}

}  // namespace
}  // namespace qel::qt
