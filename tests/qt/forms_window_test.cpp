// The records window: the list, searching, editing, the trash, tags and files.

#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFile>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QSet>
#include <QUrl>
#include <array>

#include "FormTables.h"
#include "FormsWindow.h"

namespace qel::forms {
namespace {

TEST_F(FormsWindow, SavesWhatIsTypedAndFindsIt) {
  EXPECT_EQ(state(), "New record");
  type(window->title_box(), "Tea");
  EXPECT_EQ(state(), "Unsaved changes");
  press(Qt::Key_Return);
  type("for ");
  press(Qt::Key_B, Qt::ControlModifier);
  type("two");
  press(Qt::Key_B, Qt::ControlModifier);
  press(Qt::Key_I, Qt::ControlModifier);
  type("!");
  QTest::keyClick(window.get(), Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(state(), "Saved");
  EXPECT_FALSE(window->isWindowModified());
  const Record saved = store->load(list().first());
  EXPECT_EQ(to_qt(saved.title).toStdString(), "Tea");
  EXPECT_EQ(to_qt(saved.body).toStdString(), "for /b1two/b0/i1!/i0");
  press(Qt::Key_A, Qt::ControlModifier);
  wait_for([this] { return label("counts") == "Selected: 2 words, 8 characters"; }, "the counts");

  choose("new");
  press(window->title_box(), Qt::Key_Return, {});
  type("Black coffee");
  choose("save");
  const std::array<std::pair<const char*, const char*>, 4> searches = {
      {{"TWO!", "Tea"}, {"b1", ""}, {"coffee bl", "Black coffee"}, {"", "Black coffee|Tea"}}};
  for (const auto& [wanted, found] : searches) {
    search(QLatin1String(wanted));
    EXPECT_EQ(titles(), found) << wanted;
  }
  search(QStringLiteral("cocoa"));
  EXPECT_EQ(list().empty_text().toStdString(), "No records contain \u201Ccocoa\u201D.");
  search(QStringLiteral("two"));
  EXPECT_EQ(shown(RecordModel::context_role), QStringList{QStringLiteral("for two!")});
}

TEST_F(FormsWindow, TypesIntoTheHitThatWasOpened) {
  const auto tea = add(u"Tea", u"hot");
  add(u"Coffee", u"black");
  // Keys in the search field, and whether they lead to the text of the hit or back.
  const std::array<std::pair<std::vector<Qt::Key>, bool>, 5> ways = {
      {{{Qt::Key_Tab, Qt::Key_Return}, true},
       {{Qt::Key_Return, Qt::Key_Return}, true},
       {{Qt::Key_Down, Qt::Key_Enter}, true},
       {{Qt::Key_Escape}, false},
       {{Qt::Key_Down, Qt::Key_Escape}, true}}};
  for (const auto& [keys, opens] : ways) {
    choose("all_records");
    search(QString());
    click(0);
    ASSERT_EQ(body(), "black");
    choose("search");
    type("hot");
    ASSERT_EQ(titles(), "Tea");
    // Nothing waits for the list between the keys.
    for (const Qt::Key key : keys) QTest::keyClick(QApplication::focusWidget(), key);
    type("x");
    settle();
    EXPECT_EQ(body(), opens ? "xhot" : "xblack") << keys.size();
    EXPECT_EQ(titles(), keys.back() == Qt::Key_Escape ? "Coffee|Tea" : "Tea");
    answer(QMessageBox::Discard);
    choose("revert");
  }
  EXPECT_EQ(saved_body(tea), "hot");
}

TEST_F(FormsWindow, LeavesNoUnsavedWorkBehindUnasked) {
  add(u"one", u"first");
  add(u"two", u"second");
  click(1);
  EXPECT_EQ(body(), "first");
  type(window->body_box(), "x");
  answer(QMessageBox::Cancel);
  click(0);
  EXPECT_EQ(body(), "xfirst");
  EXPECT_EQ(list().selected(), std::vector<std::int64_t>{1}) << "the list goes back";
  answer(QMessageBox::Cancel);
  EXPECT_FALSE(window->close());
  answer(QMessageBox::Save);
  click(0);
  EXPECT_EQ(body(), "second");
  EXPECT_EQ(saved_body(1), "xfirst");

  type(window->body_box(), "y");
  answer(QMessageBox::Discard);
  choose("revert");
  EXPECT_EQ(body(), "second");
  type(window->body_box(), "z");
  answer(QMessageBox::Discard);
  EXPECT_TRUE(window->close());
  EXPECT_TRUE(store->drafts().empty()) << "what was given up does not come back";
  EXPECT_EQ(saved_body(2), "second");
}

TEST_F(FormsWindow, DeletesIntoATrashAndBringsBack) {
  add(u"/b1Tea/b0 and coffee", u"");
  add(u"", u"First words of a text without a title");
  add(u"3", u"third");
  click(2);
  list().setFocus();
  press(Qt::Key_Delete);
  EXPECT_EQ(notice().text().toStdString(), "Deleted \u201CTea and coffee\u201D.");
  EXPECT_EQ(titles(), "3|First words of a text without a title");
  notice().findChild<QPushButton*>()->click();
  EXPECT_EQ(shown().size(), 3);
  EXPECT_EQ(list().selected(), std::vector<std::int64_t>{1});

  click(0);
  type(window->body_box(), "the ");
  click(1, Qt::ControlModifier);
  choose("delete");
  EXPECT_EQ(notice().text().toStdString(), "Deleted 2 records.");
  EXPECT_EQ(saved_body(3), "the third") << "the trash has what was written last";
  choose("trash");
  EXPECT_EQ(shown().size(), 2);
  click(0);
  EXPECT_EQ(state(), "In the trash");
  type(window->body_box(), "x");
  EXPECT_FALSE(window->form().is_changed());
  choose("restore");
  EXPECT_EQ(state(), "Saved");
  EXPECT_EQ(shown().size(), 2);
  choose("trash");
  answer(QMessageBox::Cancel);
  choose("empty_trash");
  EXPECT_EQ(shown().size(), 1);
  answer("Empty Trash");
  choose("empty_trash");
  EXPECT_EQ(list().empty_text().toStdString(), "The trash is empty.");
  choose("undo_delete");
  EXPECT_EQ(store->list().size(), 2U) << "what is gone for good does not come back";

  choose("new");
  press(window->title_box(), Qt::Key_Return, {});
  type("not saved yet");
  search(QStringLiteral("t"));
  list().selectAll();
  settle();
  choose("delete");
  EXPECT_EQ(notice().text().toStdString(), "Deleted 2 records.");
  EXPECT_EQ(body(), "not saved yet") << "the others are deleted, not what is being written";
}

TEST_F(FormsWindow, TagsAndDuplicatesRecords) {
  add(u"Tea", u"hot");
  add(u"Coffee", u"black");
  click(1);
  choose("edit_tags");
  type("drinks,hot");
  press(Qt::Key_Return);
  using Tags = std::vector<std::u16string>;
  EXPECT_EQ(store->tags(1), (Tags{u"drinks", u"hot"}));
  type("aged");
  choose("new");
  EXPECT_EQ(store->tags(1), (Tags{u"aged", u"drinks", u"hot"})) << "not one of the new record";
  click(1);
  choose("duplicate");
  EXPECT_EQ(store->tags(window->form().record().id), (Tags{u"aged", u"drinks", u"hot"}));
  type(window->body_box(), "a duplicate is ");
  choose("save");
  EXPECT_EQ(saved_body(1), "hot");
  choose("edit_tags");
  press(Qt::Key_Backspace);
  press(Qt::Key_Escape);
  auto& choice = *window->findChild<QComboBox*>();
  choice.setCurrentIndex(choice.findText(QStringLiteral("hot")));
  settle();
  EXPECT_EQ(list().records().rowCount(), 1);
  EXPECT_EQ(list().first(), 1);
  choose("new");
  EXPECT_EQ(shown().size(), 3) << "a new record is not shown among those of a tag";
  choose("edit_tags");
  type("only a tag");
  answer(QMessageBox::Save);
  choose("new");
  EXPECT_EQ(store->tags(4), Tags{u"only a tag"});
}

TEST_F(FormsWindow, RemembersHowItLooked) {
  for (const char16_t* title : {u"b", u"c", u"a"}) add(title, u"");
  EXPECT_EQ(titles(), "a|c|b");
  choose("by_title");
  EXPECT_EQ(titles(), "a|b|c");
  choose("reverse");
  choose("zoom_in");
  window->resize(800, 500);
  EXPECT_TRUE(window->close());
  open();
  EXPECT_EQ(titles(), "c|b|a");
  EXPECT_EQ(window->body_box().get_Zoom(), 110);
  EXPECT_EQ(window->size(), QSize(800, 500));
}

TEST_F(FormsWindow, ExportsAndImports) {
  add(u"One", u"/b1bold/b0 <text>");
  add(u"Two", u"second");
  add(u"Three", u"");
  click(1);
  click(2, Qt::ControlModifier);
  const std::array<std::pair<const char*, const char*>, 3> forms = {
      {{"all.txt", "Two\nsecond\n\nOne\nbold <text>\n"},
       {"all.pdf", "%PDF-1."},
       {"all.html", "<b>bold</b> &lt;text&gt;"}}};
  for (const auto& [name, part] : forms) {
    ASSERT_TRUE(window->export_to(path(name))) << name;
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_TRUE(bytes.contains(part)) << name << ": " << bytes.left(600).data();
    EXPECT_FALSE(bytes.contains("Three")) << name;
  }
  for (const char* const name : {"none/all.pdf", "all.doc"}) {
    answer(QMessageBox::Ok);
    EXPECT_FALSE(window->export_to(path(name))) << name;
    EXPECT_FALSE(QFile::exists(path(name)));
  }

  QFile bad(path("picture.txt"));
  ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
  bad.write(QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
  bad.close();
  QMimeData dropped;
  dropped.setUrls({QUrl::fromLocalFile(path("all.txt")), QUrl::fromLocalFile(bad.fileName())});
  QWidget* const target = window->body_box().focusProxy()->findChild<QWidget*>(
      QStringLiteral("qt_scrollarea_viewport"));
  QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &dropped, Qt::LeftButton, {});
  QApplication::sendEvent(target, &enter);
  QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &dropped, Qt::LeftButton, {});
  std::string told;
  at_dialog([&told](QDialog& dialog) {
    auto& box = dynamic_cast<QMessageBox&>(dialog);
    told = (box.text() + box.informativeText()).toStdString();
    box.accept();
  });
  QApplication::sendEvent(target, &drop);
  settle();
  EXPECT_NE(told.find("1 of 2 files could not be imported."), std::string::npos) << told;
  EXPECT_NE(told.find("picture.txt"), std::string::npos) << told;
  EXPECT_EQ(shown().size(), 4);
  EXPECT_EQ(body(), "Two\r\nsecond\r\n\r\nOne\r\nbold <text>");
  notice().findChild<QPushButton*>()->click();
  EXPECT_EQ(shown().size(), 3);
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
  EXPECT_EQ(state(), "Saved");
  EXPECT_EQ(window->body_box().get_FontSize(), 14);
  QELTextbox& control = window->body_box().control();
  control.put_SelStart(4);
  control.put_SelLength(1);
  EXPECT_EQ(to_qt(control.get_SelFontName()), QStringLiteral("Courier New"));
}

TEST_F(FormsWindow, EditsTheFieldThatHasTheFocus) {
  add(u"Tea", u"hot and black");
  click(0);
  type(window->body_box(), "very ");
  choose("search");
  type("tea");
  press(Qt::Key_A, Qt::ControlModifier);
  QAction* cut = nullptr;
  QAction* undo = nullptr;
  for (QAction* const each : window->menuBar()->actions()[1]->menu()->actions()) {
    if (each->text().startsWith(QLatin1String("Cu&t"))) cut = each;
    if (each->text().startsWith(QLatin1String("&Undo"))) undo = each;
  }
  cut->trigger();
  EXPECT_TRUE(field().text().isEmpty());
  undo->trigger();
  EXPECT_EQ(field().text(), QStringLiteral("tea"));
  EXPECT_EQ(body(), "very hot and black") << "the other field is left alone";
  window->body_box().setFocus();
  EXPECT_FALSE(cut->isEnabled()) << "nothing is selected";
  undo->trigger();
  EXPECT_EQ(body(), "hot and black");
}

/// No two entries of a menu have one letter, no two actions one key, and none a key that the text
/// takes for something else.
TEST_F(FormsWindow, LettersAndKeysOfItsMenusAreTheirOwn) {
  QSet<QString> keys;
  const std::function<void(const QList<QAction*>&)> check = [&](const QList<QAction*>& actions) {
    QSet<QString> letters;
    for (const QAction* const each : actions) {
      const QString text = each->text();
      const auto at = text.indexOf(QChar(u'&'));
      if (at >= 0) {
        const QString letter = text.mid(at + 1, 1).toLower();
        EXPECT_FALSE(letters.contains(letter)) << text.toStdString();
        letters.insert(letter);
      }
      if (!each->shortcut().isEmpty() && each->shortcutContext() == Qt::WindowShortcut) {
        EXPECT_FALSE(keys.contains(each->shortcut().toString())) << text.toStdString();
        keys.insert(each->shortcut().toString());
        const QKeyCombination key = each->shortcut()[0];
        QKeyEvent event(QEvent::ShortcutOverride, key.key(), key.keyboardModifiers());
        QApplication::sendEvent(window->body_box().focusProxy(), &event);
        EXPECT_TRUE(!event.isAccepted() || each->text().contains(QLatin1String("Zoom")) ||
                    each->objectName() == QLatin1String("zoom_normal"))
            << text.toStdString();
      }
      if (each->menu() != nullptr) check(each->menu()->actions());
    }
  };
  check(window->menuBar()->actions());
  EXPECT_GT(keys.size(), 15);
}

}  // namespace
}  // namespace qel::forms
