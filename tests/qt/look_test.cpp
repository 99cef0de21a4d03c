// How a text box shows its text: zoom, colours on backgrounds, links, the placeholder.

#include <gtest/gtest.h>

#include <QApplication>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QWheelEvent>
#include <algorithm>
#include <functional>
#include <utility>

#include "qel/base/Contrast.h"
#include "qel/qt/TextBox.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/FormatMapping.h"

namespace qel::qt {
namespace {

class Look : public testing::Test {
 public:
  ~Look() override { QApplication::setPalette(before); }

 protected:
  Look() {
    box.put_Multiline(true);
    box.resize(300, 200);
    box.show();
    QApplication::setActiveWindow(&box);
    box.setFocus();
  }

  BoxView& view() { return *static_cast<BoxView*>(box.focusProxy()); }
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(&view(), key, modifiers);
  }
  void turn_wheel(int angle) {
    QWheelEvent turns({5, 5}, view().mapToGlobal(QPointF(5, 5)), {}, {0, angle}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view().viewport(), &turns);
  }
  QString first_line() { return view().cursorForPosition({8, 1}).block().text(); }
  QRect line(int position) {
    QTextCursor cursor(view().document());
    cursor.setPosition(position);
    return view().cursorRect(cursor);
  }
  /// Between the background and the pixel in the box that is furthest from it.
  double greatest_contrast() {
    const QImage image = view().viewport()->grab().toImage();
    const Color back = from_qt(image.pixelColor(1, 1));
    double greatest = 1;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        greatest = std::max(greatest, contrast(from_qt(image.pixelColor(x, y)), back));
      }
    }
    return greatest;
  }

  const QPalette before = QApplication::palette();
  TextBox box;
};

TEST_F(Look, ZoomsWithoutAnyChangeOfTheText) {
  QString lines;
  for (int i = 0; i < 300; ++i) lines += QStringLiteral("line /b1%1/b0/nl").arg(i);
  box.put_TextQEL(lines);
  QTest::keyClicks(&view(), QStringLiteral("x"));
  const QString markup = box.get_TextQEL();
  const QString untyped = QString(markup).remove(QLatin1Char('x'));
  const std::u16string rtf = box.control().get_TextRTF();
  const int height = line(0).height();
  view().verticalScrollBar()->setValue(30 * height);
  const QString first = first_line();
  QSignalSpy changed(&box, &TextBox::Change);
  QSignalSpy zoomed(&box, &TextBox::ZoomChanged);
  const std::pair<std::function<void()>, int> steps[] = {
      {[&] { press(Qt::Key_Plus, Qt::ControlModifier); }, 110},
      {[&] { press(Qt::Key_Equal, Qt::ControlModifier); }, 125},
      {[&] { press(Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier); }, 150},
      {[&] { turn_wheel(60); }, 150},
      {[&] { turn_wheel(60); }, 175},
      {[&] { box.put_Zoom(1000); }, 500},
      {[&] { box.put_Zoom(1); }, 25},
      {[&] { turn_wheel(-120); }, 25},
      {[&] { press(Qt::Key_0, Qt::ControlModifier); }, 100},
      {[&] { press(Qt::Key_Minus, Qt::ControlModifier); }, 90},
      {[&] { box.put_Zoom(200); }, 200}};
  for (const auto& [step, zoom] : steps) {
    step();
    EXPECT_EQ(box.get_Zoom(), zoom);
    EXPECT_NEAR(line(0).height(), height * zoom / 100.0, 2 + zoom / 100.0);
    EXPECT_EQ(first_line(), first) << zoom;
  }
  EXPECT_EQ(zoomed.size(), 9);
  EXPECT_EQ(line(0).left(), box.get_TextMargin()) << "the margin is in pixels";
  EXPECT_TRUE(changed.isEmpty());
  EXPECT_EQ(box.get_TextQEL(), markup);
  EXPECT_EQ(box.control().get_TextRTF(), rtf);
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(box.get_TextQEL(), untyped);
  box.put_Multiline(false);
  EXPECT_EQ(view().options().zoom, 200) << "both boxes have the same";
}

