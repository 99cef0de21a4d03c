#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Difference.h"
#include "FormTables.h"
#include "HeadlessForm.h"
#include "Markup.h"
#include "RecordStore.h"
#include "qel/base/Records.h"
#include "qel/base/Utf8.h"
#include "qel/headless/BoxUser.h"
#include "qel/platform/Keys.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel::forms {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::shown;

class Forms : public testing::Test {
 public:
  Forms() {
    std::string name = (fs::temp_directory_path() / "qelforms-XXXXXX").string();
    folder_ = mkdtemp(name.data());
  }
  ~Forms() override { fs::remove_all(folder_); }

  std::string path(const std::string& name = "records.db") const { return folder_ / name; }
  RecordStore open(const RecordStore::Options& options = {true, 50ms, 0}) const {
    return RecordStore(path(), options);
  }

 private:
  fs::path folder_;
};

Record record_of(std::u16string title, std::u16string body) {
  Record record;
  record.title = std::move(title);
  record.body = std::move(body);
  return record;
}

using Ids = std::vector<std::int64_t>;

Ids ids_of(const std::vector<Heading>& headings) {
  Ids ids;
  ids.reserve(headings.size());
  for (const Heading& heading : headings) ids.push_back(heading.id);
  return ids;
}

/// The error that the work raises; number 0 when it raises none.
Error error_of(const std::function<void()>& work) {
  try {
    work();
  } catch (const Error& error) {
    return error;
  }
  return {0, "", "no error"};
}

TEST_F(Forms, FindsVisibleTextAsItIsWritten) {
  RecordStore store = open();
  std::vector<Record> records = {record_of(u"/b1Gr/b0een", u"first/nlsecond /y2hidden/y0"),
                                 record_of(u"100% 'É_t\u00E9'", u"~/b1 \U00010400\u4E2D"),
                                 record_of(u"", u"")};
  store.save(records);
  struct Row {
    std::u16string_view wanted;
    Ids found;
  };
  const std::vector<Row> rows = {
      {u"GREEN", {1}},  {u"first second", {1}},     {u"hidden", {1}}, {u"%", {2}},     {u"_", {2}},
      {u"'é_TÉ'", {2}}, {u"\U00010428\u4E2D", {2}}, {u"/b1", {2}},    {u"", {3, 2, 1}}};
  for (const auto& [wanted, found] : rows) {
    EXPECT_EQ(ids_of(store.find(wanted)), found) << shown(wanted);
  }
  EXPECT_EQ(store.list()[0].title, u"Green");
  records[0].title = u"blue";
  store.save(records[0]);
  EXPECT_EQ(ids_of(open().find(u"green")), Ids{}) << "the text for searching follows";
  EXPECT_EQ(open().load(1).body, u"first/nlsecond /y2hidden/y0");
}

TEST_F(Forms, SavesTogetherOrNotAtAll) {
  RecordStore store = open();
  std::vector<Record> records = {record_of(u"a", u""), record_of(u"b", u"")};
  store.save(records);
  std::vector<Record> stale = records;
  stale[0].title = u"a2";
  store.save(records[1]);
  stale.push_back(record_of(u"new", u""));
  EXPECT_EQ(error_of([&] { store.save(stale); }).number(), changed_elsewhere);
  EXPECT_EQ(stale[2].id, 0) << "a record that was not saved has no number";
  EXPECT_EQ(store.load(1).title, u"a");
  EXPECT_EQ(store.list().size(), 2U);
  EXPECT_EQ(error_of([&] {
              store.remove(std::array<std::int64_t, 2>{1, 9});
            }).number(),
            no_such_record);
  EXPECT_EQ(store.list().size(), 2U);
  store.remove(std::array<std::int64_t, 1>{2});
  EXPECT_EQ(error_of([&] { store.save(records[1]); }).number(), no_such_record);
  Record later = record_of(u"c", u"");
  store.save(later);
  EXPECT_EQ(later.id, 3) << "numbers are not reused";
}

using Tags = std::vector<std::u16string>;

