// Compares what a window shows with the content of its box, whoever has changed it.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDropEvent>
#include <QImage>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QTest>
#include <QTextBlock>
#include <array>
#include <functional>
#include <string>
#include <utility>

#include "qel/headless/FontMetrics.h"
#include "qel/qt/QtPlatform.h"
#include "qt/platform/BoxView.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Positions.h"
#include "qt/platform/Text.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel::qt {
namespace {

using platform::Scope;

Scheme scheme() {
  return {QtPlatform::system_color_value(QtPlatform::window_text),
          from_qt(QGuiApplication::palette().color(QPalette::Base))};
}

std::string marks(bool bold, bool italic, bool underline, bool strike_through, bool small_caps) {
  return std::string(bold ? "b" : "") + (italic ? "i" : "") + (underline ? "u" : "") +
         (strike_through ? "k" : "") + (small_caps ? "c" : "");
}

std::string name_without_marks(const QTextCharFormat& format) {
  return std::to_string(format.verticalAlignment()) + " " +
         (format.foreground().style() == Qt::NoBrush
              ? "-"
              : format.foreground().color().name().toStdString()) +
         " " + format.fontFamilies().toStringList().join(',').toStdString() + " " +
         std::to_string(format.fontPointSize());
}

std::string name_of(const QTextCharFormat& format) {
  return marks(format.fontWeight() == QFont::Bold, format.fontItalic(), format.fontUnderline(),
               format.fontStrikeOut(), format.fontCapitalization() == QFont::SmallCaps) +
         name_without_marks(format);
}

/// Of the format as a window should show it.
std::string name_of(const richtext::CharFormat& format) {
  return marks(format.bold, format.italic, format.underline, format.strike_through,
               format.small_caps) +
         name_without_marks(to_qt(format, scheme()));
}

std::string name_of(richtext::Alignment alignment) {
  return std::to_string(static_cast<int>(alignment));
}

/// What the window shows, paragraph by paragraph.
std::string shown(const QTextDocument& document) {
  std::string all;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    std::string last;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
      const std::string format = name_of(it.fragment().charFormat());
      if (format != last) all += "[" + format + "]";
      last = format;
      all += test::shown(from_qt(it.fragment().text()));
    }
    all += "|" + name_of(alignment_of(block.blockFormat())) + "\n";
  }
  return all;
}

/// What it should show of the box.
std::string expected(const richtext::Document& content) {
  std::string all;
  std::string last;
  const std::u16string& text = content.text();
  for (std::size_t at = 0; at <= text.size(); ++at) {
    if (at == text.size() || text[at] == u'\r') {
      all += "|" + name_of(content.alignment_at(at)) + "\n";
      last.clear();
      ++at;
      continue;
    }
    const std::string format = name_of(content.format_at(at));
    if (format != last) all += "[" + format + "]";
    last = format;
    char16_t unit = text[at] == u'\u2029' ? u'\u2028' : text[at];
    if (content.format_at(at).font_name == u"Symbol") {
      unit = static_cast<char16_t>(headless::symbol_character(unit));
    }
    all += test::shown({&unit, 1});
  }
  return all;
}

class Display : public testing::Test {
 protected:
  void compare() {
    QCoreApplication::processEvents();
    const QTextDocument& document = *view.document();
    ASSERT_EQ(shown(document), expected(box->document()));
    const QTextCursor cursor = view.textCursor();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
      if (block == cursor.block()) continue;
      EXPECT_EQ(block.layout()->preeditAreaText(), QString()) << "left behind";
    }
    EXPECT_EQ(box_position(document, cursor.anchor()),
              static_cast<std::int32_t>(box->selected().anchor));
    EXPECT_EQ(box_position(document, cursor.position()),
              static_cast<std::int32_t>(box->selected().caret));
    if (cursor.hasSelection()) return;
    EXPECT_EQ(name_of(cursor.charFormat()), name_of(box->typing_format()));
  }

  /// Drops text at a place in the window.
  void drop(const QString& text, QPoint place) {
    QMimeData data;
    data.setText(text);
    QDragEnterEvent enters(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &enters);
    QDropEvent drops(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.viewport(), &drops);
  }

  /// Does something that a host does.
  void act_as_host(test::Random& random);
  /// Does something that a user does.
  void act_as_user(test::Random& random);
  /// Does something that somebody else does, an assistive program for instance.
  void act_as_other(test::Random& random);

  void compose(const char* text) {
    QInputMethodEvent composes(QString::fromUtf8(text), {});
    QCoreApplication::sendEvent(&view, &composes);
  }
  void commit(const char* text) {
    QInputMethodEvent commits;
    commits.setCommitString(QString::fromUtf8(text));
    QCoreApplication::sendEvent(&view, &commits);
  }
  QString composed() const { return view.textCursor().block().layout()->preeditAreaText(); }

  static int number(test::Random& random, int below) {
    return static_cast<int>(random.below(static_cast<std::size_t>(below)));
  }

  QWidget window;
  std::shared_ptr<box::Box> box = BoxView::create(&window);
  BoxView& view = *BoxView::of(*box);
};

