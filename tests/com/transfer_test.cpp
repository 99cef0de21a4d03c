// What is dragged from one window to another.

#include <gtest/gtest.h>
#include <ole2.h>
#include <windows.h>

#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "com/platform/DataObject.h"
#include "com/platform/DragSource.h"
#include "com/platform/DropTarget.h"
#include "com/platform/GlobalMemory.h"

namespace qel::windows {
namespace {

using namespace platform;
using namespace std::string_literals;
using namespace std::string_view_literals;

FORMATETC in_memory(UINT format) {
  return {static_cast<CLIPFORMAT>(format), nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

std::string bytes_of(HGLOBAL block) {
  std::string bytes(static_cast<const char*>(GlobalLock(block)), GlobalSize(block));
  GlobalUnlock(block);
  return bytes;
}

/// What the object gives in that form; the failure's code where it gives nothing.
std::string bytes_of(IDataObject& object, UINT format) {
  FORMATETC form = in_memory(format);
  STGMEDIUM medium = {};
  const HRESULT result = object.GetData(&form, &medium);
  if (FAILED(result)) return result == DV_E_FORMATETC ? "none" : "failed";
  std::string bytes = bytes_of(medium.hGlobal);
  ReleaseStgMedium(&medium);
  return bytes;
}

ComPtr<DataObject> data_object(DragData data) {
  return ComPtr<DataObject>::adopt(new DataObject(std::move(data)));
}

/// Data of another program, or what the system puts in another's place.
class ForeignObject : public ComObject<IDataObject> {
 public:
  explicit ForeignObject(std::map<UINT, std::string> forms, IDataObject* behind = nullptr)
      : forms_(std::move(forms)), behind_(ComPtr<IDataObject>::share(behind)) {}

  static ComPtr<ForeignObject> create(std::map<UINT, std::string> forms,
                                      IDataObject* behind = nullptr) {
    return ComPtr<ForeignObject>::adopt(new ForeignObject(std::move(forms), behind));
  }

  HRESULT STDMETHODCALLTYPE GetData(FORMATETC* form, STGMEDIUM* medium) noexcept override {
    if (behind_) return behind_->GetData(form, medium);
    const auto found = forms_.find(form->cfFormat);
    if (found == forms_.end()) return DV_E_FORMATETC;
    ++reads;
    *medium = {};
    medium->tymed = TYMED_HGLOBAL;
    medium->hGlobal = GlobalAlloc(GMEM_MOVEABLE, found->second.size());
    std::memcpy(GlobalLock(medium->hGlobal), found->second.data(), found->second.size());
    GlobalUnlock(medium->hGlobal);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* form) noexcept override {
    if (behind_) return behind_->QueryGetData(form);
    return forms_.contains(form->cfFormat) ? S_OK : DV_E_FORMATETC;
  }
  HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) noexcept override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) noexcept override { return E_NOTIMPL; }

  int reads = 0;

 private:
  std::map<UINT, std::string> forms_;
  ComPtr<IDataObject> behind_;
};

/// How many hold the object besides the one who asks.
template <class Object>
ULONG others_of(const ComPtr<Object>& object) {
  object->AddRef();
  return object->Release() - 1;
}

TEST(DataObject, OffersTextAndRTF) {
  DragData data;
  data.put(text_format, u"a\u4E2D");
  data.put(rtf_format, u"{\\rtf1 \u00E4}");
  const auto object = data_object(data);
  const UINT rtf = rtf_clipboard_format();
  EXPECT_EQ(bytes_of(*object, CF_UNICODETEXT).substr(0, 6), "a\0\x2D\x4E\0\0"sv);
  EXPECT_EQ(bytes_of(*object, CF_TEXT).substr(0, 3), "a?\0"sv);
  EXPECT_STREQ(bytes_of(*object, rtf).c_str(), "{\\rtf1 \\'e4}");
  EXPECT_EQ(bytes_of(*object, CF_BITMAP), "none");

  struct Row {
    FORMATETC form;
    HRESULT expected;
  };
  FORMATETC icon = in_memory(CF_TEXT);
  icon.dwAspect = DVASPECT_ICON;
  FORMATETC file = in_memory(CF_TEXT);
  file.tymed = TYMED_FILE;
  FORMATETC any = in_memory(CF_TEXT);
  any.tymed = TYMED_FILE | TYMED_HGLOBAL;
  for (Row row : {Row{in_memory(rtf), S_OK}, Row{any, S_OK}, Row{file, DV_E_TYMED},
                  Row{icon, DV_E_TYMED}, Row{in_memory(CF_HDROP), DV_E_FORMATETC}}) {
    EXPECT_EQ(object->QueryGetData(&row.form), row.expected);
    STGMEDIUM medium = {};
    EXPECT_EQ(object->GetData(&row.form, &medium), row.expected);
    ReleaseStgMedium(&medium);
  }
  EXPECT_EQ(object->QueryGetData(nullptr), E_POINTER);
}

TEST(DataObject, ListsItsForms) {
  DragData data;
  data.promise(text_format);
  const auto object = data_object(data);
  IEnumFORMATETC* forms = nullptr;
  ASSERT_EQ(object->EnumFormatEtc(DATADIR_GET, &forms), S_OK);
  FORMATETC listed[8] = {};
  ULONG count = 0;
  forms->Next(8, listed, &count);
  forms->Release();
  ASSERT_GE(count, 2U);
  EXPECT_EQ(listed[0].cfFormat, CF_UNICODETEXT);
  EXPECT_EQ(listed[1].cfFormat, CF_TEXT);
  for (ULONG i = 0; i < count; ++i) EXPECT_EQ(object->QueryGetData(&listed[i]), S_OK);
  EXPECT_NE(object->EnumFormatEtc(DATADIR_SET, &forms), S_OK);
  EXPECT_EQ(forms, nullptr);
}

TEST(DataObject, SuppliesWhatWasPromisedWhileTheDragLasts) {
  DragData data;
  data.promise(text_format);
  data.promise(rtf_format);
  int asked = 0;
  data.put_supply([&](DragData& promised, std::int16_t format) {
    ++asked;
    if (format == rtf_format) throw std::runtime_error("a host's");
    promised.put(format, u"supplied");
  });
  const auto object = data_object(data);
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(bytes_of(*object, rtf_clipboard_format()), "failed") << "and nothing is thrown";
  EXPECT_EQ(bytes_of(*object, CF_TEXT).substr(0, 9), "supplied\0"sv);
  EXPECT_EQ(asked, 2);
  object->end_supply();
  EXPECT_EQ(bytes_of(*object, rtf_clipboard_format()), "none");
  EXPECT_EQ(bytes_of(*object, CF_TEXT).substr(0, 9), "supplied\0"sv);
  EXPECT_EQ(asked, 2);
}

TEST(DataObject, IsHeldByThoseWhoAskForIt) {
  const auto object = data_object({});
  EXPECT_EQ(others_of(object), 0U);
  void* found = nullptr;
  EXPECT_EQ(object->QueryInterface(IID_IUnknown, &found), S_OK);
  EXPECT_EQ(others_of(object), 1U);
  static_cast<IUnknown*>(found)->Release();
  EXPECT_EQ(object->QueryInterface(IID_IDropTarget, &found), E_NOINTERFACE);
  EXPECT_EQ(found, nullptr);
  EXPECT_EQ(others_of(object), 0U);
}

TEST(DataObject, IsFoundBehindWhatStandsInItsPlace) {
  const auto own = data_object({});
  EXPECT_EQ(DataObject::behind(*own), own.get());
  EXPECT_EQ(DataObject::behind(*ForeignObject::create({}, own.get())), own.get());
  FORMATETC forms[8] = {};
  ULONG count = 0;
  IEnumFORMATETC* list = nullptr;
  own->EnumFormatEtc(DATADIR_GET, &list);
  list->Next(8, forms, &count);
  list->Release();
  const UINT origin = forms[count - 1].cfFormat;
  std::string bytes = bytes_of(*own, origin);
  EXPECT_EQ(DataObject::behind(*ForeignObject::create({{origin, bytes}})), own.get());
  for (std::string other : {bytes, bytes.substr(0, 5)}) {
    other[0] = static_cast<char>(other[0] + 1);
    EXPECT_EQ(DataObject::behind(*ForeignObject::create({{origin, other}})), nullptr)
        << "of another process, or not ours at all";
  }
  EXPECT_EQ(others_of(own), 0U);
}

TEST(DataObject, ReadsOthersWhenTheyAreAskedFor) {
  const UINT rtf = rtf_clipboard_format();
  const auto foreign = ForeignObject::create(
      {{CF_TEXT, "old"}, {CF_UNICODETEXT, "n\0e\0w\0"s}, {rtf, "{\\rtf1 \xE4}"}});
  {
    DragData data = read_data_object(*foreign);
    EXPECT_EQ(others_of(foreign), 1U);
    EXPECT_TRUE(data.has(text_format) && data.has(rtf_format));
    EXPECT_EQ(foreign->reads, 0);
    EXPECT_EQ(data.get(text_format), u"new");
    EXPECT_EQ(data.get(text_format), u"new");
    EXPECT_EQ(foreign->reads, 1);
    EXPECT_EQ(data.get(rtf_format), u"{\\rtf1 \\'e4}");
  }
  EXPECT_EQ(others_of(foreign), 0U);
  DragData old = read_data_object(*ForeignObject::create({{CF_TEXT, "old"}}));
  EXPECT_EQ(old.get(text_format), u"old") << "held as long as the data";
  EXPECT_FALSE(old.has(rtf_format));
  EXPECT_FALSE(read_data_object(*ForeignObject::create({{CF_HDROP, "x"}})).is_text());
}

// Dropping.

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

void CALLBACK let_go(HWND /*window*/, UINT /*message*/, UINT_PTR timer, DWORD /*time*/) {
  KillTimer(nullptr, timer);
  SetCursorPos(130, 65);
  mouse(MOUSEEVENTF_MOVE);
  mouse(MOUSEEVENTF_LEFTUP);
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
  SetCursorPos(110, 55);
  mouse(MOUSEEVENTF_LEFTDOWN);
  SetTimer(nullptr, 0, 50, let_go);
  EXPECT_EQ(drag(data, copy_drop | move_drop, tell), move_drop);
  EXPECT_EQ(box.taken, u"dragged");
  EXPECT_NE(feedback.find('2'), std::string::npos) << feedback;
  EXPECT_EQ(drag(data, no_drop, tell), no_drop);

  box.wanted = no_drop;
  mouse(MOUSEEVENTF_LEFTDOWN);
  SetTimer(nullptr, 0, 50, let_go);
  EXPECT_EQ(drag(data, copy_drop | move_drop, tell), no_drop);
}

}  // namespace
}  // namespace qel::windows
