// Dropping on a box, and dragging with the mouse.

#include <gtest/gtest.h>
#include <ole2.h>
#include <windows.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "ForeignObject.h"
#include "windows/DataObject.h"
#include "windows/DragSource.h"
#include "windows/DropTarget.h"
#include "windows/RichEdit.h"
#include "windows/WindowsPlatform.h"

namespace qel::windows {
namespace {

using namespace platform;
using test::ForeignObject;
using test::others_of;

Pointer<DataObject> data_object(DragData data) {
  return Pointer<DataObject>::adopted(new DataObject(std::move(data)));
}

/// A box on which things are dropped, and its listener.
class Box : public DropClient, public BoxListener {
 public:
  BoxListener& drop_listener() override { return *this; }
  const BoxAppearance& drop_appearance() const override { return appearance; }
  bool take_drop(DragData& data, POINT at, std::int32_t effect) override {
    note("take" + std::to_string(effect) + "@" + std::to_string(at.x));
    taken = data.get(text_format);
    return taken.has_value();
  }
  void show_drop_place(POINT /*at*/) override { shows_place = true; }
  void hide_drop_place() override { shows_place = false; }

  void on_drag_over(DragData& data, std::int32_t& effect, std::int16_t button, std::int16_t shift,
                    float x, float y, std::int16_t state) override {
    note("over" + std::to_string(state) + ":" + std::to_string(effect));
    last = &data;
    where = {button, shift, static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)};
    if (wanted >= 0) effect = wanted;
    if (when_told) when_told();
  }
  void on_drag_drop(DragData& /*data*/, std::int32_t& effect, std::int16_t button, std::int16_t,
                    float, float) override {
    note("drop" + std::to_string(button) + ":" + std::to_string(effect));
    if (when_told) when_told();
  }

  std::string told;
  BoxAppearance appearance;
  std::int32_t wanted = -1;
  std::function<void()> when_told;
  std::optional<std::u16string> taken;
  const DragData* last = nullptr;
  std::vector<std::int16_t> where;
  bool shows_place = false;

 private:
  void note(const std::string& what) { told.append(told.empty() ? "" : " ").append(what); }
};

class Dropping : public testing::Test {
 protected:
  Dropping()
      : window(CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE | SS_NOTIFY,
                               100, 50, 200, 100, nullptr, nullptr, nullptr, nullptr)),
        target(std::make_unique<DropTarget>(window, box)) {}
  ~Dropping() override {
    target.reset();
    DestroyWindow(window);
  }

  /// Enters, moves and drops with that mask of keys; what became of it.
  DWORD drag_and_drop(IDataObject& data, DWORD keys = MK_LBUTTON,
                      DWORD allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK) {
    IDropTarget& drop = target->target();
    const POINTL at = {110, 55};
    DWORD effect = allowed;
    drop.DragEnter(&data, keys, at, &effect);
    effect = allowed;
    drop.DragOver(keys, {130, 65}, &effect);
    shown = box.shows_place;
    if (effect == DROPEFFECT_NONE) {
      drop.DragLeave();
      return effect;
    }
    effect = allowed;
    drop.Drop(&data, keys & ~static_cast<DWORD>(MK_LBUTTON), {130, 65}, &effect);
    return effect;
  }

  HWND window;
  Box box;
  std::unique_ptr<DropTarget> target;
  bool shown = false;
};

TEST_F(Dropping, GoesByTheModeOfTheBoxAndItsListener) {
  struct Row {
    std::int32_t mode;
    std::int32_t wanted;
    DWORD keys;
    DWORD allowed;
    DWORD expected;
    const char* told;
  };
  constexpr DWORD left = MK_LBUTTON;
  constexpr DWORD both = DROPEFFECT_COPY | DROPEFFECT_MOVE;
  for (const Row& row :
       {Row{0, copy_drop, left, both, 0, ""}, Row{1, -1, left, both, 0, "over0:0 over2:0 over1:0"},
        Row{1, copy_drop, left, both, 1, "over0:0 over2:0 drop1:1"},
        Row{1, move_drop, left, DROPEFFECT_COPY, 0, "over0:0 over2:0 over1:0"},
        Row{1, copy_drop | move_drop, left, both, 1, "over0:0 over2:0 drop1:1"},
        Row{2, -1, left, both | DROPEFFECT_LINK, 2, "over0:2 over2:2 drop1:2 take2@30"},
        Row{2, -1, left | MK_CONTROL, both, 1, "over0:1 over2:1 drop1:1 take1@30"},
        Row{2, -1, left, DROPEFFECT_COPY, 1, "over0:1 over2:1 drop1:1 take1@30"},
        Row{2, -1, left, DROPEFFECT_LINK, 0, "over0:0 over2:0 over1:0"},
        Row{2, no_drop, left, both, 0, "over0:2 over2:2 over1:0"}}) {
    const auto foreign = ForeignObject::create({{CF_TEXT, "dropped"}});
    box.appearance.drop_mode = row.mode;
    box.wanted = row.wanted;
    box.told.clear();
    EXPECT_EQ(drag_and_drop(*foreign, row.keys, row.allowed), row.expected) << row.told;
    EXPECT_EQ(box.told, row.told);
    EXPECT_EQ(shown, row.mode == 2 && row.expected != 0) << row.told;
    EXPECT_FALSE(box.shows_place);
    EXPECT_EQ(others_of(foreign), 0U) << "let go of afterwards";
  }
  EXPECT_EQ(box.taken, u"dropped");
}

