// The control in a host that is not like most: what it calls, when, and what it does when called.

#include <gtest/gtest.h>
#include <windows.h>
// Need the types of the other.
#include <oleacc.h>
#include <richedit.h>

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
  Called ambients;
  /// The keys that it is offered, with their modifiers, and what it says to them.
  std::vector<std::pair<WPARAM, DWORD>> offered;
  HRESULT key_result = E_NOTIMPL;
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
        {IID_IDispatch, &ambients},
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
  STDMETHODIMP TranslateAccelerator(LPMSG message, DWORD modifiers) override {
    offered.emplace_back(message->wParam, modifiers);
    return key_result;
  }
  STDMETHODIMP OnFocus(BOOL gained) override { return tell(gained ? "gains" : "loses"); }
  STDMETHODIMP ShowPropertyFrame() override { return tell("properties"); }

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
  STDMETHODIMP EnableModeless(BOOL enable) override {
    return tell(enable != FALSE ? "enables" : "disables");
  }
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
  /// The host goes, or takes its site back, in that call of its.
  void lose_host(const char* call, bool closes);
};

TEST_F(Hosting, ComesAndGoesAsOftenAsItsHostWants) {
  const auto control = create();
  const auto place = control.as<IOleInPlaceObject>();
  EXPECT_NE(Host::do_verb(*control, OLEIVERB_SHOW), S_OK) << "there is no site";
  control->put_TextQEL(Text(L"a/b1b/b0"));
  Host host;
  for (int i = 0; i < 2; ++i) {
    host.told.clear();
    EXPECT_EQ(host.take(*control), S_OK);
    control->put_SelStart(1);
    EXPECT_EQ(place->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(place->InPlaceDeactivate(), S_OK);
    for (const char* once : {"OnInPlaceActivate", "OnUIActivate", "SetActiveObject", "clears",
                             "OnUIDeactivate", "OnInPlaceDeactivate"}) {
      EXPECT_EQ(host.count(once), 1) << once;
    }
    EXPECT_EQ(host.told.back(), "OnInPlaceDeactivate");
  }
  host.take(*control);
  Host other;
  EXPECT_EQ(other.take(*control), S_OK);
  EXPECT_EQ(host.count("OnInPlaceDeactivate"), 2) << "the first host is left for the other one";
  EXPECT_EQ(markup(*control), L"a/b1b/b0");
  LONG start = 0;
  control->get_SelStart(&start);
  EXPECT_EQ(start, 1);
  control->put_Enabled(VARIANT_FALSE);
  other.close();
  LONG width = 0;
  control->get_Width(&width);
  EXPECT_GT(width, 0) << "its window went with the host's";
  EXPECT_EQ(host.take(*control, OLEIVERB_INPLACEACTIVATE), S_OK);
  EXPECT_FALSE(IsWindowEnabled(GetWindow(host.window(), GW_CHILD)));
  Host::let_go(*control);
}

TEST_F(Hosting, AsksWhetherItIsBeingDesigned) {
  for (const VARIANT_BOOL is_run_time : {VARIANT_TRUE, VARIANT_FALSE}) {
    Host host;
    host.ambients.act = [is_run_time](DISPID property, DISPPARAMS&, VARIANT* result) {
      if (property != DISPID_AMBIENT_USERMODE) return DISP_E_MEMBERNOTFOUND;
      result->vt = VT_BOOL;
      result->boolVal = is_run_time;
      return S_OK;
    };
    const auto control = create();
    host.take(*control);
    BSTR rtf = nullptr;
    EXPECT_EQ(control->get_TextRTF(&rtf), S_OK);
    EXPECT_EQ(taken(rtf).empty(), is_run_time == VARIANT_FALSE);
    Host::let_go(*control);
  }
}

/// What a screen reader is told that a window is called.
std::wstring accessible_name(HWND window) {
  Pointer<IAccessible> object;
  AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible),
                             reinterpret_cast<void**>(object.put()));
  VARIANT self = {};
  self.vt = VT_I4;
  BSTR name = nullptr;
  if (object) object->get_accName(self, &name);
  return taken(name);
}

