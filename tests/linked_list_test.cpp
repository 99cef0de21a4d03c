#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/base/Error.h"
#include "qel/text/LinkedList.h"
#include "support/Random.h"

namespace qel {
namespace {

std::int32_t number(const Variant& value) { return std::get<std::int32_t>(value); }

/// The ids from the top, then "/" and the first, last and current id.
std::string shape(const LinkedList& list) {
  LinkedList walked = list;
  std::string text;
  walked.GotoFirst();
  for (std::int32_t left = list.Count(); left > 0; --left, walked.GotoNext()) {
    text += std::to_string(walked.Current()) + " ";
  }
  return text + "/ " + std::to_string(list.First()) + " " + std::to_string(list.Last()) + " " +
         std::to_string(list.Current());
}

LinkedList list_of(std::int32_t count) {
  LinkedList list;
  for (std::int32_t i = 1; i <= count; ++i) list.AddToBottom(i * 10);
  return list;
}

using Step = std::function<std::int32_t(LinkedList&)>;

template <class Result>
Step call(Result (LinkedList::*member)()) {
  return [member](LinkedList& list) {
    if constexpr (std::is_void_v<Result>) {
      (list.*member)();
      return 0;
    } else {
      const Variant result = (list.*member)();
      const auto* const id = std::get_if<std::int32_t>(&result);
      return id != nullptr ? *id : -1;
    }
  };
}

Step call(std::int32_t (LinkedList::*add)(Variant)) {
  return [add](LinkedList& list) { return (list.*add)(std::int32_t{99}); };
}

// What happens around a current node is held against a vector below.
TEST(LinkedList, FollowsItsRules) {
  struct Row {
    std::int32_t nodes, cursor;  // ids from 1 to `nodes`, then GotoID(cursor)
    Step step;
    std::int32_t result;
    std::string_view shape;
  };
  const Row rows[] = {
      {0, -3, call(&LinkedList::AddBeforeCurrent), 1, "1 / 1 1 1"},
      // Without a current node, links lead to the place with id 0.
      {3, 0, call(&LinkedList::AddBeforeCurrent), 4, "4 / 4 3 4"},
      {3, 0, call(&LinkedList::AddAfterCurrent), 4, "1 2 3 / 1 4 4"},
      {3, 0, call(&LinkedList::DeleteCurrent), 0, "/ 0 0 0"},
      {2, 0, call(&LinkedList::RemoveCurrentLink), -1, "1 2 / 1 2 0"},
      {3, 1, call(&LinkedList::Compress), 0, "1 2 3 / 1 3 0"},
      {3, 0, call(&LinkedList::Compress), 0, "1 2 3 / 1 3 4"},
      {3, 3, call(&LinkedList::GotoNext), 3, "1 2 3 / 1 3 3"},
      {3, 0, call(&LinkedList::GotoNext), 0, "1 2 3 / 1 3 0"},
      {3, 4, call(&LinkedList::GotoNext), 3, "1 2 3 / 1 3 3"},  // GotoID(4) is ignored
  };
  for (const Row& row : rows) {
    SCOPED_TRACE("row " + std::to_string(&row - rows));
    LinkedList list = list_of(row.nodes);
    list.GotoID(row.cursor);
    EXPECT_EQ(row.step(list), row.result);
    EXPECT_EQ(shape(list), row.shape);
  }
}

TEST(LinkedList, KeepsHolesUntilItIsEmptiedOrCompressed) {
  LinkedList list = list_of(3);
  list.GotoID(2);
  list.DeleteCurrent();
  EXPECT_EQ(number(list.GetData(2)), 20) << "the hole keeps its value";
  list.RemoveCurrentLink();
  EXPECT_EQ(std::get<std::u16string>(list.GetData(3)), u"");
  EXPECT_EQ(list.SetCurrent(3), 0);
  EXPECT_EQ(list.Current(), 1);
  list.GotoID(3);
  EXPECT_EQ(list.Current(), 3);
  EXPECT_EQ(list.ListIndex(), 0);
  EXPECT_EQ(list.SetCurrent(1), 1);
  EXPECT_EQ(list.ListIndex(), 1);
  list.RemoveCurrentLink();
  list.Clear();
  EXPECT_EQ(list.AddToTop({}), 4) << "a list of holes is empty already";
  list.Clear();
  EXPECT_EQ(list.AddToTop({}), 1);
}

/// The members that use the cursor, and the name that an error gives.
const std::vector<std::pair<std::string_view, Step>>& cursor_members() {
  static const std::vector<std::pair<std::string_view, Step>> members = {
      {"AddBeforeCurrent", call(&LinkedList::AddBeforeCurrent)},
      {"AddAfterCurrent", call(&LinkedList::AddAfterCurrent)},
      {"DeleteCurrent", call(&LinkedList::DeleteCurrent)},
      {"RemoveCurrentLink", call(&LinkedList::RemoveCurrentLink)},
      {"SetData", [](LinkedList& list) { return list.SetData({}); }},
      {"GetData",
       [](LinkedList& list) { return static_cast<std::int32_t>(list.GetData(-3).index()); }},
      {"GetData",
       [](LinkedList& list) { return static_cast<std::int32_t>(list.GetData(3).index()); }},
      {"GotoNext", call(&LinkedList::GotoNext)},
      {"GotoPrevious", call(&LinkedList::GotoPrevious)},
      {"RemoveCurrentLink", call(&LinkedList::MoveCurrentToTop)},
      {"RemoveCurrentLink", call(&LinkedList::MoveCurrentToBottom)},
      {"MoveCurrentUpOne", call(&LinkedList::MoveCurrentUpOne)},
      {"MoveCurrentDownOne", call(&LinkedList::MoveCurrentDownOne)},
  };
  return members;
}

/// The list as ids in order, and their values.
struct Model {
  std::vector<std::int32_t> order;
  std::vector<std::int32_t> values = {0};
  std::size_t cursor = 0;