TEST_F(Dropping, TellsWhereAndOfWhat) {
  box.appearance.drop_mode = 2;
  const auto foreign = ForeignObject::create({{CF_TEXT, "x"}});
  drag_and_drop(*foreign, MK_RBUTTON | MK_MBUTTON | MK_SHIFT | MK_ALT);
  EXPECT_EQ(box.where, (std::vector<std::int16_t>{6, 5, 30, 15}));
  box.told.clear();
  EXPECT_EQ(drag_and_drop(*ForeignObject::create({{CF_HDROP, "x"}})), 0U);
  EXPECT_EQ(box.told, "over0:0 over2:0 over1:0");
  box.appearance.read_only = true;
  EXPECT_EQ(drag_and_drop(*foreign), 0U);
  box.appearance.read_only = false;
  box.appearance.enabled = false;
  box.told.clear();
  EXPECT_EQ(drag_and_drop(*foreign), 0U);
  EXPECT_EQ(box.told, "");
}

TEST_F(Dropping, GivesOwnDataAsItIs) {
  box.appearance.drop_mode = 2;
  DragData promises;
  promises.promise(text_format);
  int asked = 0;
  promises.put_supply([&](DragData& data, std::int16_t format) {
    ++asked;
    data.put(format, u"\xD800 a lone half");
  });
  const auto own = data_object(promises);
  EXPECT_EQ(drag_and_drop(*own), DWORD{DROPEFFECT_MOVE});
  EXPECT_EQ(box.last, &own->data());
  EXPECT_EQ(box.taken, u"\xD800 a lone half");
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(others_of(own), 0U);
  own->data().clear();
  own->data().promise(text_format);
  own->end_supply();
  EXPECT_EQ(drag_and_drop(*own), 0U) << "there was no text in it after all";
}

TEST_F(Dropping, OutlivesWhatItsListenerDoes) {
  box.appearance.drop_mode = 2;
  const auto foreign = ForeignObject::create({{CF_TEXT, "x"}});
  box.when_told = [] { throw std::runtime_error("a host's"); };
  EXPECT_EQ(drag_and_drop(*foreign), 0U);
  box.when_told = [this] { target.reset(); };
  IDropTarget& drop = target->target();
  drop.AddRef();
  DWORD effect = DROPEFFECT_COPY;
  EXPECT_EQ(drop.DragEnter(foreign.get(), MK_LBUTTON, {110, 55}, &effect), S_OK);
  EXPECT_EQ(drop.Drop(foreign.get(), 0, {110, 55}, &effect), S_OK);
  EXPECT_EQ(effect, DWORD{DROPEFFECT_NONE});
  EXPECT_EQ(drop.Release(), 0U);
  EXPECT_FALSE(box.taken.has_value());
  EXPECT_EQ(others_of(foreign), 0U);
}

// Dragging.

void mouse(DWORD flags) {
  INPUT input = {};
  input.type = INPUT_MOUSE;
  input.mi.dwFlags = flags;
  SendInput(1, &input, sizeof input);
}

int drop_x = 130;  // on the screen

/// Moves the mouse there, and lets go of it the next time.
void CALLBACK let_go(HWND /*window*/, UINT /*message*/, UINT_PTR timer, DWORD /*time*/) {
  POINT at = {};
  GetCursorPos(&at);
  if (at.x != drop_x) {
    SetCursorPos(drop_x, 65);
    mouse(MOUSEEVENTF_MOVE);
    return;
  }
  KillTimer(nullptr, timer);
  mouse(MOUSEEVENTF_LEFTUP);
}

void handle_messages() {
  MSG message = {};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) DispatchMessageW(&message);
}

