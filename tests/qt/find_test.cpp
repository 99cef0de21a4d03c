// Marks in a box's window, and the bar that finds and replaces.

#include <gtest/gtest.h>

#include <QApplication>
#include <QScrollBar>
#include <string>

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
    for (const QTextEdit::ExtraSelection& mark : view().extraSelections()) {
      all += all.empty() ? "" : " ";
      all += mark.format.underlineStyle() == QTextCharFormat::WaveUnderline ? "~" : "";
      all += mark.format.background().style() == Qt::NoBrush ? "" : "#";
      all += mark.cursor.selectedText().toStdString();
    }
    return all;
  }

  TextBox box;
};

TEST_F(Window, MarksFollowTheTextAndMergeWhereTheyOverlap) {
  Letters waves(u'a', waved());
  box.put_Text(QStringLiteral("xay\r\nbab"));
  view().marks().add(waves, BoxMarks::Layer::spelling);
  EXPECT_EQ(marked(), "~a ~a");
  {
    Letters hits(u'b', colored(Qt::yellow));
    hits.length = 2;
    view().marks().add(hits, BoxMarks::Layer::hits);
    EXPECT_EQ(marked(), "~a #b ~#a #b") << "the last one reaches behind the text";
    box.control().CurrentRichTextBox()->select({1, 1});
    box.control().CurrentRichTextBox()->put_SelText(u"aa\r\na");
    EXPECT_EQ(marked(), "~a ~a ~a #b ~#a #b");
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

}  // namespace
}  // namespace qel::qt