TEST_F(Hosting, GoesByWhatItsHostSaysOfThePlace) {
  std::map<DISPID, LONG> says = {{DISPID_AMBIENT_BACKCOLOR, RGB(32, 32, 32)},
                                 {DISPID_AMBIENT_FORECOLOR, RGB(230, 230, 230)},
                                 {DISPID_AMBIENT_UIDEAD, VARIANT_TRUE}};
  Host host;
  host.ambients.act = [&](DISPID property, DISPPARAMS&, VARIANT* result) -> HRESULT {
    if (property == DISPID_AMBIENT_DISPLAYNAME) {
      result->vt = VT_BSTR;
      result->bstrVal = SysAllocString(L"txtBody");
      return S_OK;
    }
    if (!says.contains(property)) return DISP_E_MEMBERNOTFOUND;
    result->vt = property == DISPID_AMBIENT_UIDEAD ? VT_BOOL : VT_I4;
    result->lVal = says[property];
    return S_OK;
  };
  const auto control = create();
  host.take(*control);
  const HWND box = GetFocus();
  const auto background = [&] {
    const LRESULT shown = SendMessageW(box, EM_SETBKGNDCOLOR, 0, 0);
    control.as<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_BACKCOLOR);
    return static_cast<COLORREF>(shown);
  };
  EXPECT_EQ(background(), RGB(32, 32, 32));
  for (const bool is_dead : {true, false}) {
    says[DISPID_AMBIENT_UIDEAD] = is_dead ? VARIANT_TRUE : VARIANT_FALSE;
    control.as<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_UIDEAD);
    SendMessageW(box, WM_CHAR, L'x', 0);
    EXPECT_EQ(markup(*control), is_dead ? L"" : L"x");
  }
  control->put_BackColor(RGB(255, 255, 0));
  EXPECT_EQ(background(), RGB(255, 255, 0)) << "of its own";
  control->put_BackColor(static_cast<OLE_COLOR>(0x80000005));
  says[DISPID_AMBIENT_BACKCOLOR] = static_cast<LONG>(0x8000000F);
  says[DISPID_AMBIENT_FORECOLOR] = 0;
  background();
  EXPECT_EQ(background(), GetSysColor(COLOR_WINDOW)) << "forms are grey, and boxes are not";

  EXPECT_EQ(accessible_name(box), L"txtBody");
  control->put_AccessibleName(Text(L"Body of the letter"));
  EXPECT_EQ(accessible_name(box), L"Body of the letter");

  host.act = [&](const std::string& call) {
    if (call != "disables" || host.count("properties") > 0) return;
    control.as<IOleObject>()->DoVerb(OLEIVERB_PROPERTIES, nullptr, nullptr, 0, nullptr, nullptr);
    EXPECT_EQ(host.count("enables"), 0) << "the editor is still open";
  };
  SetTimer(nullptr, 0, 20, close_editor);
  EXPECT_EQ(control->InvokeLargeEditor(), S_OK);
  EXPECT_EQ(host.count("properties"), 1);
  EXPECT_EQ(host.count("disables"), 1);
  EXPECT_EQ(host.count("enables"), 1);
  Host::let_go(*control);
}

TEST_F(Hosting, TellsOfItsEndWhereItWasNotLetIn) {
  for (const char* call : {"OnInPlaceActivate", "GetWindowContext", "OnUIActivate"}) {
    const auto control = create();
    Host host;
    host.refused = call;
    EXPECT_EQ(host.take(*control), E_FAIL) << call;
    EXPECT_EQ(host.count("SetActiveObject"), 0) << call;
    Host::let_go(*control);
    EXPECT_EQ(host.count("OnInPlaceDeactivate"), host.refused == "OnInPlaceActivate" ? 0 : 1);
  }
}

void Hosting::lose_host(const char* call, bool closes) {
  Host host;
  auto control = create();
  bool is_lost = false;
  host.act = [&](const std::string& name) {
    if (name != call || std::exchange(is_lost, true)) return;
    if (closes) return host.close();
    Host::let_go(*control);
    // Messages hold no reference to the control that they are for.
    if (name == "gains" || name == "loses") control = {};
  };
  host.take(*Pointer<IQELTextbox>(control), OLEIVERB_INPLACEACTIVATE);
  if (host.window() != nullptr) SetFocus(GetWindow(host.window(), GW_CHILD));
  if (host.window() != nullptr) SetFocus(host.window());
  if (control) control.as<IOleInPlaceObject>()->InPlaceDeactivate();
  EXPECT_TRUE(is_lost) << call;
  if (control) Host::let_go(*control);
}