constexpr std::array<std::u16string_view, 8> texts = {
    u"",          u"word",           u"two\r\nlines", u"\n",
    u"a\rb\n\nc", u" \u00A0\u2028x", u"\t\U0001F600", u"\u05E9\u05DC\u2029"};

constexpr std::array<std::u16string_view, 5> documents = {
    u"{\\rtf1 plain}", u"{\\rtf1\\qc one\\par\\pard\\qr two\\par\\pard three}",
    u"{\\rtf1{\\fonttbl{\\f0 Verdana;}{\\f1 Symbol;}}{\\colortbl;\\red1\\green2\\blue3;}"
    u"\\f1\\b\\cf1 x\\up4 y\\dn9 z\\par\\par}",
    u"{\\rtf1\\fs30\\i\\ul\\strike\\scaps big\\par}", u"{\\rtf1}"};

void Display::act_as_host(test::Random& random) {
  const Scope scope = random.one_in(4) ? Scope::document : Scope::selection;
  switch (random.below(6)) {
    case 0:
      return box->put_text(scope, texts[random.below(texts.size())]);
    case 1:
      return box->put_rtf(scope, documents[random.below(documents.size())]);
    case 2:
      return box->select(platform::Range{number(random, 24) - 2, number(random, 12) - 2});
    case 3: {
      richtext::FormatChange change;
      if (random.one_in(2)) change.bold = random.one_in(2);
      if (random.one_in(3)) change.small_caps = random.one_in(2);
      if (random.one_in(3)) change.offset = static_cast<std::int16_t>(45 * number(random, 3) - 45);
      if (random.one_in(3)) change.color = number(random, 4) * 0x1234;
      if (random.one_in(3)) change.font_name = random.one_in(2) ? u"Verdana" : u"Symbol";
      if (random.one_in(3)) change.size = static_cast<float>(number(random, 20));
      return box->change_format(change);
    }
    case 4:
      return box->put_alignment(static_cast<richtext::Alignment>(random.below(3)));
    default: {
      platform::BoxAppearance appearance = box->appearance();
      appearance.font_name = random.one_in(2) ? u"Arial" : u"Courier";
      box->put_appearance(appearance);
    }
  }
}

void Display::act_as_user(test::Random& random) {
  constexpr std::array keys = {Qt::Key_Left, Qt::Key_Right,  Qt::Key_Home,
                               Qt::Key_End,  Qt::Key_Delete, Qt::Key_Backspace};
  const QPoint place(number(random, 200), number(random, 100));
  switch (random.below(9)) {
    case 8:
      return compose("composes");
    case 7:
      return QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, place);
    case 6:
      return drop(QStringLiteral("d\nd"), place);
    case 0:
      return QTest::keyClicks(&view, "xy");
    case 1:
      return QTest::keyClick(&view, Qt::Key_Return);
    case 2:
      return QTest::keyClick(&view, Qt::Key_Z, Qt::ControlModifier);
    case 3:
      return QTest::keyClick(&view, Qt::Key_Y, Qt::ControlModifier);
    case 4:
      compose("compose");
      if (random.one_in(3)) act_as_host(random);
      return commit(random.one_in(2) ? "\u5B57" : "");
    default: {
      const bool by_word = random.one_in(3);
      const bool selects = random.one_in(3);
      QTest::keyClick(&view, keys[random.below(keys.size())],
                      (by_word ? Qt::ControlModifier : Qt::NoModifier) |
                          (selects ? Qt::ShiftModifier : Qt::NoModifier));
    }
  }
}

void Display::act_as_other(test::Random& random) {
  switch (random.below(6)) {
    case 5: {
      QTextCursor cursor = view.textCursor();
      cursor.setPosition(number(random, view.document()->characterCount()));
      return view.setTextCursor(cursor);
    }
    case 0:
      return view.insertPlainText(to_qt(texts[random.below(texts.size())]));
    case 1:
      return view.append(QStringLiteral("more"));
    case 2:
      return view.setPlainText(QStringLiteral("all\nnew"));
    case 3:
      return view.setFontItalic(true);
    default:
      view.selectAll();
      view.cut();
  }
}

/// A host that acts while it is told of something.
class ActingListener : public platform::BoxListener {
 public:
  void on_change() override {
    if (std::exchange(acts_, true)) return;
    if (act) act();
    acts_ = false;
  }

  std::function<void()> act;

 private:
  bool acts_ = false;
};

TEST_F(Display, ShowsWhatIsInTheBox) {
  platform::BoxAppearance appearance = box->appearance();
  appearance.width = 200;
  appearance.height = 100;
  appearance.drop_mode = platform::box_drops;
  box->put_appearance(appearance);
  ActingListener listener;
  for (std::uint32_t round = 0; round < 300 && !HasFailure(); ++round) {
    test::Random random(test::base_seed() + round);
    SCOPED_TRACE(random.describe());
    box->put_text(Scope::document, u"one\ntwo\n\nthree");
    box->listen(&listener);
    if (random.one_in(3)) {
      listener.act = [&] {
        if (random.one_in(5)) act_as_host(random);
      };
    }
    for (int step = 0; step < 16 && !HasFailure(); ++step) {
      SCOPED_TRACE(step);
      const std::size_t who = random.below(5);
      if (who < 2) {
        act_as_host(random);
      } else if (who < 4) {
        act_as_user(random);
      } else {
        act_as_other(random);
        if (random.one_in(2)) act_as_host(random);
      }
      compare();
    }
    listener.act = nullptr;
    box->listen(nullptr);
  }
}