  std::int32_t add(std::size_t at, std::int32_t value) {
    values.push_back(value);
    cursor = at;
    order.insert(order.begin() + static_cast<std::ptrdiff_t>(at),
                 static_cast<std::int32_t>(values.size() - 1));
    return order[at];
  }
  std::int32_t remove() {
    const std::int32_t id = order[cursor];
    order.erase(order.begin() + static_cast<std::ptrdiff_t>(cursor));
    if (cursor == order.size() && cursor > 0) --cursor;
    return values[static_cast<std::size_t>(id)];
  }
  std::int32_t current() const { return order.empty() ? 0 : order[cursor]; }
};

void change_both(LinkedList& list, Model& model, test::Random& random) {
  const auto value = static_cast<std::int32_t>(random.below(1000));
  const std::size_t cursor = model.cursor;
  const std::size_t end = model.order.size();
  switch (end == 0 ? random.below(4) : random.below(12)) {
    case 0:
      ASSERT_EQ(list.AddToTop(value), model.add(0, value));
      break;
    case 1:
      ASSERT_EQ(list.AddToBottom(value), model.add(end, value));
      break;
    case 2:
      ASSERT_EQ(list.AddBeforeCurrent(value), model.add(cursor, value));
      break;
    case 3:
      ASSERT_EQ(list.AddAfterCurrent(value), model.add(end == 0 ? 0 : cursor + 1, value));
      break;
    case 4:
      model.remove();
      ASSERT_EQ(number(list.DeleteCurrent()), model.current());
      if (model.order.empty()) model = {};
      break;
    case 5:
      ASSERT_EQ(number(list.RemoveCurrentLink()), model.remove());
      break;
    case 6:
      ASSERT_EQ(list.MoveCurrentToTop(), model.add(0, model.remove()));
      break;
    case 7:
      ASSERT_EQ(list.MoveCurrentToBottom(), model.add(end - 1, model.remove()));
      break;
    case 8:
      ASSERT_EQ(list.MoveCurrentUpOne(), cursor == 0 ? 0 : model.add(cursor - 1, model.remove()));
      break;
    case 9:
      ASSERT_EQ(list.MoveCurrentDownOne(),
                cursor + 1 == end ? 0 : model.add(cursor + 1, model.remove()));
      break;
    case 10:
      model.cursor = random.below(end);
      ASSERT_EQ(list.SetCurrent(model.current()), model.current());
      break;
    default:
      list.Compress();
      Model compressed;
      for (const std::int32_t id : model.order) {
        compressed.add(compressed.order.size(), model.values[static_cast<std::size_t>(id)]);
      }
      model.order = compressed.order;
      model.values = compressed.values;
      ASSERT_EQ(list.Current(), cursor == 0 ? 0 : model.current());
      list.SetCurrent(model.current());
  }
}

TEST(LinkedList, BehavesLikeAVectorOfIds) {
  for (std::uint32_t i = 0; i < 300; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    LinkedList list;
    Model model;
    for (int step = 0; step < 60; ++step) {
      ASSERT_NO_FATAL_FAILURE(change_both(list, model, random));
      std::string expected;
      for (const std::int32_t id : model.order) {
        expected += std::to_string(id) + " ";
        ASSERT_EQ(number(list.GetData(id)), model.values[static_cast<std::size_t>(id)]);
      }
      const bool is_empty = model.order.empty();
      ASSERT_EQ(shape(list), expected + "/ " + std::to_string(is_empty ? 0 : model.order.front()) +
                                 " " + std::to_string(is_empty ? 0 : model.order.back()) + " " +
                                 std::to_string(model.current()));
      ASSERT_EQ(list.ListIndex(), is_empty ? 0 : static_cast<std::int32_t>(model.cursor) + 1);
      std::string upwards;
      LinkedList reverse = list;
      for (std::int32_t id = reverse.GotoLast(); id != 0;) {
        upwards.insert(0, std::to_string(id) + " ");
        const std::int32_t above = reverse.GotoPrevious();
        id = above == id ? 0 : above;
      }
      ASSERT_EQ(upwards, expected);
    }
  }
}

TEST(LinkedList, SurvivesACursorOnAnything) {
  for (std::uint32_t i = 0; i < 2000; ++i) {
    test::Random random(test::base_seed() + i);
    SCOPED_TRACE(random.describe());
    LinkedList list = list_of(3);
    for (int step = 0; step < 40; ++step) {
      list.GotoID(static_cast<std::int32_t>(random.below(12)) - 1);
      const auto& [name, step_of] = random.pick(cursor_members());
      try {
        step_of(list);
        if (random.one_in(5)) list.AddToTop({});
        if (random.one_in(5)) list.AddToBottom({});
        if (random.one_in(20)) list.Compress();
      } catch (const Error& error) {
        ASSERT_EQ(error.number(), Error::subscript_out_of_range);
        ASSERT_EQ(error.description().rfind(name, 0), 0U) << error.description();
      }
      ASSERT_GE(list.Count(), list.ListIndex());
    }
    list.Clear();
    ASSERT_EQ(list.Count(), 0);
  }
}

}  // namespace
}  // namespace qel
