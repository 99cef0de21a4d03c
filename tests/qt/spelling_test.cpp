// Checking the spelling of what a box shows, by a speller of the test and by enchant.

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>
#include <string>

#include "qel/qt/Speller.h"
#include "qel/qt/TextBox.h"
#include "qt/platform/BoxView.h"

namespace qel::qt {
namespace {

class FewWords : public Speller {
 public:
  bool is_right(const QString& word) override {
    ++asked;
    return words.contains(word);
  }
  QStringList suggestions(const QString& word) override {
    return word == QLatin1String("teh") ? QStringList{QStringLiteral("the"), QStringLiteral("tea")}
           : word == QLatin1String("dont") ? QStringList{QStringLiteral("don't")}
                                           : QStringList();
  }
  void add(const QString& word) override { words += word; }
  void ignore(const QString& word) override { words += word; }

  QStringList words = {QStringLiteral("the"), QStringLiteral("tea"), QStringLiteral("don't"),
                       QStringLiteral("caf\u00E9")};
  int asked = 0;
};

class Spelled : public testing::Test {
 protected:
  Spelled() {
    auto* const layout = new QVBoxLayout(&form);
    layout->addWidget(&box);
    layout->addWidget(&field);
    box.put_Multiline(true);
    box.put_Speller(speller);
    form.resize(400, 200);
    form.show();
    form.activateWindow();
    QApplication::setActiveWindow(&form);
    field.setFocus();
  }

  BoxView& view(TextBox& of) { return *static_cast<BoxView*>(of.focusProxy()); }
  BoxView& view() { return view(box); }

  std::string marked(TextBox& of) {
    QCoreApplication::processEvents();
    std::string all;
    for (const QTextEdit::ExtraSelection& mark : view(of).marks().shown()) {
      EXPECT_EQ(mark.format.underlineStyle(), QTextCharFormat::WaveUnderline);
      all += (all.empty() ? "" : " ") + mark.cursor.selectedText().toStdString();
    }
    return all;
  }
  std::string marked() { return marked(box); }

  /// Opens the menu at a position, chooses from it if asked to, and returns the first captions.
  std::string menu_at(int position, const QString& choice = QString()) {
    QTextCursor cursor(view().document());
    cursor.setPosition(position);
    const QPoint place = view().cursorRect(cursor).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, view().mapToGlobal(place));
    QApplication::sendEvent(view().viewport(), &event);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    std::string captions;
    QAction* chosen = nullptr;
    for (QAction* const action : menu->actions()) {
      if (action->text().contains(QLatin1String("Ctrl+"))) break;
      if (action->isSeparator()) continue;
      captions += action->text().toStdString() + (action->isEnabled() ? "|" : "-|");
      if (action->text() == choice) chosen = action;
    }
    if (chosen != nullptr) chosen->trigger();
    menu->close();
    return captions;
  }