TEST_F(Forms, TheTrashKeepsAllOfARecord) {
  RecordStore store = open();
  std::vector<Record> records = {record_of(u"a", u"x"), record_of(u"b", u""), record_of(u"c", u"")};
  store.save(records);
  store.save(records[0]);
  store.put_tags(1, Tags{u" Hot  drinks", u"", u"tea", u"TEA"});
  store.put_tags(2, Tags{u"hot drinks"});
  Draft draft;
  draft.record_id = 1;
  draft.revision = 2;
  store.keep_draft(draft);
  EXPECT_EQ(error_of([&] { store.move_to_trash(Ids{1, 9}); }).number(), no_such_record);
  EXPECT_EQ(store.list().size(), 3U);
  store.move_to_trash(Ids{1, 2});
  EXPECT_EQ(ids_of(store.list()), Ids{3});
  EXPECT_EQ(store.all_tags(), Tags{});
  const std::vector<Heading> trash = store.list({.trash = true});
  EXPECT_EQ(ids_of(trash), (Ids{1, 2}));
  EXPECT_EQ(trash[0].tags, (Tags{u"Hot drinks", u"tea"}));
  EXPECT_EQ(trash[1].tags, Tags{u"Hot drinks"}) << "as it is written first";
  EXPECT_EQ(store.drafts()[0].basis, Draft::Basis::current);
  store.restore(Ids{1, 3});
  EXPECT_EQ(store.load(1).revision, 2);
  EXPECT_EQ(ids_of(store.list({.tag = u"hot Drinks"})), Ids{1});
  EXPECT_EQ(store.duplicate(Ids{1}), Ids{4});
  EXPECT_EQ(store.tags(4), store.tags(1));
  EXPECT_EQ(store.load(4).body, u"x");
  store.move_to_trash(Ids{1});
  store.save(records[1]);
  EXPECT_EQ(ids_of(store.list()), (Ids{2, 3, 4})) << "what is saved is no rubbish";
  EXPECT_EQ(store.empty_trash(), 1U);
  EXPECT_TRUE(store.drafts().empty());
  EXPECT_EQ(error_of([&] { store.restore(Ids{1}); }).number(), no_such_record);
}

TEST_F(Forms, ListsInTheOrderThatIsAskedFor) {
  const std::u16string lines =
      u"  /b1The/b0 first/nlwords " + test::repeated(u"of a long text ", 9);
  RecordStore store = open();
  std::vector<Record> records = {record_of(u"\u00C9clair", u""), record_of(u"zoo", u""),
                                 record_of(u"/b1eclipse", u""), record_of(u" /nl", lines),
                                 record_of(u"", test::repeated(u"x", 99))};
  store.save(records);
  Database(path(), false, 0ms)
      .execute("UPDATE records SET created = 10 - id, changed = CASE id WHEN 3 THEN 9 ELSE id END");
  for (const bool is_read_directly : {true, false}) {
    EXPECT_EQ(ids_of(store.list({Order::title, true, {}, false})), (Ids{1, 3, 4, 5, 2}));
    EXPECT_EQ(ids_of(store.list({Order::title, false, {}, false})), (Ids{2, 5, 4, 3, 1}));
    EXPECT_EQ(ids_of(store.list({Order::created, true, {}, false})), (Ids{5, 4, 3, 2, 1}));
    EXPECT_EQ(ids_of(store.list({Order::changed, false, {}, false})), (Ids{3, 5, 4, 2, 1}));
    if (is_read_directly) store.find(u"all that is new is read");
  }
  const std::vector<Heading> list = store.list({Order::title, true, {}, false});
  EXPECT_EQ(shown(list[2].title),
            shown(u"The first words of a long text of a long text of a long text\u2026"));
  EXPECT_EQ(list[3].title, test::repeated(u"x", 60) + u"\u2026");
  EXPECT_TRUE(list[2].untitled && !list[0].untitled);
  EXPECT_EQ(store.load(4).title, u" /nl");
}

