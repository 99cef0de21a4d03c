// The control in a host that is not like most: what it calls, when, and what it does when called.

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

#include "com/Host.h"

namespace qel::com::test {
namespace {

/// A site with a window of its own that keeps what it is told, and acts on it.
class Host : public IOleClientSite,
             public IOleInPlaceSite,
             public IOleControlSite,
             public IOleInPlaceFrame {
 public:
  Host() {
    window_ = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200,
                              nullptr, nullptr, nullptr, nullptr);
  }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;
  ~Host() { close(); }

  std::vector<std::string> told;
  std::function<void(const std::string&)> act;
  /// What it is told and does not agree to.
  std::string refused;

  HWND window() const { return window_; }
  void close() {
    if (window_ != nullptr) DestroyWindow(std::exchange(window_, nullptr));
  }
  int count(const std::string& name) const {
    return static_cast<int>(std::count(told.begin(), told.end(), name));
  }
  static HRESULT do_verb(IUnknown& control, LONG verb) {
    const auto object = Pointer<IUnknown>(&control).as<IOleObject>();
    return object->DoVerb(verb, nullptr, nullptr, 0, nullptr, nullptr);
  }
  HRESULT take(IUnknown& control, LONG verb = OLEIVERB_UIACTIVATE) {
    Pointer<IUnknown>(&control).as<IOleObject>()->SetClientSite(this);
    return do_verb(control, verb);
  }
  static void let_go(IUnknown& control) {
    Pointer<IUnknown>(&control).as<IOleObject>()->SetClientSite(nullptr);
  }

  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    const std::pair<IID, void*> parts[] = {
        {IID_IUnknown, static_cast<IOleClientSite*>(this)},
        {IID_IOleClientSite, static_cast<IOleClientSite*>(this)},
        {IID_IOleInPlaceSite, static_cast<IOleInPlaceSite*>(this)},
        {IID_IOleControlSite, static_cast<IOleControlSite*>(this)},
        {IID_IOleInPlaceFrame, static_cast<IOleInPlaceFrame*>(this)}};
    *result = nullptr;
    for (const auto& [known, part] : parts) {
      if (known == id) *result = part;
    }
    return *result == nullptr ? E_NOINTERFACE : S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  STDMETHODIMP SaveObject() override { return tell("SaveObject"); }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
  STDMETHODIMP ShowObject() override { return tell("ShowObject"); }
  STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

  STDMETHODIMP GetWindow(HWND* window) override { return *window = window_, S_OK; }
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP CanInPlaceActivate() override { return tell("CanInPlaceActivate"); }
  STDMETHODIMP OnInPlaceActivate() override { return tell("OnInPlaceActivate"); }
  STDMETHODIMP OnUIActivate() override { return tell("OnUIActivate"); }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                LPRECT place, LPRECT clip, LPOLEINPLACEFRAMEINFO) override {
    *frame = this;
    *document = nullptr;
    *place = *clip = {10, 10, 210, 60};
    return tell("GetWindowContext");
  }
  STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
  STDMETHODIMP OnUIDeactivate(BOOL) override { return tell("OnUIDeactivate"); }
  STDMETHODIMP OnInPlaceDeactivate() override { return tell("OnInPlaceDeactivate"); }
  STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
  STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
  STDMETHODIMP OnPosRectChange(LPCRECT) override { return tell("OnPosRectChange"); }

  STDMETHODIMP OnControlInfoChanged() override { return tell("OnControlInfoChanged"); }
  STDMETHODIMP LockInPlaceActive(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP GetExtendedControl(IDispatch**) override { return E_NOTIMPL; }
  STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(LPMSG, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP OnFocus(BOOL gained) override { return tell(gained ? "gains" : "loses"); }
  STDMETHODIMP ShowPropertyFrame() override { return E_NOTIMPL; }

  STDMETHODIMP GetBorder(LPRECT) override { return E_NOTIMPL; }
  STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS) override { return E_NOTIMPL; }
  STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS) override { return S_OK; }
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override {
    return tell(object == nullptr ? "clears" : "SetActiveObject");
  }
  STDMETHODIMP InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
  STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
  STDMETHODIMP RemoveMenus(HMENU) override { return E_NOTIMPL; }
  STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL) override { return S_OK; }
  STDMETHODIMP TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

 private:
  HRESULT tell(const std::string& name) {
    told.push_back(name);
    if (act) act(name);
    return name == refused ? E_FAIL : S_OK;
  }

  HWND window_ = nullptr;
};