TEST_F(Hosting, LosesItsHostInAnyCall) {
  for (const char* call : {"OnInPlaceActivate", "GetWindowContext", "ShowObject", "OnUIActivate",
                           "SetActiveObject", "gains", "loses", "clears", "OnUIDeactivate"}) {
    lose_host(call, true);
    lose_host(call, false);
  }
}

TEST_F(Hosting, CallsOnlySinksThatAreConnectedWhenItIsTheirTurn) {
  const auto control = create();
  Called first;
  Called second;
  int events = 0;
  const Connection connection(*control, __uuidof(QELTextboxEvents), first);
  auto later = std::make_unique<Connection>(*control, __uuidof(QELTextboxEvents), second);
  first.act = [&](DISPID, DISPPARAMS&, VARIANT*) { return later.reset(), E_FAIL; };
  second.act = [&](DISPID, DISPPARAMS&, VARIANT*) { return ++events, S_OK; };
  control->put_Text(Text(L"a"));
  EXPECT_EQ(events, 0);
  first.act = second.act;
  const auto steering = control.as<IOleControl>();
  for (const BOOL freeze : {FALSE, TRUE, FALSE}) {
    steering->FreezeEvents(freeze);
    control->put_Text(Text(L"b"));
  }
  EXPECT_EQ(events, 2) << "to thaw what is not frozen changes nothing";
}

/// How much of a square of 100 pixels is not black, from which corner to which other one.
struct Inked {
  int count = 0;
  POINT first = {100, 100};
  POINT last = {0, 0};
};
Inked inked(HDC context) {
  Inked result;
  for (LONG at = 0; at < 10000; ++at) {
    const POINT point = {at % 100, at / 100};
    if (GetPixel(context, point.x, point.y) == 0) continue;
    ++result.count;
    result.first = {std::min(result.first.x, point.x), std::min(result.first.y, point.y)};
    result.last = {std::max(result.last.x, point.x), std::max(result.last.y, point.y)};
  }
  return result;
}

TEST_F(Hosting, DrawsItselfInAnyUnits) {
  const auto control = create();
  control->put_BackColor(RGB(255, 255, 0));
  control->put_Text(Text(L"MMMM"));
  const auto view = control.as<IViewObject>();
  const auto draw = [&](HDC context, RECTL bounds) {
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, context, &bounds, nullptr,
                         nullptr, 0),
              S_OK);
  };
  const HDC context = CreateCompatibleDC(nullptr);
  const HBITMAP bitmap = CreateBitmap(100, 100, 1, 32, nullptr);
  const HGDIOBJ before = SelectObject(context, bitmap);
  SetMapMode(context, MM_ANISOTROPIC);
  for (const char* const how : {"pixels", "tenths", "upwards", "metafile"}) {
    const bool is_tenths = how[0] == 't';
    SetWindowExtEx(context, is_tenths ? 1000 : 100, is_tenths ? 1000 : 100, nullptr);
    SetViewportExtEx(context, 100, how[0] == 'u' ? -100 : 100, nullptr);
    if (is_tenths) draw(context, {100, 200, 600, 500});
    if (how[0] == 'p') draw(context, {10, 20, 60, 50});
    if (how[0] == 'u') draw(context, {10, -20, 60, -50});
    if (how[0] == 'm') {
      const HDC recorded = CreateMetaFileW(nullptr);
      draw(recorded, {10, 20, 60, 50});
      const HMETAFILE file = CloseMetaFile(recorded);
      PlayMetaFile(context, file);
      DeleteMetaFile(file);
    }
    SetViewportExtEx(context, 100, 100, nullptr);
    SetWindowExtEx(context, 100, 100, nullptr);
    const Inked drawn = inked(context);
    EXPECT_LT(drawn.count, 50 * 30) << how << ": text is black";
    EXPECT_EQ(drawn.first.x, 10) << how;
    EXPECT_EQ(drawn.first.y, 20) << how;
    EXPECT_EQ(drawn.last.x, 59) << how;
    EXPECT_EQ(drawn.last.y, 49) << how;
    PatBlt(context, 0, 0, 100, 100, BLACKNESS);
  }
  SelectObject(context, before);
  DeleteObject(bitmap);
  DeleteDC(context);
}