TEST(Differences, AreToldByWords) {
  struct Row {
    std::u16string_view first;
    std::u16string_view second;
    std::u16string_view told;  // [what is removed], {what is added}
  };
  const std::vector<Row> rows = {
      {u"", u"", u""},
      {u"", u"a", u"{a}"},
      {u"one two, three", u"one 2, three", u"one [two]{2}, three"},
      {u"green tea is good", u"black coffee is good", u"[green tea]{black coffee} is good"},
      {u"a b c", u"c a b", u"{c }a b[ c]"},
      {u"line\nline", u"line\n\nline", u"line\n{\n}line"},
  };
  for (const auto& [first, second, told] : rows) {
    std::u16string got;
    for (const Difference& piece : word_differences(first, second)) {
      const std::u16string_view marks = piece.kind == Difference::Kind::same      ? u""
                                        : piece.kind == Difference::Kind::removed ? u"[]"
                                                                                  : u"{}";
      got.append(marks.substr(0, 1)).append(piece.text).append(marks.substr(0, marks.size() / 2));
      if (!marks.empty()) got.back() = marks[1];
    }
    EXPECT_EQ(shown(got), shown(told));
  }
}

/// Some words, many of them more than once.
std::u16string words_for(test::Random& random, std::size_t count) {
  std::u16string text;
  for (; count > 0; --count) {
    text.append(records::from_integer(static_cast<std::int64_t>(random.below(3000))))
        .append(random.below(9) ? u" " : u",\n");
  }
  return text;
}

TEST(Differences, MakeUpBothTextsHoweverLongAndDifferent) {
  for (std::uint32_t seed = test::base_seed(); seed < test::base_seed() + 40; ++seed) {
    test::Random random(seed);
    SCOPED_TRACE(random.describe());
    const std::size_t size = seed % 8 == 0 ? 20000 : random.below(40);
    const std::u16string shared = words_for(random, size);
    const std::u16string first = words_for(random, random.below(size + 1)) + shared;
    const std::u16string second = shared.substr(0, shared.size() / 2) + words_for(random, size) +
                                  shared.substr(shared.size() / 2);
    std::u16string left;
    std::u16string right;
    std::size_t same = 0;
    for (const Difference& piece : word_differences(first, second)) {
      if (piece.kind != Difference::Kind::added) left.append(piece.text);
      if (piece.kind != Difference::Kind::removed) right.append(piece.text);
      if (piece.kind == Difference::Kind::same) same += piece.text.size();
    }
    EXPECT_EQ(left, first);
    EXPECT_EQ(right, second);
    if (size > 40) {
      EXPECT_GE(same, shared.size() / 10 * 9) << "what both have in long texts";
    }
  }
}

TEST_F(Forms, SaysWhatIsWrongAndKeepsWhatIsThere) {
  constexpr RecordStore::Options existing = {false, 50ms, 0};
  const auto save_much = [](RecordStore& store) {
    Record record = store.load(1);
    record.body = test::repeated(u"much ", 100000);
    store.save(record);
  };
  const auto alter = [this](const std::string& statements) {
    Database(path(), true, 0ms).execute(statements);
  };
  std::optional<Database> other;
  struct Row {
    const char* what;
    std::function<void()> prepare;
    std::function<void()> work;
    StoreError number;
    const char* cause;
    bool opens_later = false;
  };
  const std::vector<Row> rows = {
      {"foreign", [&] { alter("PRAGMA application_id = 7"); }, [&] { open(); }, not_a_database,
       "not a database of records"},
      {"newer", [&] { alter("PRAGMA user_version = 99"); }, [&] { open(); }, newer_version, "99"},
      {"locked", [&] { other.emplace(path(), false, 0ms).execute("BEGIN IMMEDIATE"); },
       [&] {
         RecordStore store = open();
         save_much(store);
       },
       locked, "another program", true},
      {"full", [] {},
       [&] {
         RecordStore store = open({false, 50ms, 20});
         save_much(store);
       },
       disk_full, "disk is full", true},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    fs::remove(path());
    Record first = record_of(u"first", u"body");
    open().save(first);
    row.prepare();
    const Error error = error_of(row.work);
    EXPECT_EQ(error.number(), row.number) << error.what();
    EXPECT_NE(error.description().find(row.cause), std::string::npos) << error.what();
    EXPECT_NE(error.description().find(path()), std::string::npos) << error.what();
    other.reset();
    if (!row.opens_later) continue;
    open(existing).check();
    EXPECT_EQ(open(existing).load(1).body, u"body");
  }
}