class Hosting : public testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  void TearDown() override {
    handle_messages();
    EXPECT_TRUE(component_.is_idle()) << "an object was left behind";
  }

  Pointer<IQELTextbox> create() const {
    return component_.create<IQELTextbox>(__uuidof(::QELTextbox));
  }
  static std::wstring markup(IQELTextbox& control) {
    BSTR text = nullptr;
    control.get_TextQEL(&text);
    return taken(text);
  }

  Component component_;
};

TEST_F(Hosting, ComesAndGoesAsOftenAsItsHostWants) {
  const auto control = create();
  const auto place = control.as<IOleInPlaceObject>();
  EXPECT_NE(Host::do_verb(*control.get(), OLEIVERB_SHOW), S_OK) << "there is no site";
  control->put_TextQEL(Text(L"a/b1b/b0"));
  Host host;
  for (int i = 0; i < 2; ++i) {
    host.told.clear();
    EXPECT_EQ(host.take(*control.get()), S_OK);
    control->put_SelStart(1);
    EXPECT_EQ(place->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(place->InPlaceDeactivate(), S_OK);
    for (const char* once : {"OnInPlaceActivate", "OnUIActivate", "SetActiveObject", "clears",
                             "OnUIDeactivate", "OnInPlaceDeactivate"}) {
      EXPECT_EQ(host.count(once), 1) << once;
    }
    EXPECT_EQ(host.told.back(), "OnInPlaceDeactivate");
  }
  host.take(*control.get());
  Host other;
  EXPECT_EQ(other.take(*control.get()), S_OK);
  EXPECT_EQ(host.count("OnInPlaceDeactivate"), 2) << "the first host is left for the other one";
  EXPECT_EQ(markup(*control.get()), L"a/b1b/b0");
  LONG start = 0;
  control->get_SelStart(&start);
  EXPECT_EQ(start, 1);
  control->put_Enabled(VARIANT_FALSE);
  other.close();
  LONG width = 0;
  control->get_Width(&width);
  EXPECT_GT(width, 0) << "its window went with the host's";
  EXPECT_EQ(host.take(*control.get(), OLEIVERB_INPLACEACTIVATE), S_OK);
  EXPECT_FALSE(IsWindowEnabled(GetWindow(host.window(), GW_CHILD)));
  Host::let_go(*control.get());
}

TEST_F(Hosting, TellsOfItsEndWhereItWasNotLetIn) {
  for (const char* call : {"OnInPlaceActivate", "GetWindowContext", "OnUIActivate"}) {
    const auto control = create();
    Host host;
    host.refused = call;
    EXPECT_EQ(host.take(*control.get()), E_FAIL) << call;
    EXPECT_EQ(host.count("SetActiveObject"), 0) << call;
    Host::let_go(*control.get());
    EXPECT_EQ(host.count("OnInPlaceDeactivate"), host.refused == "OnInPlaceActivate" ? 0 : 1);
  }
}

TEST_F(Hosting, LosesItsHostInAnyCall) {
  for (const char* call : {"OnInPlaceActivate", "GetWindowContext", "ShowObject", "OnUIActivate",
                           "SetActiveObject", "gains", "loses", "clears", "OnUIDeactivate"}) {
    for (const bool closes : {true, false}) {
      Host host;
      auto control = create();
      bool is_lost = false;
      host.act = [&](const std::string& name) {
        if (name != call || std::exchange(is_lost, true)) return;
        if (closes) return host.close();
        Host::let_go(*control.get());
        // Messages hold no reference to the control that they are for.
        if (name == "gains" || name == "loses") control = {};
      };
      host.take(*Pointer<IQELTextbox>(control).get(), OLEIVERB_INPLACEACTIVATE);
      if (host.window() != nullptr) SetFocus(GetWindow(host.window(), GW_CHILD));
      if (host.window() != nullptr) SetFocus(host.window());
      if (control) control.as<IOleInPlaceObject>()->InPlaceDeactivate();
      EXPECT_TRUE(is_lost) << call;
      if (control) Host::let_go(*control.get());
    }
  }
}

}  // namespace
}  // namespace qel::com::test