  std::shared_ptr<FewWords> speller = std::make_shared<FewWords>();
  QWidget form;
  TextBox box;
  QLineEdit field;
};

TEST_F(Spelled, MarksWordsThatADictionaryMightHave) {
  const struct {
    const char16_t* text;
    const char* marked;
  } cases[] = {
      {u"teh tea, Xyz\r\nxyz the", "teh Xyz xyz"},
      {u"don't don\u2019t 'tea' dont the\u00ADtea", "dont the\u00ADtea"},
      {u"cafe\u0301 \u0436\u0436 \u05D0\u05D0", "\u0436\u0436 \u05D0\u05D0"},
      {u"TEH DON\u2019TT x 3rdd x2y \u0E17\u0E14\u0E2A \u65E5\u672C", ""},
      {u"https://teh.example/xyz a.b@teh.example teh", "teh"},
  };
  for (const auto& row : cases) {
    box.put_Text(QString::fromUtf16(row.text));
    EXPECT_EQ(marked(), row.marked);
  }
  const int asked = speller->asked;
  box.put_Text(QStringLiteral("teh teh tea Xyz"));
  EXPECT_EQ(marked(), "teh teh Xyz");
  EXPECT_EQ(speller->asked, asked) << "known words are not checked again";
}

TEST_F(Spelled, LeavesTheWordThatIsBeingTyped) {
  box.setFocus();
  QTest::keyClicks(&view(), QStringLiteral("xyz teh"));
  EXPECT_EQ(marked(), "xyz");
  QTest::keyClick(&view(), Qt::Key_Space);
  EXPECT_EQ(marked(), "xyz teh");
  QTest::keyClick(&view(), Qt::Key_Left);
  EXPECT_EQ(marked(), "xyz teh");
  QTest::keyClick(&view(), Qt::Key_Backspace);
  EXPECT_EQ(marked(), "xyz");
  QTest::keyClick(&view(), Qt::Key_Left);
  EXPECT_EQ(marked(), "xyz te");
  QTest::keyClicks(&view(), QStringLiteral("x"));
  EXPECT_EQ(marked(), "xyz");
  field.setFocus();
  EXPECT_EQ(marked(), "xyz txe");
}

TEST_F(Spelled, OffersOtherWordsInTheMenu) {
  box.put_TextQEL(QStringLiteral("a /b1teh/b0 xyz don\u2019t dont"));
  EXPECT_EQ(menu_at(8), "No Suggestions-|Add to Dictionary|Ignore|");
  EXPECT_EQ(menu_at(1), "") << "not on a wrong word";
  EXPECT_EQ(menu_at(3, QStringLiteral("tea")), "the|tea|Add to Dictionary|Ignore|");
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("a /b1tea/b0 xyz don\u2019t dont"));
  EXPECT_EQ(marked(), "xyz dont");
  view().box()->undo();
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("a /b1teh/b0 xyz don\u2019t dont"));
  EXPECT_FALSE(view().box()->can_undo());

  TextBox other(&form);
  other.put_Speller(speller);
  other.put_Text(QStringLiteral("xyz dont"));
  other.show();
  EXPECT_EQ(marked(other), "xyz dont");
  menu_at(8, QStringLiteral("Ignore"));
  EXPECT_EQ(marked(), "teh dont");
  EXPECT_EQ(marked(other), "dont") << "what a speller learns, all of its boxes learn";
  other.put_Speller(nullptr);
  menu_at(18, QStringLiteral("Add to Dictionary"));
  EXPECT_EQ(marked(), "teh");
}

TEST_F(Spelled, IsNoPartOfTheTextAndCanBeTurnedOff) {
  const auto expect_marked = [this](bool expected) {
    EXPECT_EQ(marked(), expected ? "teh" : "");
    EXPECT_EQ(menu_at(1).empty(), !expected);
  };
  box.put_TextQEL(QStringLiteral("teh"));
  const std::u16string rtf = box.control().get_TextRTF();
  expect_marked(true);
  EXPECT_EQ(box.get_TextQEL(), QStringLiteral("teh"));
  EXPECT_EQ(box.control().get_TextRTF(), rtf);
  EXPECT_FALSE(view().box()->can_undo());
  box.put_ChecksSpelling(false);
  expect_marked(false);
  box.put_ChecksSpelling(true);
  expect_marked(true);
  box.put_AllowEdits(false);
  expect_marked(false);
  box.put_AllowEdits(true);
  expect_marked(true);
  box.put_RevealCodes(true);
  expect_marked(false);
  box.put_RevealCodes(false);
  expect_marked(true);
  box.put_Speller(nullptr);
  box.put_SpellingLanguage(QStringLiteral("qq_QQ"));
  expect_marked(false);
}

TEST_F(Spelled, UsesTheDictionariesOfTheSystem) {
  const QTemporaryDir folder;  // for the words that are added
  qputenv("ENCHANT_CONFIG_DIR", folder.path().toLocal8Bit());
  const auto english = Speller::of_language(QStringLiteral("en_US"));
  if (english == nullptr) GTEST_SKIP() << "no enchant, or no dictionary";
  EXPECT_EQ(Speller::of_language(QStringLiteral("en_US")), english);
  EXPECT_NE(Speller::of_language(QStringLiteral("en_XX")), nullptr) << "English of any country";
  EXPECT_EQ(Speller::of_language(QStringLiteral("C")), nullptr);
  box.put_Speller(nullptr);
  box.put_SpellingLanguage(QStringLiteral("en_US"));
  box.put_Text(QStringLiteral("The tea isn't recieving qelqel, Anna's"));
  EXPECT_EQ(marked(), "recieving qelqel");
  EXPECT_EQ(menu_at(17).substr(0, 10), "receiving|");
  english->ignore(QStringLiteral("qelqel"));
  EXPECT_TRUE(english->is_right(QStringLiteral("qelqel")));
  english->add(QStringLiteral("qelqels"));
  EXPECT_TRUE(english->is_right(QStringLiteral("qelqels")));
}

}  // namespace
}  // namespace qel::qt
