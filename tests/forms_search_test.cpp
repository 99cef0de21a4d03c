// Searching records by the index of their words.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "Database.h"
#include "RecordStore.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel::forms {
namespace {

namespace fs = std::filesystem;
using test::shown;
using Ids = std::vector<std::int64_t>;

class FormsSearch : public testing::Test {
 public:
  FormsSearch() {
    std::string name = (fs::temp_directory_path() / "qelforms-XXXXXX").string();
    folder_ = mkdtemp(name.data());
  }
  ~FormsSearch() override { fs::remove_all(folder_); }

  std::string path() const { return folder_ / "records.db"; }
  /// A program that knows nothing of the functions.
  void other_program(const std::string& statements) const {
    Database(path(), true, {}).execute(statements);
  }
  Ids found(RecordStore& store, std::u16string_view text, const Listing& listing = {},
            std::size_t most = 9999) const {
    Ids ids;
    for (const Heading& heading : store.find(text, listing, most)) ids.push_back(heading.id);
    return ids;
  }
  /// Whether the work succeeds for a user who may only read the file.
  bool as_reader(const std::function<bool()>& work) const {
    fs::permissions(folder_, fs::perms(0755));
    fs::permissions(path(), fs::perms(0444));
    const pid_t child = fork();
    if (child == 0) {
      constexpr uid_t nobody = 65534;
      const bool may_write_all = geteuid() == 0;
      _exit((!may_write_all || setuid(nobody) == 0) && work() ? 0 : 1);
    }
    int status = 1;
    waitpid(child, &status, 0);
    return status == 0;
  }

 private:
  fs::path folder_;
};

/// A file of the version before the index, as that wrote it.
constexpr const char* earlier_version = R"(
  CREATE TABLE records(
    id INTEGER PRIMARY KEY AUTOINCREMENT, title TEXT NOT NULL, body TEXT NOT NULL,
    visible_title TEXT NOT NULL, searched TEXT NOT NULL, created INTEGER NOT NULL,
    changed INTEGER NOT NULL, revision INTEGER NOT NULL);
  CREATE TABLE drafts(
    id INTEGER PRIMARY KEY AUTOINCREMENT, record INTEGER NOT NULL, revision INTEGER NOT NULL,
    title TEXT NOT NULL, body TEXT NOT NULL, kept INTEGER NOT NULL);
  CREATE TABLE tables(name TEXT PRIMARY KEY, record TEXT NOT NULL);
  INSERT INTO records VALUES(3, '/b1Old/b0 title', 'old body', 'Old title', 'stale', 5, 6, 7);
  INSERT INTO drafts VALUES(1, 3, 7, 'draft', '', 8);
  PRAGMA application_id = 1363496006;
  PRAGMA user_version = 1;)";

TEST_F(FormsSearch, FindsWordsInAnyOrderTheBestFirst) {
  RecordStore store(path(), {.creates = true});
  std::vector<Record> records(4);
  records[0].title = u"Shopping";
  records[0].body = u"Milk, sugar/nl /nland green /b1te/b0a for \u00C9milie's C++ course";
  records[1].title = u"Tea";
  records[1].body = u"How to make it";
  records[2].title = u"\u7DD1\u8336\u306E\u672C";
  records[3].body = test::repeated(u"word ", 100) + u"teapot" + test::repeated(u" word", 100);
  store.save(records);
  struct Row {
    std::u16string_view text;
    Ids ids;
  };
  const std::vector<Row> rows = {{u"TEA", {2, 1, 4}},
                                 {u"tea ", {2, 1}},
                                 {u"green milk", {1}},
                                 {u"milk gr", {1}},
                                 {u"gr milk", {}},
                                 {u"emilie", {1}},
                                 {u"\"C++\"", {1}},
                                 {u"tea OR pot", {}},
                                 {u"milk\u2003GREEN ", {1}},
                                 {u"milk, sugar and", {1}},
                                 {u"\u8336\u306E", {3}},
                                 {u"b1", {}},
                                 {u"* ^ (", {}}};
  for (const auto& [text, ids] : rows) EXPECT_EQ(found(store, text), ids) << shown(text);
  EXPECT_EQ(store.find(u"te", {}, 2).size(), 2U);
  EXPECT_EQ(store.find(u"te")[1].found, (std::vector<Part>{{22, 3}}));
  EXPECT_EQ(store.find(u"te")[0].found_in_title, (std::vector<Part>{{0, 3}}));
  EXPECT_EQ(store.find(u"hoppin")[0].found_in_title, (std::vector<Part>{{1, 6}})) << "within words";
  store.move_to_trash(Ids{1});
  const std::u16string tag = u"Drinks";
  store.put_tags(4, {&tag, 1});
  EXPECT_EQ(found(store, u"tea"), (Ids{2, 4}));
  EXPECT_EQ(found(store, u"tea", {.trash = true}), Ids{1});
  EXPECT_EQ(found(store, u"tea", {.tag = u"DRINKS"}), Ids{4});
  store.restore(Ids{1});
  EXPECT_EQ(shown(store.find(u"tea")[1].snippet),
            shown(u"Milk, sugar and green tea for \u00C9milie's C++ course"));
  EXPECT_EQ(shown(store.find(u"teapot")[0].snippet),
            shown(u"\u2026word word word word word teapot word word word word word word\u2026"));
}

