// A window with the text box on it, and below it the markup of what is typed. The window is that of
// the system's own container for controls; the box has to be registered (regsvr32 qelcom.dll).
//
//   form [file of markup]
//   form --picture <file>     draws the window into a bitmap file and ends

#include <windows.h>
// What needs the types of the other.
#include <ole2.h>
#include <olectl.h>
#include <qelcom.h>

#include <fstream>
#include <iterator>
#include <string>

namespace {

constexpr int margin = 12;

HWND markup_line = nullptr;
IQELTextbox* box = nullptr;

void show_markup() {
  BSTR markup = nullptr;
  if (FAILED(box->get_TextQEL(&markup))) return;
  SetWindowTextW(markup_line, markup);
  SysFreeString(markup);
}

/// Hears the box's events. It is as old as the program, so nobody counts it.
class Events : public IDispatch {
 public:
  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    const bool is_known =
        id == IID_IUnknown || id == IID_IDispatch || id == __uuidof(QELTextboxEvents);
    *result = is_known ? this : nullptr;
    return is_known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    constexpr DISPID change = 1;
    if (event == change) show_markup();
    // Arguments come last first: of a key that is the mask of modifiers, then the key's code. One
    // that is set to 0 is handled. Here Ctrl+S is the host's own.
    if (event == DISPID_KEYDOWN && *arguments->rgvarg[1].piVal == 'S' &&
        *arguments->rgvarg[0].piVal == 2) {
      *arguments->rgvarg[1].piVal = 0;
      MessageBeep(MB_OK);
    }
    return S_OK;
  }
};

LRESULT CALLBACK window_procedure(HWND window, UINT message, WPARAM w, LPARAM l) {
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcW(window, message, w, l);
}

HWND create_window() {
  WNDCLASSW window_class = {};
  window_class.lpfnWndProc = window_procedure;
  window_class.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  window_class.hCursor = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
  window_class.lpszClassName = L"Form";
  RegisterClassW(&window_class);
  return CreateWindowExW(0, L"Form", L"A letter", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN,
                         CW_USEDEFAULT, CW_USEDEFAULT, 460, 260, nullptr, nullptr, nullptr,
                         nullptr);
}

template <class Function>
Function entry(HMODULE library, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

/// The box on a place of the window; null where it cannot be made.
IQELTextbox* create_box(HWND window) {
  const HMODULE atl = LoadLibraryW(L"atl.dll");
  entry<BOOL(WINAPI*)()>(atl, "AtlAxWinInit")();
  const HWND place =
      CreateWindowExW(0, L"AtlAxWin", L"QEL.QELTextbox", WS_CHILD | WS_VISIBLE | WS_TABSTOP, margin,
                      margin, 420, 130, window, nullptr, nullptr, nullptr);
  IUnknown* control = nullptr;
  IQELTextbox* result = nullptr;
  entry<HRESULT(WINAPI*)(HWND, IUnknown**)>(atl, "AtlAxGetControl")(place, &control);
  if (control == nullptr) return nullptr;
  control->QueryInterface(__uuidof(IQELTextbox), reinterpret_cast<void**>(&result));
  control->Release();
  return result;
}

void connect(IUnknown& source, IDispatch& events) {
  IConnectionPointContainer* container = nullptr;
  IConnectionPoint* point = nullptr;
  DWORD cookie = 0;
  if (FAILED(source.QueryInterface(IID_IConnectionPointContainer,
                                   reinterpret_cast<void**>(&container)))) {
    return;
  }
  if (SUCCEEDED(container->FindConnectionPoint(__uuidof(QELTextboxEvents), &point))) {
    point->Advise(&events, &cookie);
    point->Release();
  }
  container->Release();
}

std::wstring read_markup(const char* path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  std::wstring text(bytes.size(), L'\0');
  text.resize(static_cast<std::size_t>(
      MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), text.data(),
                          static_cast<int>(text.size()))));
  return text;
}

void put_markup(const std::wstring& text) {
  BSTR markup = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  box->put_TextQEL(markup);
  SysFreeString(markup);
}

/// The host's loop: the box gets its keys before anybody takes them for something else.
void run() {
  IOleInPlaceActiveObject* keys = nullptr;
  box->QueryInterface(IID_IOleInPlaceActiveObject, reinterpret_cast<void**>(&keys));
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (keys->TranslateAccelerator(&message) == S_OK) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  keys->Release();
}

void save_picture(HWND window, const char* path) {
  for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0;) {
    DispatchMessageW(&message);
  }
  UpdateWindow(window);
  RECT area = {};
  GetWindowRect(window, &area);
  const int width = area.right - area.left;
  const int height = area.bottom - area.top;
  BITMAPINFO info = {};
  info.bmiHeader = {sizeof info.bmiHeader, width, height, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
  void* pixels = nullptr;
  const HDC screen = GetDC(nullptr);
  const HDC context = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateDIBSection(context, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  const HGDIOBJ before = SelectObject(context, bitmap);
  BitBlt(context, 0, 0, width, height, screen, area.left, area.top, SRCCOPY);
  const DWORD row = (3 * static_cast<DWORD>(width) + 3) / 4 * 4;
  const DWORD size = row * static_cast<DWORD>(height);
  BITMAPFILEHEADER head = {};
  head.bfType = 0x4D42;
  head.bfOffBits = sizeof head + sizeof info.bmiHeader;
  head.bfSize = head.bfOffBits + size;
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(&head), sizeof head);
  file.write(reinterpret_cast<const char*>(&info.bmiHeader), sizeof info.bmiHeader);
  file.write(static_cast<const char*>(pixels), static_cast<std::streamsize>(size));
  SelectObject(context, before);
  DeleteObject(bitmap);
  DeleteDC(context);
  ReleaseDC(nullptr, screen);
}

}  // namespace

int main(int argc, char** argv) {
  OleInitialize(nullptr);
  const HWND window = create_window();
  box = create_box(window);
  if (box == nullptr) {
    MessageBoxW(nullptr, L"The text box is not there. Is it registered?", L"Form", MB_ICONERROR);
    return 1;
  }
  markup_line = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | SS_NOPREFIX, margin, 152,
                                420, 60, window, nullptr, nullptr, nullptr);
  SendMessageW(markup_line, WM_SETFONT, reinterpret_cast<WPARAM>(GetStockObject(DEFAULT_GUI_FONT)),
               FALSE);
  static Events events;
  connect(*box, events);
  box->put_Multiline(VARIANT_TRUE);
  box->put_FontSize(11);
  box->put_Lossless(VARIANT_TRUE);
  box->put_ShowEditorOnShiftF2(VARIANT_TRUE);
  const bool is_picture = argc == 3 && std::string(argv[1]) == "--picture";
  put_markup(argc == 2 ? read_markup(argv[1])
                       : L"Dear /b1Anna/b0,/nlthe /i1Windows/i0 box keeps /f3fonts/f0, /y3notes/y0 "
                         L"and H/s12/s0O as markup; /k1no/k0 /u1nothing/u0 is lost.");
  ShowWindow(window, SW_SHOW);
  box->SetFocus();
  if (is_picture) {
    save_picture(window, argv[2]);
    DestroyWindow(window);
  } else {
    run();
  }
  box->Release();
  OleUninitialize();
  return 0;
}