/// Holds keys down for the calls of this thread.
class Held {
 public:
  explicit Held(const std::vector<int>& keys) {
    GetKeyboardState(before_);
    BYTE now[256] = {};
    for (const int key : keys) now[key] = 0x80;
    SetKeyboardState(now);
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  ~Held() { SetKeyboardState(before_); }

 private:
  BYTE before_[256] = {};
};

TEST_F(Hosting, OffersTheKeysThatItDoesNotUse) {
  const auto control = create();
  Host host;
  host.take(*control);
  const auto active = control.as<IOleInPlaceActiveObject>();
  ASSERT_TRUE(active);
  const std::vector<int> none;
  const std::vector<int> alt = {VK_MENU};
  const std::vector<int> ctrl = {VK_CONTROL};
  const std::vector<int> both = {VK_CONTROL, VK_MENU};
  const auto takes = [&](WPARAM key, const std::vector<int>& held) {
    const Held keys(held);
    MSG message = {};
    message.hwnd = GetFocus();
    message.message = held == alt ? WM_SYSKEYDOWN : WM_KEYDOWN;
    message.wParam = key;
    host.offered.clear();
    const HRESULT done = active->TranslateAccelerator(&message);
    const DWORD modifiers = (held == ctrl || held == both ? 2U : 0U) | (held == alt ? 4U : 0U);
    const bool is_offered = host.offered == std::vector{std::pair(key, modifiers)};
    EXPECT_EQ(is_offered ? host.key_result == S_OK : true, done == S_OK) << key;
    return !is_offered;
  };
  const struct {
    WPARAM key;
    const std::vector<int>& held;
    bool takes;
  } cases[] = {{VK_LEFT, none, true}, {VK_DELETE, none, true},  {VK_UP, none, true},
               {'A', none, true},     {VK_SPACE, none, true},   {VK_OEM_2, both, true},
               {'B', ctrl, true},     {'C', ctrl, true},        {VK_F3, ctrl, true},
               {VK_F3, alt, true},    {VK_BACK, alt, true},     {VK_TAB, none, false},
               {VK_F4, alt, false},   {VK_ESCAPE, none, false}, {VK_RETURN, none, false},
               {VK_F5, none, false},  {'S', ctrl, false},       {'N', alt, false}};
  for (const HRESULT result : {HRESULT{E_NOTIMPL}, HRESULT{S_OK}}) {
    host.key_result = result;
    for (const auto& each : cases) EXPECT_EQ(takes(each.key, each.held), each.takes) << each.key;
  }
  control->put_ActOnFonts(VARIANT_FALSE);
  EXPECT_FALSE(takes(VK_F3, alt)) << "as the properties are";
  control->put_Multiline(VARIANT_TRUE);
  control->SetFocus();
  EXPECT_TRUE(takes(VK_RETURN, none));
  SetFocus(host.window());
  EXPECT_EQ(control.as<IOleControl>()->OnMnemonic(nullptr), S_OK);
  EXPECT_TRUE(IsChild(GetWindow(host.window(), GW_CHILD), GetFocus()));
  Host::let_go(*control);
}

TEST_F(Hosting, TellsWhatItsHostKeepsOfIt) {
  const auto control = create();
  const auto object = control.as<IOleObject>();
  Host host;
  host.take(*control);
  control->put_Multiline(VARIANT_TRUE);
  EXPECT_EQ(host.count("OnControlInfoChanged"), 1) << "Enter is the box's now";
  AdviseSink sink;
  DWORD cookie = 0;
  EXPECT_EQ(object->Advise(&sink, &cookie), S_OK);
  EXPECT_EQ(object->Close(OLECLOSE_SAVEIFDIRTY), S_OK);
  EXPECT_EQ(sink.told, "save close ");
  EXPECT_EQ(host.count("SaveObject"), 1);
  object->Unadvise(cookie);
  Host::let_go(*control);
}

}  // namespace
}  // namespace qel::com::test