/// A user in a control of the form.
headless::BoxUser user_of(const QELTextbox& control) {
  return headless::BoxUser(*control.CurrentRichTextBox());
}

constexpr std::u16string_view rich_body = u"a /c1small/c0 /f9font/f0/nl/b1b";

TEST_F(Forms, SavesWhatTheUserChangedAndNothingElse) {
  RecordStore store = open();
  Record record = record_of(u"title", std::u16string(rich_body));
  store.save(record);
  int changes = 0;
  HeadlessForm host(store, [&] { ++changes; });
  RecordForm& form = host.form();
  form.load(1);
  EXPECT_FALSE(form.is_changed());
  user_of(host.title_control()).type(u"My ");
  EXPECT_TRUE(form.is_changed());
  EXPECT_EQ(changes, 3);
  form.save();
  EXPECT_FALSE(form.is_changed());
  EXPECT_EQ(store.load(1).title, u"My title");
  EXPECT_EQ(store.load(1).body, rich_body) << "a text that nobody edited stays, letter for letter";
  form.save();
  EXPECT_EQ(store.load(1).revision, 2) << "nothing was left to save";
  user_of(host.body_control()).type(u"x\n");
  form.revert();
  EXPECT_EQ(form.body(), rich_body);
  form.new_record();
  user_of(host.body_control()).type(u"x\ny");
  form.save();
  EXPECT_EQ(store.load(2).body, u"x/nly");
}

TEST_F(Forms, NoTextIsRewrittenAndNoEditLosesAny) {
  RecordStore store = open();
  HeadlessForm host(store);
  RecordForm& form = host.form();
  const platform::RichEdit& box = *host.body_control().CurrentRichTextBox();
  for (std::uint32_t i = 0; i < 40; ++i) {
    test::Random random(test::base_seed() + i);
    const std::u16string body = random.text(test::markup_vocabulary(), random.below(16));
    SCOPED_TRACE(random.describe() + " " + shown(body));
    Record record = record_of(u"title", body);
    store.save(record);
    form.load(record.id);
    headless::BoxUser user = user_of(host.body_control());
    user.press(keys::end_key, keys::ctrl_key);
    user.type(u"x");
    const richtext::Document typed = box.content(platform::Scope::document);
    form.save();
    EXPECT_TRUE(visible_text(store.load(record.id).body).ends_with(u'x'));
    form.load(record.id);
    EXPECT_EQ(box.content(platform::Scope::document), typed);
    const std::u16string saved = form.body();
    user.press(keys::end_key, keys::ctrl_key);
    user.type(u"y");
    EXPECT_TRUE(form.is_changed());
    user.press(keys::backspace_key);
    EXPECT_FALSE(form.is_changed()) << "the edit was taken back";
    EXPECT_EQ(form.body(), saved);
  }
}

TEST_F(Forms, KeepsUnsavedWorkUntilItIsSavedOrGivenUp) {
  RecordStore store = open();
  std::vector<Record> records = {record_of(u"one", u"1"), record_of(u"two", u"2"),
                                 record_of(u"three", u"3")};
  store.save(records);
  for (const std::int64_t id : {1, 2, 3, 0}) {
    // The form ends without notice, as in a crash.
    HeadlessForm host(store);
    if (id != 0) host.form().load(id);
    EXPECT_FALSE(host.form().keep_draft());
    user_of(host.title_control()).type(u"my ");
    EXPECT_TRUE(host.form().keep_draft());
    user_of(host.body_control()).type(u"much\n");
    EXPECT_TRUE(host.form().keep_draft());
    EXPECT_FALSE(host.form().keep_draft());
  }
  store.save(records[1]);
  Database(path(), false, 0ms).execute("DELETE FROM records WHERE id = 3");
  struct Row {
    Draft::Basis basis;
    std::u16string_view title;
    std::u16string_view body;
    std::int64_t id;
  };
  const std::vector<Row> rows = {{Draft::Basis::current, u"my one", u"much/nl1", 1},
                                 {Draft::Basis::outdated, u"my two", u"much/nl2", 2},
                                 {Draft::Basis::removed, u"my three", u"much/nl3", 4},
                                 {Draft::Basis::current, u"my ", u"much/nl", 5}};
  HeadlessForm host(store);
  const std::vector<Draft> drafts = store.drafts();
  ASSERT_EQ(drafts.size(), rows.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(drafts[i].basis, rows[i].basis);
    host.form().recover(drafts[i]);
    EXPECT_TRUE(host.form().is_changed());
    EXPECT_EQ(store.drafts().size(), rows.size() - i) << "a draft stays until its work is saved";
    host.form().save();
    EXPECT_EQ(host.form().record().id, rows[i].id);
    EXPECT_EQ(store.load(rows[i].id).title, rows[i].title);
    EXPECT_EQ(store.load(rows[i].id).body, rows[i].body);
  }
  EXPECT_TRUE(store.drafts().empty());
  user_of(host.body_control()).type(u"x");
  host.form().keep_draft();
  host.form().revert();
  EXPECT_TRUE(store.drafts().empty());
}

