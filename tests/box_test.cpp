// What hosts can do to a box while it tells them something, and finding and replacing.

#include "qel/box/Box.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <utility>

#include "qel/base/Scan.h"
#include "qel/box/Drop.h"
#include "qel/box/Keyboard.h"
#include "qel/box/Search.h"
#include "qel/headless/Shared.h"
#include "qel/platform/Keys.h"
#include "support/Random.h"
#include "support/Text.h"

namespace qel::box {
namespace {

using platform::copy_drop;
using platform::move_drop;
using platform::no_drop;

/// A window whose user drags as a function says.
class DraggingView : public View {
 public:
  void show(const Change& /*change*/) override {}
  void show_selection() override {}
  void show_appearance(const platform::BoxAppearance& /*before*/) override {}
  platform::WindowHandle window() override { return 0; }
  void put_owner(platform::WindowHandle /*owner*/) override {}
  platform::Clipboard& clipboard() override { return clipboard_; }
  void carry(Drag& drag) override { carries(drag); }
  void close() override {}

  std::function<void(Drag&)> carries = [](Drag& drag) { drag.end(move_drop); };

 private:
  headless::OwnClipboard clipboard_;
};

class HostileListener : public platform::BoxListener {
 public:
  void on_start_drag(platform::DragData& data, std::int32_t& effects) override {
    if (starts) starts(data, effects);
  }
  void on_drag_drop(platform::DragData& /*data*/, std::int32_t& /*effect*/, std::int16_t,
                    std::int16_t, float, float) override {
    if (drops) drops();
  }

  std::function<void(platform::DragData&, std::int32_t&)> starts;
  std::function<void()> drops;
};

class HostileHost : public testing::Test {
 protected:
  HostileHost() {
    box->attach(&view);
    box->listen(&listener);
    platform::BoxAppearance appearance = box->appearance();
    appearance.drag_mode = 1;
    appearance.drop_mode = 2;
    box->put_appearance(appearance);
    box->put_Text(u"abcd");
    box->put_selection({0, 2});
  }
  void TearDown() override { box->attach(nullptr); }

  void put_read_only(bool read_only) const {
    platform::BoxAppearance appearance = box->appearance();
    appearance.read_only = read_only;
    box->put_appearance(appearance);
  }
  std::int32_t drop_text(std::u16string_view text, std::size_t position) const {
    platform::DragData data;
    data.put(platform::text_format, text);
    return Drop(*box).drop(data, copy_drop | move_drop, {}, [position] { return position; });
  }

