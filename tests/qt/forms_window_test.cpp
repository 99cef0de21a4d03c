// The records window, used with keys and dialogs as a user does.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <array>
#include <functional>
#include <memory>
#include <utility>

#include "FormTables.h"
#include "MainWindow.h"
#include "Pages.h"
#include "Pdf.h"
#include "RecordList.h"
#include "qel/qt/PainterCanvas.h"
#include "qel/qt/QtPlatform.h"
#include "qel/text/TextAndFormatting.h"
#include "qt/platform/Text.h"

namespace qel::forms {
namespace {

using qt::to_qt;

Record record_of(std::u16string title, std::u16string body) {
  Record record;
  record.title = std::move(title);
  record.body = std::move(body);
  return record;
}

class FormsWindow : public testing::Test {
 protected:
  FormsWindow() {
    hand.callOnTimeout([this] {
      auto* const dialog = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      hand.stop();
      std::exchange(awaiting, {})(*dialog);
    });
    open();
  }

  void open(bool recovers = true) {
    window.reset();
    store.reset();
    RecordStore::Options options;
    options.creates = true;
    store = std::make_unique<RecordStore>(path("records.db").toStdString(), options);
    window = std::make_unique<MainWindow>(*store);
    window->show();
    QApplication::setActiveWindow(window.get());
    window->begin(recovers);
  }

  QString path(const char* name) const { return folder.filePath(QLatin1String(name)); }

  std::int64_t add(std::u16string title, std::u16string body) {
    Record record = record_of(std::move(title), std::move(body));
    store->save(record);
    search(QString());
    return record.id;
  }

  // What the user does.

  static void type(qt::TextBox& box, const char* text) {
    box.setFocus();
    QTest::keyClicks(box.focusProxy(), QLatin1String(text));
  }
  static void press(qt::TextBox& box, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    box.setFocus();
    QTest::keyClick(box.focusProxy(), key, modifiers);
  }
  QAction& action(const char* name) { return *window->findChild<QAction*>(QLatin1String(name)); }
  void choose(const char* name) {
    action(name).trigger();
    settle();
  }
  void search(const QString& text) {
    auto& field = *window->findChild<QLineEdit*>();
    field.setText(QStringLiteral("\n"));
    field.setText(text);
  }
  RecordList& list() { return *static_cast<RecordList*>(window->findChild<QTreeWidget*>()); }
  /// Returns when the dialog that was awaited, if any, has been dealt with.
  void settle() {
    QApplication::processEvents();
    for (int i = 0; i < 1000 && awaiting; ++i) QTest::qWait(1);
    EXPECT_FALSE(awaiting) << "a dialog was not opened";
  }
  void click(int row, Qt::KeyboardModifiers modifiers = {}) {
    const QRect place = list().visualItemRect(list().topLevelItem(row));
    QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers, place.center());
    settle();
  }
  /// Lets the user act in the next dialog once it is open.
  void at_dialog(std::function<void(QDialog&)> user) {
    awaiting = std::move(user);
    hand.start(1);
  }
  void answer(QMessageBox::StandardButton button) {
    at_dialog(
        [button](QDialog& dialog) { dynamic_cast<QMessageBox&>(dialog).button(button)->click(); });
  }

  // What the user sees.

  QStringList titles() {
    QStringList shown;
    for (int i = 0; i < list().topLevelItemCount(); ++i) {
      shown.append(list().topLevelItem(i)->text(0));
    }
    return shown;
  }
  QString state() { return window->statusBar()->findChild<QLabel*>()->text(); }
  QString body() { return window->body_box().get_Text(); }

