// A window that holds the text box without anybody's library of containers: the few interfaces that
// a host of one control needs, and no registration. The manifest of the program names the assembly
// "qelcom", whose files lie beside it (see container.manifest.in).
//
//   container [text]          writes the text in bold, prints the markup, and ends

#include <windows.h>
// What needs the types of the other.
#include <ole2.h>
#include <olectl.h>
#include <qelcom.h>

#include <string>

namespace {

/// The control's place in a window. It is as old as the program, so nobody counts it.
class Place : public IOleClientSite,
              public IOleInPlaceSite,
              public IOleInPlaceFrame,
              public IOleControlSite {
 public:
  explicit Place(HWND window) : window_(window) {}

  RECT area() const {
    RECT area = {};
    GetClientRect(window_, &area);
    InflateRect(&area, -12, -12);
    return area;
  }

  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    *result = nullptr;
    if (id == IID_IUnknown || id == IID_IOleClientSite) {
      *result = static_cast<IOleClientSite*>(this);
    } else if (id == IID_IOleWindow || id == IID_IOleInPlaceSite) {
      *result = static_cast<IOleInPlaceSite*>(this);
    } else if (id == IID_IOleInPlaceUIWindow || id == IID_IOleInPlaceFrame) {
      *result = static_cast<IOleInPlaceFrame*>(this);
    } else if (id == IID_IOleControlSite) {
      *result = static_cast<IOleControlSite*>(this);
    }
    return *result == nullptr ? E_NOINTERFACE : S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  // IOleClientSite: what an embedded object asks its document.
  STDMETHODIMP SaveObject() override { return E_NOTIMPL; }
  STDMETHODIMP GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
  STDMETHODIMP GetContainer(IOleContainer** container) override {
    return *container = nullptr, E_NOINTERFACE;
  }
  STDMETHODIMP ShowObject() override { return S_OK; }
  STDMETHODIMP OnShowWindow(BOOL) override { return S_OK; }
  STDMETHODIMP RequestNewObjectLayout() override { return E_NOTIMPL; }

  // IOleInPlaceSite: where the control is.
  STDMETHODIMP GetWindow(HWND* window) override { return *window = window_, S_OK; }
  STDMETHODIMP ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP CanInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnInPlaceActivate() override { return S_OK; }
  STDMETHODIMP OnUIActivate() override { return S_OK; }
  STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                RECT* place, RECT* clip, OLEINPLACEFRAMEINFO* info) override {
    *frame = this;
    *document = nullptr;
    *place = *clip = area();
    info->fMDIApp = FALSE;
    info->hwndFrame = window_;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return S_OK;
  }
  STDMETHODIMP Scroll(SIZE) override { return E_NOTIMPL; }
  STDMETHODIMP OnUIDeactivate(BOOL) override { return S_OK; }
  STDMETHODIMP OnInPlaceDeactivate() override { return S_OK; }
  STDMETHODIMP DiscardUndoState() override { return E_NOTIMPL; }
  STDMETHODIMP DeactivateAndUndo() override { return E_NOTIMPL; }
  STDMETHODIMP OnPosRectChange(const RECT*) override { return S_OK; }

  // IOleInPlaceFrame: menus and tools that an active object shares with its frame; none here.
  STDMETHODIMP GetBorder(RECT*) override { return INPLACE_E_NOTOOLSPACE; }
  STDMETHODIMP RequestBorderSpace(const BORDERWIDTHS*) override { return INPLACE_E_NOTOOLSPACE; }
  STDMETHODIMP SetBorderSpace(const BORDERWIDTHS*) override { return S_OK; }
  STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject*, LPCOLESTR) override { return S_OK; }
  STDMETHODIMP InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) override { return E_NOTIMPL; }
  STDMETHODIMP SetMenu(HMENU, HOLEMENU, HWND) override { return S_OK; }
  STDMETHODIMP RemoveMenus(HMENU) override { return E_NOTIMPL; }
  STDMETHODIMP SetStatusText(LPCOLESTR) override { return S_OK; }
  STDMETHODIMP EnableModeless(BOOL enable) override { return EnableWindow(window_, enable), S_OK; }
  STDMETHODIMP TranslateAccelerator(MSG*, WORD) override { return S_FALSE; }

  // IOleControlSite: keys that lead out of the box, such as Tab, come here.
  STDMETHODIMP OnControlInfoChanged() override { return S_OK; }
  STDMETHODIMP LockInPlaceActive(BOOL) override { return E_NOTIMPL; }
  STDMETHODIMP GetExtendedControl(IDispatch** control) override {
    return *control = nullptr, E_NOTIMPL;
  }
  STDMETHODIMP TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG* message, DWORD) override {
    if (message->wParam != VK_ESCAPE) return S_FALSE;
    PostMessageW(window_, WM_CLOSE, 0, 0);
    return S_OK;
  }
  STDMETHODIMP OnFocus(BOOL) override { return S_OK; }
  STDMETHODIMP ShowPropertyFrame() override { return E_NOTIMPL; }

 private:
  HWND window_;
};