  DraggingView view;
  HostileListener listener;
  std::shared_ptr<Box> box = std::make_shared<Box>();
};

TEST_F(HostileHost, MayEndADragByAnError) {
  view.carries = [](Drag&) { throw std::runtime_error("no"); };
  EXPECT_THROW(box->start_drag(), std::runtime_error);
  EXPECT_EQ(drop_text(u"NEW", 4), move_drop);
  EXPECT_EQ(box->text(), u"abcdNEW") << "it is no move of what was dragged before";
}

TEST_F(HostileHost, MayBeginADragWithinADrag) {
  listener.starts = [&](platform::DragData&, std::int32_t&) { box->start_drag(); };
  box->start_drag();
  EXPECT_EQ(box->text(), u"cd") << "one drag, one move";
}

TEST_F(HostileHost, MovesNothingOutOfTextThatMayNotBeEdited) {
  put_read_only(true);
  listener.starts = [](platform::DragData&, std::int32_t& effects) {
    effects = copy_drop | move_drop;
  };
  box->start_drag();
  EXPECT_EQ(box->text(), u"abcd") << "whatever the host allows";
  put_read_only(false);
  view.carries = [&](Drag& drag) {
    put_read_only(true);
    drag.end(move_drop);
  };
  box->start_drag();
  EXPECT_EQ(box->text(), u"abcd") << "as it is when the drag ends";
}

TEST_F(HostileHost, EndsEditingBeforeADropIsTaken) {
  listener.drops = [&] { put_read_only(true); };
  EXPECT_EQ(drop_text(u"NEW", 0), no_drop);
  EXPECT_EQ(box->text(), u"abcd");
}

TEST_F(HostileHost, DragsDataOfItsOwnOntoTheSameBox) {
  listener.starts = [](platform::DragData& data, std::int32_t&) {
    data.clear();
    data.put(platform::text_format, u"HOST");
  };
  view.carries = [&](Drag& drag) {
    Drop drop(*box);
    drag.end(drop.drop(drag.data(), drag.allowed_effects(), {}, [] { return 4U; }));
    EXPECT_EQ(drag.effect(), copy_drop) << "nothing has moved";
  };
  for (const Selection selected : {Selection{1, 1}, Selection{0, 2}}) {
    box->put_Text(u"abcd");
    box->put_selection(selected);
    box->start_drag();
    EXPECT_EQ(box->text(), u"abcdHOST") << selected.end();
  }
}

TEST_F(HostileHost, PutsBreaksThatAreNone) {
  richtext::Document content;
  const richtext::CharFormat bold = {.bold = true};
  content.append(u"a\rb\n\n", content.intern(bold));
  content.append_break(content.intern({}), richtext::Alignment::left);
  content.append(u"c\r", content.intern({}));
  box->put_content(platform::Scope::document, content);
  EXPECT_EQ(box->text(), u"a\r\nb\r\n\r\n\r\nc\r\n");
  EXPECT_TRUE(box->document().check());
  EXPECT_EQ(box->document().format_at(2), bold);
}

TEST_F(HostileHost, InsertsForDays) {
  box->put_Text(u"");
  constexpr int insertions = 300'000;
  for (int i = 0; i < insertions; ++i) box->put_SelText(u"x");
  for (int i = 0; i < insertions; ++i) box->undo();
  EXPECT_FALSE(box->can_undo());
  EXPECT_GT(box->text().size(), insertions / 4) << "what has replaced nothing takes memory, too";
  EXPECT_LT(box->text().size(), insertions - 10'000);
}

TEST_F(HostileHost, PausesBetweenSteps) {
  using namespace std::chrono_literals;
  Keyboard keyboard(*box);
  std::chrono::steady_clock::time_point now;
  box->put_clock([&now] { return now; });
  box->put_Text(u"");
  const std::pair<std::chrono::milliseconds, const char16_t*> typed[] = {
      {0s, u"a"}, {1900ms, u"b"}, {1900ms, u"c"}, {2100ms, u"d"}, {0s, u"e"}};
  for (const auto& [pause, text] : typed) {
    now += pause;
    keyboard.type(text);
  }
  box->undo();
  EXPECT_EQ(box->text(), u"abc");
  for (const auto pause : {2100ms, 0ms, 2100ms}) {
    now += pause;
    keyboard.act_on_key(keys::backspace_key, keys::no_modifier);
  }
  box->undo();
  EXPECT_EQ(box->text(), u"a");
  box->undo();
  EXPECT_EQ(box->text(), u"abc");
  // As a view does with text that takes long to compose.
  box->put_selection({0, 3});
  box->erase({0, 3}, Box::Kind::typing);
  now += 1min;
  keyboard.type(u"x");
  box->undo();
  EXPECT_EQ(box->text(), u"abc");
}

TEST_F(HostileHost, LeavesNoHalfOfACharacter) {
  Keyboard keyboard(*box);
  keyboard.type(u"\xD83D");
  box->put_selection({4, 4});
  keyboard.type(u"x");
  EXPECT_EQ(box->text(), u"abcdx") << "the other half never came";
  box->put_Text(u"\xD83D-\xDE00");
  box->put_selection({2, 2});
  keyboard.act_on_key(keys::backspace_key, keys::no_modifier);
  keyboard.type(u"y");
  EXPECT_EQ(box->text(), u"y\xD83D\xDE00") << "two halves that met";
  keyboard.act_on_key(keys::delete_key, keys::alt_key);
  EXPECT_EQ(box->text(), u"y\xD83D\xDE00");
}

// Finding and replacing.

/// A document in which a star begins and ends bold text, and a slash is a break.
richtext::Document starred(std::u16string_view text) {
  richtext::Document document;
  richtext::CharFormat format;
  for (const char16_t unit : text) {
    if (unit == u'*') {
      format.bold = !format.bold;
    } else if (unit == u'/') {
      document.append_break(document.intern(format), richtext::Alignment::left);
    } else {
      document.append({&unit, 1}, document.intern(format));
    }
  }
  return document;
}

std::u16string starred(const richtext::Document& document) {
  std::u16string text;
  bool is_bold = false;
  for (std::size_t at = 0; at < document.size(); ++at) {
    if (document.format_at(at).bold != is_bold) text += u'*';
    is_bold = document.format_at(at).bold;
    if (document.text()[at] != u'\r')
      text += document.text()[at] == u'\n' ? u'/' : document.text()[at];
  }
  return text + (is_bold ? u"*" : u"");
}

Wanted wanted(std::u16string text, bool matches_case, bool whole_words, bool bold) {
  Wanted wanted{std::move(text), matches_case, whole_words, {}};
  if (bold) wanted.format.bold = true;
  return wanted;
}

TEST(Search, FindsTextAndFormats) {
  constexpr bool any = false;
  constexpr bool same = true;
  constexpr bool part = false;
  constexpr bool whole = true;
  constexpr bool bold = true;
  const struct {
    std::u16string_view text;
    Wanted wanted;
    std::u16string_view found;  // with each hit in brackets
  } cases[] = {
      {u"Tea, tea", wanted(u"TEA", any, part, false), u"[Tea], [tea]"},
      {u"Tea, tea", wanted(u"tea", same, part, false), u"Tea, [tea]"},
      {u"teapot tea", wanted(u"tea", any, whole, false), u"teapot [tea]"},
      {u"aaaaa", wanted(u"aa", any, part, false), u"[aa][aa]a"},
      // The forms of one letter; the letters i of Turkish stay apart.
      {u"\u03C3\u03C2\u03A3 \u212A", wanted(u"\u03C3", any, part, false),
       u"[\u03C3][\u03C2][\u03A3] \u212A"},
      {u"i\u0131\u0130I", wanted(u"i", any, part, false), u"[i]\u0131\u0130[I]"},
      {u"\U00010428\U00010400", wanted(u"\U00010400", any, part, false),
       u"[\U00010428][\U00010400]"},
      // No part of a cluster, and words are whole over their apostrophes, marks and digits.
      {u"e\u0301e", wanted(u"e", any, part, false), u"e\u0301[e]"},
      {u"don't don 'don' don2 \u00E9don", wanted(u"don", any, whole, false),
       u"don't [don] '[don]' don2 \u00E9don"},
      {u"x.a (a)", wanted(u"(a)", any, whole, false), u"x.a [(a)]"},
      {u"a*a*a *aa*", wanted(u"a", any, part, bold), u"a[a]a [a][a]"},
      {u"*ab*c abc", wanted(u"bc", any, part, bold), u"abc abc"},
      // Runs of a format end with their paragraphs.
      {u"a*bc/d/*e*f*", wanted(u"", any, part, bold), u"a[bc]/[d]/e[f]"},
      {u"a*b*", wanted(u"", any, part, false), u"ab"},
      {u"", wanted(u"a", any, part, false), u""},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(test::shown(row.text) + " for " + test::shown(row.wanted.text));
    const richtext::Document document = starred(row.text);
    const Search search(row.wanted);
    const auto hits = search.all(document, 100);
    std::u16string found = document.text();
    for (std::size_t i = hits.size(); i-- > 0;) {
      found.insert(hits[i].end, u"]").insert(hits[i].start, u"[");
    }
    EXPECT_EQ(
        test::shown(replace_all(found, std::u16string_view(u"\r\n"), std::u16string_view(u"/"))),
        test::shown(row.found));
    for (std::size_t i = 0; i < hits.size(); ++i) {
      const auto next = search.next(document, i == 0 ? 0 : hits[i - 1].end);
      const auto previous =
          search.previous(document, i + 1 == hits.size() ? document.size() : hits[i + 1].start);
      ASSERT_TRUE(next && previous);
      EXPECT_EQ(next->start, hits[i].start);
      EXPECT_EQ(previous->start, hits[i].start);
      EXPECT_TRUE(search.is_hit(document, hits[i]));
    }
    EXPECT_FALSE(search.next(document, hits.empty() ? 0 : hits.back().end));
    EXPECT_FALSE(search.previous(document, hits.empty() ? document.size() : hits.front().start));
  }
}

TEST(Search, FindsTheSameFarAway) {
  test::Random random(test::base_seed());
  SCOPED_TRACE(random.describe());
  // Hits on both sides of each block, and across its edge.
  std::u16string text;
  while (text.size() < 100'000) {
    text += random.below(3) == 0 ? u"\U00010400\u00C4b" : u"\U00010428x";
  }
  const richtext::Document document = richtext::plain_document(text, {});
  const Search search(wanted(u"\U00010428\u00E4B", false, false, false));
  std::vector<std::size_t> expected;
  for (std::size_t at = 0; (at = text.find(u"\U00010400\u00C4b", at)) != text.npos; ++at) {
    expected.push_back(at);
  }
  const auto hits = search.all(document, text.size());
  ASSERT_EQ(hits.size(), expected.size());
  for (std::size_t i = 0; i < hits.size(); ++i) ASSERT_EQ(hits[i].start, expected[i]);
  EXPECT_EQ(search.previous(document, expected[2])->start, expected[1]);
  EXPECT_EQ(search.all(document, 7).size(), 7U);
}

TEST(Search, ReplacesAllInOneStepAndKeepsFormats) {
  const struct {
    std::u16string_view text;
    std::u16string_view find;
    std::u16string_view put;
    std::u16string_view result;
    Selection before;
    Selection after;
  } cases[] = {
      {u"a*b*a*ab*", u"ab", u"xyz", u"xyza*xyz*", {0, 0}, {0, 0}},
      {u"a*b*c *bc* b", u"b", u"xy", u"a*xy*c *xyc* xy", {3, 7}, {4, 9}},
      {u"one/*one*/one", u"one", u"", u"//", {3, 8}, {0, 2}},
      {u"a b a", u"a", u"1\r\n2", u"1 2 b 1 2", {5, 4}, {9, 6}},
      {u"aa", u"a", u"", u"", {2, 2}, {0, 0}},
  };
  for (const auto& row : cases) {
    SCOPED_TRACE(test::shown(row.text));
    const auto box = std::make_shared<Box>();
    box->put_content(platform::Scope::document, starred(row.text));
    box->put_selection(row.before);
    const Search search(wanted(std::u16string(row.find), false, false, false));
    box->replace_each(search.all(box->document(), 100), row.put);
    EXPECT_TRUE(box->document().check());
    EXPECT_EQ(test::shown(starred(box->document())), test::shown(row.result));
    EXPECT_EQ(box->selected(), row.after);
    box->undo();
    EXPECT_EQ(test::shown(starred(box->document())), test::shown(row.text));
    EXPECT_EQ(box->selected(), row.before);
    EXPECT_FALSE(box->can_undo());
    box->redo();
    EXPECT_EQ(test::shown(starred(box->document())), test::shown(row.result));
    EXPECT_EQ(box->selected(), row.after);
  }
}

}  // namespace
}  // namespace qel::box