void press_button() {
  mouse(MOUSEEVENTF_LEFTDOWN);
  handle_messages();
  SetTimer(nullptr, 0, 20, let_go);
}

TEST_F(Dropping, TakesWhatAMouseDrags) {
  box.appearance.drop_mode = 2;
  DragData data;
  data.put(text_format, u"dragged");
  std::string feedback;
  const auto tell = [&](std::int32_t& effect, bool& default_cursors) {
    feedback.append(std::to_string(effect));
    default_cursors = false;
  };
  drop_x = 130;
  SetCursorPos(110, 55);
  press_button();
  EXPECT_EQ(drag(data, copy_drop | move_drop, tell), move_drop);
  EXPECT_EQ(box.taken, u"dragged");
  EXPECT_NE(feedback.find('2'), std::string::npos) << feedback;
  EXPECT_EQ(drag(data, no_drop, tell), no_drop);

  box.wanted = no_drop;
  press_button();
  EXPECT_EQ(drag(data, copy_drop | move_drop, tell), no_drop);
}

/// Two boxes beside each other, with a mouse that drags between them.
class DraggingBoxes : public testing::Test {
 protected:
  DraggingBoxes() : one(place(0)), other(place(150)) {
    one->put_TextRTF(u"{\\rtf1 a {\\b bold} z}");
    one->select({2, 5});
    one->listen(&listener);
  }
  ~DraggingBoxes() override {
    one.reset();
    other.reset();
    DestroyWindow(form);
  }

  std::unique_ptr<RichEdit> place(std::int32_t left) const {
    auto box = std::make_unique<RichEdit>(form, WindowsPlatform::shared()->clipboard());
    BoxAppearance appearance = box->appearance();
    appearance.left = left;
    appearance.width = 150;
    appearance.height = 100;
    appearance.drag_mode = 1;
    appearance.drop_mode = 2;
    box->put_appearance(appearance);
    return box;
  }

  /// Drags what is selected in the first box, and lets it go at that place of the form.
  void drag_to(int x) {
    const POINT from = one->point_of(4);
    SetCursorPos(100 + from.x, 50 + from.y + 4);
    handle_messages();
    listener.became = -1;
    drop_x = 100 + x;
    press_button();
    const ULONGLONG deadline = GetTickCount64() + 5000;
    while (listener.became < 0 && GetTickCount64() < deadline) handle_messages();
  }

  class Listener : public BoxListener {
   public:
    void on_start_drag(DragData&, std::int32_t& allowed) override { allowed &= allows; }
    void on_complete_drag(std::int32_t& effect) override { became = effect; }
    void on_change() override { ++changes; }

    std::int32_t allows = copy_drop | move_drop;
    std::int32_t became = -1;
    int changes = 0;
  };

  HWND form = CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE | SS_NOTIFY, 100,
                              50, 300, 100, nullptr, nullptr, nullptr, nullptr);
  Listener listener;
  std::unique_ptr<RichEdit> one;
  std::unique_ptr<RichEdit> other;
};

TEST_F(DraggingBoxes, MoveTextWithItsFormat) {
  drag_to(280);
  EXPECT_EQ(listener.became, move_drop);
  EXPECT_EQ(one->get_Text(), u"a z");
  EXPECT_EQ(listener.changes, 1);
  EXPECT_EQ(other->get_Text(), u"bold ");
  EXPECT_EQ(other->get_SelText(), u"bold ");
  other->select({0, 4});
  EXPECT_EQ(other->get_SelBold(), true);
}

TEST_F(DraggingBoxes, CopyWhereNothingElseIsAllowed) {
  listener.allows = copy_drop;
  drag_to(280);
  EXPECT_EQ(listener.became, copy_drop);
  EXPECT_EQ(one->get_Text(), u"a bold z");
  EXPECT_EQ(other->get_Text(), u"bold ");
  listener.allows = no_drop;
  listener.became = -1;
  one->start_drag();
  EXPECT_EQ(listener.became, -1) << "no drag began";
}

TEST_F(DraggingBoxes, MoveTextWithinTheBox) {
  drag_to(145);
  EXPECT_EQ(listener.became, move_drop);
  EXPECT_EQ(one->get_Text(), u"a zbold ");
  EXPECT_EQ(one->get_SelText(), u"bold ");
  EXPECT_EQ(listener.changes, 1);
  listener.changes = 0;
  BoxAppearance refuses = other->appearance();
  refuses.drop_mode = 0;
  other->put_appearance(refuses);
  drag_to(280);
  EXPECT_EQ(listener.became, no_drop);
  EXPECT_EQ(listener.changes, 0);
}

}  // namespace
}  // namespace qel::windows