TEST_F(Forms, TextsSurviveTheSwitchOfCodes) {
  RecordStore store = open();
  HeadlessForm host(store);
  RecordForm& form = host.form();
  for (std::uint32_t seed = test::base_seed(); seed < test::base_seed() + 200; ++seed) {
    test::Random random(seed);
    SCOPED_TRACE(random.describe());
    const std::u16string markup = random.text(test::markup_vocabulary(), 30);
    form.put_body(markup);
    form.put_RevealCodes(true);
    ASSERT_EQ(host.body_control().get_Text(), markup);
    form.put_RevealCodes(false);
    ASSERT_EQ(shown(form.body()), shown(markup));
  }
}

/// Saves two records and a draft, generation after generation, until it is killed.
[[noreturn]] void save_until_killed(const std::string& path) {
  RecordStore store(path, {true, 5000ms, 0});
  std::vector<Record> records(2);
  for (std::size_t i = 0; i < store.list().size(); ++i) {
    records[i] = store.load(static_cast<std::int64_t>(i) + 1);
  }
  Draft draft;
  for (const Draft& kept : store.drafts()) draft = kept;
  while (true) {
    const std::u16string name = records::from_integer(records[0].revision + 1);
    for (Record& record : records) {
      record.title = name;
      record.body = test::repeated(name + u" ", 20000);
    }
    store.save(records);
    draft.title = name;
    draft.body = records[0].body;
    store.keep_draft(draft);
  }
}

TEST_F(Forms, AKilledProcessLeavesNothingHalfSaved) {
  test::Random random(test::base_seed());
  SCOPED_TRACE(random.describe());
  std::int64_t last = 0;
  std::size_t drafts = 0;
  std::size_t interrupted = 0;
  // On a busy machine it may take more rounds until a process has saved anything.
  for (std::size_t round = 0; round < 25 || (round < 250 && drafts * interrupted == 0); ++round) {
    const pid_t child = fork();
    if (child == 0) save_until_killed(path());
    std::this_thread::sleep_for(1ms * random.below(10 + 8 * round));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WTERMSIG(status), SIGKILL) << "it ended by itself";
    std::error_code none;
    if (fs::file_size(path() + "-journal", none) > 0 && !none) ++interrupted;

    const RecordStore store = open();
    store.check();
    std::int64_t generation = 0;
    for (const Heading& heading : store.list()) {
      const Record record = store.load(heading.id);
      EXPECT_TRUE(record.body == test::repeated(record.title + u" ", 20000))
          << "half old, half new";
      if (generation != 0) {
        EXPECT_EQ(record.revision, generation) << "saved one by one";
      }
      generation = record.revision;
      EXPECT_EQ(record.title, records::from_integer(generation));
    }
    EXPECT_GE(generation, last) << "a save is lost";
    last = generation;
    for (const Draft& draft : store.drafts()) {
      EXPECT_TRUE(draft.body == test::repeated(draft.title + u" ", 20000));
    }
    EXPECT_GE(store.drafts().size(), drafts) << "a draft is lost";
    drafts = store.drafts().size();
  }
  EXPECT_EQ(drafts, 1U);
  EXPECT_GT(interrupted, 0U) << "no save was interrupted";
}

}  // namespace
}  // namespace qel::forms