/// An interface of an object, with a reference that the caller has to release; null where it has
/// none.
template <class Interface>
Interface* part_of(IUnknown* object) {
  void* result = nullptr;
  object->QueryInterface(__uuidof(Interface), &result);
  return static_cast<Interface*>(result);
}

IQELTextbox* create_box(IOleClientSite* site) {
  IQELTextbox* box = nullptr;
  if (FAILED(CoCreateInstance(__uuidof(QELTextbox), nullptr, CLSCTX_INPROC_SERVER,
                              __uuidof(IQELTextbox), reinterpret_cast<void**>(&box)))) {
    return nullptr;
  }
  // The site comes first, then the properties: kept ones by Load, or the presets by InitNew.
  auto* const object = part_of<IOleObject>(box);
  object->SetClientSite(site);
  auto* const kept = part_of<IPersistStreamInit>(box);
  kept->InitNew();
  kept->Release();
  object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, site, 0, nullptr, nullptr);
  object->Release();
  return box;
}

void end_box(IQELTextbox* box) {
  auto* const object = part_of<IOleObject>(box);
  object->Close(OLECLOSE_NOSAVE);
  object->SetClientSite(nullptr);
  object->Release();
  box->Release();
}

LRESULT CALLBACK window_procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  auto* const box = reinterpret_cast<IQELTextbox*>(GetWindowLongPtrW(window, GWLP_USERDATA));
  if (box != nullptr && message == WM_SIZE) {
    auto* const object = part_of<IOleInPlaceObject>(box);
    const RECT area = Place(window).area();
    object->SetObjectRects(&area, &area);
    object->Release();
  }
  if (box != nullptr && message == WM_SETFOCUS) box->SetFocus();
  if (box != nullptr && message == WM_DESTROY) {
    SetWindowLongPtrW(window, GWLP_USERDATA, 0);
    end_box(box);
    PostQuitMessage(0);
  }
  return DefWindowProcW(window, message, w, l);
}

HWND create_window() {
  WNDCLASSW window_class = {};
  window_class.lpfnWndProc = window_procedure;
  window_class.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  window_class.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
  window_class.lpszClassName = L"Container";
  RegisterClassW(&window_class);
  return CreateWindowExW(0, L"Container", L"A letter", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                         CW_USEDEFAULT, CW_USEDEFAULT, 460, 260, nullptr, nullptr, nullptr,
                         nullptr);
}

void run(IQELTextbox* box) {
  auto* const keys = part_of<IOleInPlaceActiveObject>(box);
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (keys->TranslateAccelerator(&message) == S_OK) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  keys->Release();
}

/// Writes into the box where the caret is.
void write(IQELTextbox* box, const std::string& text) {
  const auto size = static_cast<int>(text.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
  BSTR characters = SysAllocStringLen(nullptr, static_cast<UINT>(length));
  MultiByteToWideChar(CP_ACP, 0, text.data(), size, characters, length);
  box->put_SelText(characters);
  SysFreeString(characters);
}

void print_markup(IQELTextbox* box) {
  BSTR markup = nullptr;
  if (FAILED(box->get_TextQEL(&markup))) return;
  std::string bytes(std::size_t{3} * SysStringLen(markup), '\0');
  bytes.resize(static_cast<std::size_t>(
      WideCharToMultiByte(CP_UTF8, 0, markup, static_cast<int>(SysStringLen(markup)), bytes.data(),
                          static_cast<int>(bytes.size()), nullptr, nullptr)));
  SysFreeString(markup);
  bytes += '\n';
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(), static_cast<DWORD>(bytes.size()),
            &written, nullptr);
}

}  // namespace

int main(int argc, char** argv) {
  OleInitialize(nullptr);
  const HWND window = create_window();
  static Place place(window);
  IQELTextbox* const box = create_box(&place);
  if (box == nullptr) {
    MessageBoxW(nullptr, L"Are qelcom.dll and its manifest beside this program?", L"Container",
                MB_ICONERROR);
    return 1;
  }
  SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(box));
  box->put_Lossless(VARIANT_TRUE);
  box->put_Multiline(VARIANT_TRUE);
  ShowWindow(window, SW_SHOW);
  box->SetFocus();
  if (argc == 2) {
    box->put_SelBold(VARIANT_TRUE);
    write(box, argv[1]);
    print_markup(box);
    DestroyWindow(window);
  } else {
    run(box);
  }
  OleUninitialize();
  return 0;
}
