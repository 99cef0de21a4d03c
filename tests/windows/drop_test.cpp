// Dropping on a box.

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
#include "qel/box/Box.h"
#include "windows/DataObject.h"
#include "windows/DropTarget.h"

namespace qel::windows {
namespace {

using namespace platform;
using test::ForeignObject;
using test::others_of;

Pointer<DataObject> dragged(DragData data) {
  return Pointer<DataObject>::adopted(new DataObject(std::move(data)));
}

void put_drop_mode(RichEdit& box, std::int32_t mode) {
  BoxAppearance appearance = box.appearance();
  appearance.drop_mode = mode;
  box.put_appearance(appearance);
}

/// A window with a target of drops on a box.
class Dropping : public testing::Test, public BoxListener {
 protected:
  Dropping()
      : window(CreateWindowExW(WS_EX_TOPMOST, L"STATIC", L"", WS_POPUP | WS_VISIBLE | SS_NOTIFY,
                               100, 50, 200, 100, nullptr, nullptr, nullptr, nullptr)),
        target(std::make_unique<DropTarget>(
            window, *box, [](POINT at) { return static_cast<std::size_t>(at.x / 10); },
            [this](std::optional<POINT> at) { landings += at ? "|" : "-"; })) {
    put_drop_mode(*box, 2);
    box->listen(this);
  }
  ~Dropping() override {
    target.reset();
    DestroyWindow(window);
  }

  void on_drag_over(DragData& data, std::int32_t& effect, std::int16_t button, std::int16_t shift,
                    float x, float y, std::int16_t state) override {
    note("over" + std::to_string(state) + ":" + std::to_string(effect));
    last = &data;
    where = {button, shift, static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)};
    if (when_told) when_told();
  }
  void on_drag_drop(DragData& /*data*/, std::int32_t& effect, std::int16_t button, std::int16_t,
                    float, float) override {
    note("drop" + std::to_string(button) + ":" + std::to_string(effect));
    if (when_told) when_told();
  }
  void note(const std::string& what) { told.append(told.empty() ? "" : " ").append(what); }

  /// Enters, moves and drops with that mask of keys; returns the resulting effect.
  DWORD drag_and_drop(IDataObject& data, DWORD keys = MK_LBUTTON,
                      DWORD allowed = DROPEFFECT_COPY | DROPEFFECT_MOVE | DROPEFFECT_LINK) {
    IDropTarget& drop = target->target();
    DWORD effect = allowed;
    drop.DragEnter(&data, keys, {110, 55}, &effect);
    effect = allowed;
    drop.DragOver(keys, {130, 65}, &effect);
    if (effect == DROPEFFECT_NONE) {
      drop.DragLeave();
      return effect;
    }
    effect = allowed;
    drop.Drop(&data, keys & ~static_cast<DWORD>(MK_LBUTTON), {130, 65}, &effect);
    return effect;
  }

  std::shared_ptr<box::Box> box = std::make_shared<box::Box>();
  HWND window;
  std::unique_ptr<DropTarget> target;
  std::string told;
  std::string landings;  // shown, or not
  std::function<void()> when_told;
  const DragData* last = nullptr;
  std::vector<std::int16_t> where;
};

TEST_F(Dropping, TellsTheBoxWhatTheSystemSays) {
  struct Row {
    UINT format;
    DWORD keys;
    DWORD allowed;
    DWORD expected;
    const char* told;
  };
  constexpr DWORD left = MK_LBUTTON;
  constexpr DWORD both = DROPEFFECT_COPY | DROPEFFECT_MOVE;
  for (const Row& row : {Row{CF_TEXT, left, both | DROPEFFECT_LINK, 2, "over0:2 over2:2 drop1:2"},
                         Row{CF_TEXT, left | MK_CONTROL, both, 1, "over0:1 over2:1 drop1:1"},
                         Row{CF_TEXT, left, DROPEFFECT_COPY, 1, "over0:1 over2:1 drop1:1"},
                         Row{CF_TEXT, left, DROPEFFECT_LINK, 0, "over0:0 over2:0 over1:0"},
                         Row{CF_HDROP, left, both, 0, "over0:0 over2:0 over1:0"},
                         Row{CF_TEXT, MK_RBUTTON | MK_MBUTTON | MK_SHIFT | MK_ALT, both, 2,
                             "over0:2 over2:2 drop6:2"}}) {
    const auto foreign = ForeignObject::create({{row.format, "dropped"}});
    box->put_Text(u"text");
    told.clear();
    landings.clear();
    SetFocus(nullptr);
    EXPECT_EQ(drag_and_drop(*foreign, row.keys, row.allowed), row.expected) << row.told;
    EXPECT_EQ(told, row.told);
    EXPECT_EQ(landings, row.expected == 0 ? "---" : "||-") << row.told;
    EXPECT_EQ(GetFocus(), row.expected == 0 ? nullptr : window) << row.told;
    EXPECT_EQ(box->get_Text(), row.expected == 0 ? u"text" : u"texdroppedt") << row.told;
    EXPECT_EQ(others_of(foreign), 0U) << "let go of afterwards";
  }
  EXPECT_EQ(where, (std::vector<std::int16_t>{6, 5, 30, 15}));
  put_drop_mode(*box, 0);
  told.clear();
  EXPECT_EQ(drag_and_drop(*ForeignObject::create({{CF_TEXT, "x"}})), 0U);
  EXPECT_EQ(told, "");
}

TEST_F(Dropping, GivesOwnDataAsItIs) {
  DragData promises;
  promises.promise(text_format);
  int asked = 0;
  promises.put_supply([&](DragData& data, std::int16_t format) {
    ++asked;
    data.put(format, u"\xD800 a lone half");
  });
  const auto own = dragged(promises);
  EXPECT_EQ(drag_and_drop(*own), DWORD{DROPEFFECT_MOVE});
  EXPECT_EQ(last, &own->data());
  EXPECT_EQ(box->get_Text(), u"\xD800 a lone half");
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(others_of(own), 0U);
  own->data().clear();
  own->data().promise(text_format);
  own->end_supply();
  EXPECT_EQ(drag_and_drop(*own), 0U) << "there was no text in it after all";
}

TEST_F(Dropping, OutlivesWhatItsListenerDoes) {
  const auto foreign = ForeignObject::create({{CF_TEXT, "x"}});
  when_told = [] { throw std::runtime_error("a host's"); };
  EXPECT_EQ(drag_and_drop(*foreign), 0U);
  const std::vector<std::function<void()>> ends = {[this] { target.reset(); },
                                                   [this] { box.reset(); }};
  for (const auto& end : ends) {
    if (!target)
      target = std::make_unique<DropTarget>(
          window, *box, [](POINT) { return 0U; }, [](std::optional<POINT>) {});
    when_told = end;
    IDropTarget& drop = target->target();
    drop.AddRef();
    DWORD effect = DROPEFFECT_COPY;
    EXPECT_EQ(drop.DragEnter(foreign.get(), MK_LBUTTON, {110, 55}, &effect), S_OK);
    EXPECT_EQ(drop.Drop(foreign.get(), 0, {110, 55}, &effect), S_OK);
    EXPECT_EQ(effect, DWORD{DROPEFFECT_NONE});
    EXPECT_EQ(drop.Release(), target ? 2U : 0U) << "the system holds on to a target";
    EXPECT_EQ(others_of(foreign), 0U);
  }
}

}  // namespace
}  // namespace qel::windows