TEST_F(Display, ShowsLargeChanges) {
  std::u16string text;
  for (int i = 0; i < 6000; ++i) text.append(i % 9 == 0 ? u"line\n" : u"word ");
  box->put_Text(text);
  box->select(platform::Range{3, 25'000});
  box->put_SelBold(true);
  compare();
  box->put_alignment(richtext::Alignment::center);
  box->put_SelText(text);
  compare();
  QTest::keyClick(&view, Qt::Key_Z, Qt::ControlModifier);
  compare();
}

TEST_F(Display, TakesBackInOneStepWhatWasComposedOverASelection) {
  box->put_Text(u"one two");
  box->select(platform::Range{0, 3});
  compose("a");
  compose("ab");
  commit("\u5B57");
  compare();
  EXPECT_EQ(box->text(), u"\u5B57 two");
  QTest::keyClick(&view, Qt::Key_Z, Qt::ControlModifier);
  compare();
  EXPECT_EQ(box->text(), u"one two");
}

TEST_F(Display, RefusesEditsByOthersWhereTheUserMayNotEdit) {
  platform::BoxAppearance appearance = box->appearance();
  box->put_Text(u"text");
  appearance.read_only = true;
  box->put_appearance(appearance);
  view.insertPlainText(QStringLiteral("x"));
  compare();
  EXPECT_EQ(box->text(), u"text");
  appearance.read_only = appearance.multiline = false;
  box->put_appearance(appearance);
  view.insertPlainText(QStringLiteral("a\nb"));
  compare();
  EXPECT_EQ(box->text(), u"text") << "no second line";
  view.insertPlainText(QStringLiteral("ab"));
  compare();
  EXPECT_EQ(box->text(), u"abtext");
}

TEST_F(Display, KeepsWhatIsComposedWhenTheHostActs) {
  platform::BoxAppearance read_only = box->appearance();
  read_only.drop_mode = platform::box_drops;
  box->put_appearance(read_only);
  read_only.read_only = true;
  const std::pair<std::function<void()>, std::u16string_view> acts[] = {
      {[&] {
         box->select(platform::Range{0, 0});
       },
       u"oneab"},
      {[&] { box->put_SelText(u"x"); }, u"oneabx"},
      {[&] { box->put_SelBold(true); }, u"oneab"},
      {[&] { box->put_SelLength(1); }, u"oneab"},
      {[&] { drop(QStringLiteral("x"), QPoint(2, 5)); }, u"xoneab"},
      {[&] { view.selectAll(); }, u"oneab"},
      {[&] { view.run_command(keys::letter_key('A'), keys::ctrl_key); }, u"oneab"},
      {[&] { QTextCursor(view.document()).insertText(QStringLiteral("X")); }, u"Xoneab"},
      {[&] { QTest::keyClick(&view, Qt::Key_Q); }, u"oneabq"},
      {[&] { box->put_appearance(read_only); }, u"oneab"}};
  // Another paragraph before, for others to cut.
  const auto split = [&] {
    QTextCursor cursor(view.document());
    cursor.setPosition(2);
    cursor.insertBlock();
  };
  box->put_Text(u"one");
  box->select(platform::Range{3, 0});
  compose("ab");
  split();
  compare();
  EXPECT_EQ(box->text(), u"on\r\neab");
  for (const auto& [act, expected] : acts) {
    box->put_Text(u"one");
    box->select(platform::Range{3, 0});
    compose("ab");
    EXPECT_EQ(composed(), QStringLiteral("ab"));
    act();
    compare();
    EXPECT_EQ(composed(), QString());
    EXPECT_EQ(box->text(), expected);
  }
  compose("c");
  EXPECT_EQ(composed(), QString()) << "the text is read-only now";
}

TEST_F(Display, ShowsTheCaretAgainWhenNothingIsComposed) {
  window.show();
  QApplication::setActiveWindow(&window);
  view.resize(100, 30);
  view.setFocus();
  compose("ab");
  commit("c");
  const QImage with_caret = view.grab().toImage();
  view.setCursorWidth(0);
  EXPECT_NE(with_caret, view.grab().toImage());
}

TEST_F(Display, TakesEditsByOthersBeforeTheHostActs) {
  box->put_Text(u"abc");
  box->select(platform::Range{3, 0});
  QTextCursor(view.document()).insertText(QStringLiteral("X"));
  box->put_SelText(u"y");
  EXPECT_EQ(box->text(), u"Xabcy");
}

}  // namespace
}  // namespace qel::qt
