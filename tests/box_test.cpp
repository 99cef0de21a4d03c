// What hosts can do to a box while it tells them something.

#include "qel/box/Box.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>

#include "qel/box/Drop.h"
#include "qel/box/Keyboard.h"
#include "qel/headless/Shared.h"
#include "qel/platform/Keys.h"

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
  constexpr int insertions = 200'000;
  for (int i = 0; i < insertions; ++i) box->put_SelText(u"x");
  for (int i = 0; i < insertions; ++i) box->undo();
  EXPECT_FALSE(box->can_undo());
  EXPECT_GT(box->text().size(), insertions / 4) << "what has replaced nothing takes memory, too";
  EXPECT_LT(box->text().size(), insertions - 10'000);
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

}  // namespace
}  // namespace qel::box