  QTemporaryDir folder;
  std::unique_ptr<RecordStore> store;
  std::unique_ptr<MainWindow> window;
  std::function<void(QDialog&)> awaiting;
  QTimer hand;
};

TEST_F(FormsWindow, SavesWhatIsTypedAndFindsIt) {
  EXPECT_EQ(state(), QStringLiteral("New record"));
  type(window->title_box(), "Tea");
  EXPECT_EQ(state(), QStringLiteral("Unsaved changes"));
  type(window->body_box(), "for ");
  press(window->body_box(), Qt::Key_B, Qt::ControlModifier);
  EXPECT_TRUE(action("bold").isChecked());
  type(window->body_box(), "two");
  choose("bold");
  EXPECT_FALSE(action("bold").isChecked());
  choose("italic");
  type(window->body_box(), "!");
  QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(state(), QStringLiteral("Saved"));
  EXPECT_FALSE(window->isWindowModified());
  const Record saved = store->load(list().first());
  EXPECT_EQ(to_qt(saved.title), QStringLiteral("Tea"));
  EXPECT_EQ(to_qt(saved.body), QStringLiteral("for /b1two/b0/i1!/i0"));

  choose("new");
  type(window->title_box(), "Coffee");
  choose("save");
  EXPECT_EQ(titles(), (QStringList{QStringLiteral("Coffee"), QStringLiteral("Tea")}));
  const std::array<std::pair<const char*, QStringList>, 3> searches = {
      {{"TWO!", {QStringLiteral("Tea\nfor two!")}},
       {"b1", {}},
       {"", {QStringLiteral("Coffee"), QStringLiteral("Tea")}}}};
  for (const auto& [wanted, found] : searches) {
    search(QLatin1String(wanted));
    EXPECT_EQ(titles(), found) << wanted;
    EXPECT_EQ(list().selected().size(), *wanted == '\0') << "the shown record is marked";
  }
}

TEST_F(FormsWindow, TypesIntoTheHitThatWasOpened) {
  add(u"Tea", u"hot");
  add(u"Coffee", u"black");
  click(0);
  ASSERT_EQ(body(), QStringLiteral("black"));
  window->findChild<QLineEdit*>()->setFocus();
  QTest::keyClicks(window->findChild<QLineEdit*>(), QStringLiteral("hot"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("very "));
  settle();
  EXPECT_EQ(body(), QStringLiteral("very hot"));
}

TEST_F(FormsWindow, LeavesNoUnsavedWorkBehindUnasked) {
  add(u"one", u"first");
  add(u"two", u"second");
  click(1);
  EXPECT_EQ(body(), QStringLiteral("first"));
  type(window->body_box(), "x");
  answer(QMessageBox::Cancel);
  click(0);
  EXPECT_EQ(body(), QStringLiteral("xfirst"));
  EXPECT_EQ(list().currentItem()->text(0), QStringLiteral("one")) << "the list goes back";
  answer(QMessageBox::Cancel);
  EXPECT_FALSE(window->close());
  answer(QMessageBox::Save);
  click(0);
  EXPECT_EQ(body(), QStringLiteral("second"));
  EXPECT_EQ(to_qt(store->load(1).body), QStringLiteral("xfirst"));

  type(window->body_box(), "y");
  answer(QMessageBox::Discard);
  choose("revert");
  EXPECT_EQ(body(), QStringLiteral("second"));
  type(window->body_box(), "z");
  answer(QMessageBox::Discard);
  EXPECT_TRUE(window->close());
  EXPECT_TRUE(store->drafts().empty()) << "what was given up does not come back";
  EXPECT_EQ(to_qt(store->load(2).body), QStringLiteral("second"));
}

TEST_F(FormsWindow, KeepsUnsavedWorkOverACrash) {
  const std::int64_t id = add(u"Tea", u"hot");
  click(0);
  type(window->body_box(), "very ");
  QTest::qWait(1500);
  open();  // nothing was closed
  EXPECT_EQ(body(), QStringLiteral("very hot"));
  EXPECT_EQ(state(), QStringLiteral("Unsaved changes"));
  EXPECT_TRUE(window->statusBar()->currentMessage().startsWith(QLatin1String("Unsaved work of")));
  EXPECT_EQ(list().selected(), std::vector<std::int64_t>{id});

  Record other = store->load(id);
  other.body = u"cold";
  store->save(other);
  answer(QMessageBox::Ignore);
  open();
  EXPECT_EQ(body(), QStringLiteral("cold"));
  answer(QMessageBox::Open);
  choose("recover");
  EXPECT_EQ(body(), QStringLiteral("very hot"));
  choose("save");
  EXPECT_EQ(to_qt(store->load(id).body), QStringLiteral("very hot"));
  choose("recover");
  EXPECT_EQ(window->statusBar()->currentMessage(),
            QStringLiteral("There is no other unsaved work."));
}

TEST_F(FormsWindow, SavesAsANewRecordWhatAnotherProgramChanged) {
  const std::int64_t id = add(u"Tea", u"hot");
  click(0);
  type(window->body_box(), "not ");
  Record other = store->load(id);
  other.body = u"cold";
  store->save(other);
  answer(QMessageBox::Cancel);
  choose("save");
  EXPECT_EQ(state(), QStringLiteral("Unsaved changes"));
  answer(QMessageBox::Save);
  choose("save");
  EXPECT_EQ(state(), QStringLiteral("Saved"));
  EXPECT_EQ(to_qt(store->load(id).body), QStringLiteral("cold"));
  EXPECT_EQ(to_qt(store->load(list().first()).body), QStringLiteral("not hot"));
}

TEST_F(FormsWindow, DeletesWhatIsSelectedWhenToldSo) {
  for (const char16_t* title : {u"1", u"2", u"3"}) add(title, u"");
  click(0);
  click(1, Qt::ControlModifier);
  answer(QMessageBox::Cancel);
  choose("delete");
  EXPECT_EQ(titles().size(), 3);
  answer(QMessageBox::Yes);
  QApplication::setActiveWindow(window.get());  // no closing dialog restores that off screen
  list().setFocus();
  QTest::keyClick(&list(), Qt::Key_Delete);
  settle();
  EXPECT_EQ(titles(), QStringList{QStringLiteral("1")});
  EXPECT_EQ(to_qt(window->form().title()), QStringLiteral("1")) << "the next one is shown";
}

TEST_F(FormsWindow, ExportsTheSelectedRecords) {
  add(u"One", u"/b1bold/b0 <text>");
  add(u"Two", u"second");
  add(u"Three", u"");
  click(1);
  click(2, Qt::ControlModifier);
  const std::array<std::pair<const char*, const char*>, 2> forms = {
      {{"all.txt", "Two\nsecond\n\nOne\nbold <text>\n"}, {"all.pdf", "%PDF-1."}}};
  for (const auto& [name, part] : forms) {
    ASSERT_TRUE(window->export_to(path(name))) << name;
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.contains(part)) << name << ": " << bytes.left(200).data();
    EXPECT_FALSE(bytes.contains("Three")) << name;
  }
  answer(QMessageBox::Ok);
  EXPECT_FALSE(window->export_to(path("none/all.pdf")));
}

TEST_F(FormsWindow, PutsFontsAndColorsIntoTheForm) {
  add(u"T", u"/y5red/y0 /f4x/f0");
  click(0);
  at_dialog([](QDialog& dialog) {
    const auto fonts = dialog.findChildren<QComboBox*>();
    ASSERT_EQ(fonts.size(), 10);
    fonts[0]->setEditText(QString());
    fonts[4]->setEditText(QStringLiteral("Courier New"));
    fonts[2]->setEditText(QStringLiteral(" "));
    dialog.findChild<QDoubleSpinBox*>()->setValue(14);
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click();
  });
  choose("tables");
  const command::Tables tables = load_tables(*store);
  EXPECT_EQ(to_qt(tables.fonts.get_Font(0)), QStringLiteral("Arial")) << "there is always one";
  EXPECT_EQ(to_qt(tables.fonts.get_Font(2)), QStringLiteral("<none>"));
  EXPECT_EQ(state(), QStringLiteral("Saved"));
  EXPECT_EQ(window->body_box().get_FontSize(), 14);
  EXPECT_EQ(window->body_box().findChild<QTextEdit*>()->textCursor().charFormat().fontPointSize(),
            14)
      << "the text has that size";
  QELTextbox& control = window->body_box().control();
  control.put_SelStart(4);
  control.put_SelLength(1);
  EXPECT_EQ(to_qt(control.get_SelFontName()), QStringLiteral("Courier New"));
}

TEST(FormsPages, MakeADocumentOfManyPages) {
  std::u16string lines;
  for (int i = 0; i < 200; ++i) lines += u"line /u1under/u0/nl";
  const Record record = record_of(u"T", lines);
  const QByteArray pdf = QByteArray::fromStdString(pdf_of({&record, 1}, command::Tables()));
  const int pages = static_cast<int>(pdf.count("/Type /Page\n"));
  EXPECT_GE(pages, 3);
  EXPECT_LE(pages, 5);
}

TEST(PainterCanvas, MeasuresAndDrawsInPointsOnAnyDevice) {
  for (const int dots : {72, 300}) {
    SCOPED_TRACE(dots);
    constexpr double inch = 0.0254;
    QImage image(dots * 2, dots, QImage::Format_RGB32);
    image.setDotsPerMeterX(static_cast<int>(dots / inch));
    image.setDotsPerMeterY(static_cast<int>(dots / inch));
    image.fill(Qt::white);
    QPainter painter(&image);
    qt::PainterCanvas canvas(painter);
    platform::CanvasText text;
    text.text = u"MMM";
    text.font.size = 24;
    text.x = 36;
    text.y = 36;
    text.color = rgb(255, 0, 0);
    const float width = canvas.text_width(text.text, text.font);
    EXPECT_NEAR(width, 3 * 24 * 0.833, 4);
    EXPECT_NEAR(canvas.text_width(u"AVAV", text.font), 2 * canvas.text_width(u"AV", text.font), 1);
    EXPECT_LT(canvas.text_width(u"\u0628\u0628", text.font),
              1.8F * canvas.text_width(u"\u0628", text.font))
        << "letters that join";
    EXPECT_EQ(canvas.text_width(u"\t", text.font), canvas.text_width(u" ", text.font));
    qt::QtPlatform::use();
    TextAndFormatting without_canvas;
    without_canvas.put_DefaultFontSize(text.font.size);
    for (const auto* const measured : {u"MMM", u"\u0628\u0628"}) {
      EXPECT_NEAR(without_canvas.fmtTextWidth(measured), canvas.text_width(measured, text.font),
                  0.2);
    }
    EXPECT_NEAR(canvas.font_extent(text.font).ascent, 22, 3);
    canvas.draw_text(text);
    canvas.fill_rectangle({0, 60, 10, 5}, rgb(0, 0, 255));
    painter.end();
    QRect inked;
    for (int y = 0; y < image.height() * 50 / 72; ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y).green() < 128) inked |= QRect(x, y, 1, 1);
      }
    }
    const double unit = dots / 72.0;
    EXPECT_NEAR(inked.left() / unit, 36, 4);
    EXPECT_NEAR(inked.right() / unit, 36 + static_cast<double>(width), 4);
    EXPECT_NEAR(inked.bottom() / unit, 36, 3);
    EXPECT_EQ(image.pixelColor(static_cast<int>(5 * unit), static_cast<int>(62 * unit)),
              QColor(0, 0, 255));
  }
}

}  // namespace
}  // namespace qel::forms