TEST_F(FormsSearch, FollowsWhatOtherProgramsWrite) {
  RecordStore store(path(), {.creates = true});
  std::vector<Record> records(2);
  records[0].body = u"one";
  records[1].body = u"two";
  store.save(records);
  other_program("UPDATE records SET body = 'thr/b1ee' WHERE id = 1");
  other_program("INSERT OR FAIL INTO records VALUES(7, 'four', '', 0, 0, 1)");
  EXPECT_EQ(found(store, u"one"), Ids{});
  EXPECT_EQ(found(store, u"three"), Ids{1});
  EXPECT_EQ(found(store, u"four"), Ids{7});
  other_program(
      "DELETE FROM records WHERE id = 1; REPLACE INTO records VALUES(7, 'five', '', 0, 0, 1)");
  other_program("UPDATE records SET id = 9 WHERE id = 2");
  EXPECT_EQ(found(store, u"three"), Ids{});
  EXPECT_EQ(found(store, u"four"), Ids{});
  EXPECT_EQ(found(store, u"five"), Ids{7});
  other_program("DROP TABLE words; UPDATE records SET body = 'six' WHERE id = 7");
  EXPECT_EQ(store.index_more(1), RecordStore::Indexing::more);
  EXPECT_EQ(store.index_more(1), RecordStore::Indexing::done);
  EXPECT_EQ(found(store, u"six"), Ids{7});
  EXPECT_EQ(found(store, u"two"), Ids{9});
  RecordStore lazy(path(), {.reach = 1, .most_indexed = 0});
  other_program("UPDATE records SET revision = 3");
  EXPECT_EQ(found(lazy, u"six"), Ids{}) << "another time";
  EXPECT_EQ(lazy.index_more(9), RecordStore::Indexing::done);
  EXPECT_EQ(found(lazy, u"six"), Ids{7});
}

TEST_F(FormsSearch, FindsTitlesThenTheNewestAmongMany) {
  RecordStore store(path(), {.creates = true});
  std::vector<Record> records(1200);
  for (Record& record : records) record.body = u"a cup of tea";
  records[4].title = u"Tea";
  store.save(records);
  EXPECT_EQ(found(store, u"te", {}, 3), (Ids{5, 1200, 1199}));
  EXPECT_EQ(found(store, u"tea cup").size(), 1200U);
}

TEST_F(FormsSearch, AnswersWithoutTheIndexWhileTheFileIsLocked) {
  constexpr std::size_t count = 60;
  RecordStore store(path(), {.creates = true, .patience = std::chrono::milliseconds(0)});
  test::Random random(test::base_seed());
  SCOPED_TRACE(random.describe());
  const std::vector<std::u16string_view> words = {
      u"tea",        u"Teapot",       u"\u00C9t\u00E9", u"ete",    u"well-known", u"C++", u"c",
      u"/b1bold/b0", u"\u7DD1\u8336", u"don't",         u"\u2003", u"3,5",        u"x_y"};
  std::vector<Record> records(count);
  for (Record& record : records) {
    record.title = random.text(words, 2);
    for (std::size_t i = random.below(6); i > 0; --i) {
      record.body.append(words[random.below(words.size())]).append(u" ");
    }
  }
  store.save(records);
  std::vector<std::u16string> queries = {
      u"te c", u"ete tea", u"known well", u"well-kn", u"b1", u"c++ \u7DD1", u"x", u"3", u"don t"};
  std::vector<Ids> expected;
  expected.reserve(queries.size());
  for (const std::u16string& query : queries) expected.push_back(found(store, query));
  other_program("UPDATE records SET revision = 2");
  Database other(path(), false, {});
  other.execute("BEGIN IMMEDIATE");
  for (std::size_t i = 0; i < queries.size(); ++i) {
    Ids ids = found(store, queries[i]);
    std::sort(ids.begin(), ids.end());
    std::sort(expected[i].begin(), expected[i].end());
    EXPECT_EQ(ids, expected[i]) << shown(queries[i]);
  }
  EXPECT_EQ(store.list().size(), count);
}

TEST_F(FormsSearch, BringsAnEarlierFileUpToDate) {
  other_program(earlier_version);
  const auto reads = [&] {
    RecordStore store(path());
    return store.is_read_only() && found(store, u"body old") == Ids{3} &&
           store.list()[0].title == u"Old title" && store.load(3).revision == 7;
  };
  EXPECT_TRUE(as_reader(reads)) << "one that is write-protected is read as it is";
  fs::permissions(path(), fs::perms(0644));
  RecordStore store(path());
  EXPECT_EQ(found(store, u"body old"), Ids{3});
  EXPECT_EQ(found(store, u"stale"), Ids{});
  EXPECT_EQ(store.drafts().size(), 1U);
  store.move_to_trash(Ids{3});
  Record record = store.load(3);
  record.body = u"new";
  store.save(record);
  EXPECT_EQ(found(store, u"new"), Ids{3});
  EXPECT_EQ(store.list()[0].title, u"Old title");
  EXPECT_TRUE(as_reader([&] {
    RecordStore reader(path());
    return reader.is_read_only() && found(reader, u"ne") == Ids{3};
  }));
}

}  // namespace
}  // namespace qel::forms