TEST_F(Look, KeepsColoursReadableWhateverTheTheme) {
  QString lines;
  for (int i = 0; i < 60; ++i) lines += QStringLiteral("/y%1word/y0/nl").arg(i % 9 + 1);
  const auto furthest = [&] {
    double least = 21;
    for (QTextBlock block = view().document()->begin(); block.isValid(); block = block.next()) {
      for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QBrush shown = it.fragment().charFormat().foreground();
        const QColor color =
            shown.style() == Qt::NoBrush ? view().palette().color(QPalette::Text) : shown.color();
        least = std::min(least,
                         contrast(from_qt(color), from_qt(view().palette().color(QPalette::Base))));
      }
    }
    return least;
  };
  constexpr int follows = static_cast<int>(0x80000005);
  for (const int base : {0xFFFFFF, 0x202020}) {
    QPalette theme(QColor::fromRgb(static_cast<QRgb>(base)));
    theme.setColor(QPalette::Base, QColor::fromRgb(static_cast<QRgb>(base)));
    theme.setColor(QPalette::Text, base == 0x202020 ? Qt::white : Qt::black);
    theme.setColor(QPalette::PlaceholderText, Qt::gray);
    for (const int back : {follows, 0x80FFFF, 0x401010}) {
      SCOPED_TRACE(testing::Message() << base << " " << back);
      box.put_TextQEL(lines);
      box.control().CurrentRichTextBox()->select({9, 4});
      QTest::keyClicks(&view(), QStringLiteral("x"));
      view().verticalScrollBar()->setValue(90);
      const QString markup = box.get_TextQEL();
      const auto selected = view().box()->selected();
      box.put_BackColor(back);
      QApplication::setPalette(theme);
      QCoreApplication::processEvents();
      EXPECT_GE(furthest(), readable_contrast);
      EXPECT_EQ(view().verticalScrollBar()->value(), 90);
      EXPECT_EQ(view().box()->selected(), selected);
      EXPECT_EQ(box.get_TextQEL(), markup);
      box.put_AdaptsColors(false);
      EXPECT_LT(furthest(), readable_contrast);
      box.put_AdaptsColors(true);
      press(Qt::Key_Z, Qt::ControlModifier);
      EXPECT_NE(box.get_TextQEL(), markup) << "there is something to undo";
      box.put_TextQEL(QString());
      box.put_PlaceholderText(QString());
      view().setCursorWidth(0);
      ASSERT_EQ(greatest_contrast(), 1);
      box.put_PlaceholderText(QStringLiteral("placeholder"));
      EXPECT_GE(greatest_contrast(), 4) << "letters have soft edges";
    }
  }
}

TEST_F(Look, OpensLinks) {
  box.put_Text(QStringLiteral("see www.example.org, or not"));
  QUrl opened;
  QObject::connect(&box, &TextBox::LinkActivated, [&](const QUrl& url, bool* opens) {
    opened = url;
    *opens = false;
  });
  const QPoint place = line(8).center();
  const auto move = [&](QPoint to, Qt::KeyboardModifiers modifiers) {
    QMouseEvent moves(QEvent::MouseMove, to, view().viewport()->mapToGlobal(QPointF(to)),
                      Qt::NoButton, Qt::NoButton, modifiers);
    QApplication::sendEvent(view().viewport(), &moves);
    QCoreApplication::processEvents();
  };
  const auto underlined = [&] {
    const auto marks = view().extraSelections();
    return marks.isEmpty() ? QString() : marks.first().cursor.selectedText();
  };
  move(place, Qt::NoModifier);
  EXPECT_EQ(underlined(), QStringLiteral("www.example.org"));
  EXPECT_EQ(view().viewport()->cursor().shape(), Qt::IBeamCursor);
  move(place, Qt::ControlModifier);
  EXPECT_EQ(view().viewport()->cursor().shape(), Qt::PointingHandCursor);
  QTest::mouseClick(view().viewport(), Qt::LeftButton, Qt::NoModifier, place);
  EXPECT_EQ(opened, QUrl());
  QTest::mouseClick(view().viewport(), Qt::LeftButton, Qt::ControlModifier, place);
  EXPECT_EQ(opened, QUrl(QStringLiteral("http://www.example.org")));
  move(line(1).center(), Qt::ControlModifier);
  EXPECT_EQ(underlined(), QString());
  EXPECT_EQ(view().viewport()->cursor().shape(), Qt::IBeamCursor);
  opened.clear();
  box.control().CurrentRichTextBox()->select({19, 0});
  QMenu menu;
  view().links().fill_menu(menu);
  ASSERT_FALSE(menu.isEmpty()) << "the caret is behind the link";
  menu.actions().at(0)->trigger();
  EXPECT_EQ(opened, QUrl(QStringLiteral("http://www.example.org")));
  EXPECT_FALSE(view().links().link_at(20));
  box.put_OpensLinks(false);
  EXPECT_FALSE(view().links().link_at(19));
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("see www.example.org, or not"));

  box.put_OpensLinks(true);
  box.put_Multiline(false);
  box.setLayoutDirection(Qt::RightToLeft);
  const QString words = QStringLiteral("\u05D0\u05D1\u05D2 ").repeated(99);
  box.put_Text(words + QStringLiteral("www.example.org"));
  for (const auto& [at, is_link] : {std::pair(5, false), std::pair(400, true)}) {
    box.control().CurrentRichTextBox()->select({at, 0});
    view().ensureCursorVisible();
    EXPECT_EQ(view().links().link_under(view().cursorRect().center()).has_value(), is_link)
        << "scrolled, from right to left";
  }
}

}  // namespace
}  // namespace qel::qt
