// Windows and other programs on one file of records: locks, crashes, a full disk, two versions.

#include <QDir>
#include <QPushButton>
#include <QTextEdit>

#include "ConflictDialog.h"
#include "FormsWindow.h"

namespace qel::forms {
namespace {

class FormsSharing : public FormsWindow {
 protected:
  void save_elsewhere(std::int64_t id, std::u16string body) {
    RecordStore other(store->path());
    Record record = other.load(id);
    record.body = std::move(body);
    other.save(record);
  }
  qsizetype spare_drafts() const { return QDir(path("drafts")).entryList(QDir::Files).size(); }
};

TEST_F(FormsSharing, KeepsUnsavedWorkOverACrash) {
  const std::int64_t id = add(u"Tea", u"hot");
  const std::u16string tag = u"drinks";
  store->put_tags(add(u"Coffee", u"black"), {&tag, 1});
  click(1);
  type(window->body_box(), "very ");
  wait_for([this] { return !store->drafts().empty(); }, "a draft");
  open();  // nothing was closed
  EXPECT_EQ(body(), "very hot");
  EXPECT_TRUE(window->findChild<TagLine*>()->tags().isEmpty()) << "not those of another record";
  EXPECT_EQ(state(), "Unsaved changes");
  EXPECT_EQ(message().rfind("Unsaved work of", 0), 0U) << message();
  EXPECT_EQ(list().selected(), std::vector<std::int64_t>{id});

  save_elsewhere(id, u"cold");
  answer(QMessageBox::Ignore);
  open();
  EXPECT_EQ(body(), "cold");
  answer(QMessageBox::Open);
  choose("recover");
  EXPECT_EQ(body(), "very hot");
  choose("save");
  EXPECT_EQ(saved_body(id), "very hot");
  choose("recover");
  EXPECT_EQ(message(), "There is no other unsaved work.");
}

TEST_F(FormsSharing, OffersBothVersionsOfARecord) {
  struct Case {
    const char* answer;
    const char* state;
    const char* first;  // what the record has afterwards
    std::size_t records;
  };
  const Case cases[] = {{"Cancel", "Unsaved changes", "cold tea", 1},
                        {"use_theirs", "Saved", "cold tea", 1},
                        {"use_mine", "Saved", "my hot tea", 1},
                        {"keep_both", "Saved", "cold tea", 2}};
  const std::int64_t id = add(u"Tea", u"hot tea");
  const std::u16string tag = u"drinks";
  store->put_tags(id, {&tag, 1});
  for (const Case& each : cases) {
    SCOPED_TRACE(each.answer);
    save_elsewhere(id, u"hot tea");
    open(false);
    type(window->body_box(), "my ");
    save_elsewhere(id, u"cold tea");
    answer(each.answer);
    choose("save");
    EXPECT_EQ(state(), each.state);
    EXPECT_EQ(saved_body(id), each.first);
    EXPECT_EQ(store->list().size(), each.records);
    EXPECT_EQ(body(), std::string(each.answer) == "use_theirs" ? "cold tea" : "my hot tea");
    EXPECT_EQ(store->tags(window->form().record().id), std::vector{tag});
  }
}

TEST_F(FormsSharing, MarksWhatDiffersWithoutColorAlone) {
  const ConflictDialog dialog({u"Tea", u"/i1cold/i0 tea"}, {u"Tea", u"hot tea"});
  const auto pages = dialog.findChildren<QTextEdit*>();
  ASSERT_EQ(pages.size(), 2);
  const auto format = [](const QTextEdit* page, const char* word) {
    return page->document()->find(QLatin1String(word)).charFormat();
  };
  EXPECT_TRUE(format(pages[0], "cold").fontStrikeOut());
  EXPECT_TRUE(format(pages[1], "hot").fontUnderline());
  EXPECT_FALSE(format(pages[1], "tea").fontUnderline());
}

TEST_F(FormsSharing, FollowsWhatOthersSave) {
  const std::int64_t id = add(u"Tea", u"hot");
  add(u"Coffee", u"black");
  click(1);
  save_elsewhere(id, u"cold");
  wait_for([this] { return body() == "cold"; }, "the other's text");
  EXPECT_EQ(titles(), "Tea|Coffee");
  type(window->body_box(), "very ");
  RecordStore(store->path()).remove(std::array{std::int64_t{2}});
  wait_for([this] { return titles() == "Tea"; }, "the other's removal");
  EXPECT_EQ(body(), "very cold") << "unsaved work stays";
}

TEST_F(FormsSharing, GoesOnWhileAnotherProgramWrites) {
  const std::int64_t id = add(u"Tea", u"hot");
  add(u"Coffee", u"black");
  click(1);
  Database other(store->path(), false, std::chrono::milliseconds(0));
  {
    const Transaction writing(other);
    type(window->body_box(), "very ");
    choose("save");
    EXPECT_EQ(message(), "Another program is writing; saving again...");
    EXPECT_EQ(spare_drafts(), 1) << "a crash loses nothing meanwhile";
    type(window->body_box(), "very ");
    // Going on waits, and asks nothing that was answered.
    answer(QMessageBox::Cancel);
    click(0);
    EXPECT_EQ(body(), "very very hot");
    choose("save");
  }
  wait_for([this] { return state() == "Saved"; }, "the save");
  EXPECT_EQ(saved_body(id), "very very hot");
  EXPECT_EQ(spare_drafts(), 0);
  {
    const Transaction writing(other);
    choose("delete");
    EXPECT_EQ(titles(), "Tea|Coffee");
    type(window->body_box(), "not ");  // at the caret
  }
  wait_for([this] { return titles() == "Coffee"; }, "the deletion");
  EXPECT_EQ(body(), "very very not hot") << "what was typed meanwhile stays";
  choose("save");
  EXPECT_EQ(titles(), "Tea|Coffee");
  {
    const Transaction writing(other);
    choose("duplicate");
    type(window->body_box(), "x");
  }
  wait_for([this] { return shown().size() == 3; }, "the duplicate");
  EXPECT_EQ(body(), "very very not xhot");
  choose("save");
  {
    const Transaction writing(other);
    choose("edit_tags");
    type("late");
    press(Qt::Key_Return);
    answer(QMessageBox::Cancel);
    EXPECT_FALSE(window->close()) << "a tag waits to be kept";
  }
}

TEST_F(FormsSharing, ClosesWithADraftWhileAnotherProgramWrites) {
  add(u"Tea", u"hot");
  click(0);
  {
    Database other(store->path(), false, std::chrono::milliseconds(0));
    const Transaction writing(other);
    type(window->body_box(), "very ");
    choose("save");
    answer("Close and Keep Draft");
    EXPECT_TRUE(window->close());
    open();
    type(window->body_box(), "x");
    EXPECT_EQ(body(), "") << "nothing is typed that the draft would replace";
  }
  wait_for([this] { return body() == "very hot"; }, "the draft");
  EXPECT_EQ(spare_drafts(), 0);
  EXPECT_EQ(store->drafts().size(), 1U);
}

TEST_F(FormsSharing, TellsThatTheDiskIsFullAndLosesNothing) {
  add(u"Tea", u"hot");
  open(false, 40);
  const QString much = QStringLiteral("much more ").repeated(20000);
  window->body_box().control().put_SelText(qt::from_qt(much));
  window->form().body_events().Change();
  choose("save");  // no dialog
  EXPECT_EQ(state(), "Unsaved changes");
  EXPECT_EQ(notice().text().toStdString().rfind("The disk is full.", 0), 0U);
  EXPECT_EQ(spare_drafts(), 1);
  type(window->body_box(), "x");
  open(true);
  EXPECT_EQ(body().size(), static_cast<std::size_t>(much.size()) + 3);
  choose("save");
  EXPECT_EQ(state(), "Saved");
}

}  // namespace
}  // namespace qel::forms
