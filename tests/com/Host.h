#pragma once

#include <ole2.h>
#include <qelcom.h>
#include <windows.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "com/Component.h"

/// A host for the control: a window of the system's own container, sinks, and a user.
namespace qel::com::test {

inline void handle_messages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

/// Whatever is called by it lives as long as its owner: references are not counted.
template <class Interface>
class Uncounted : public Interface {
 public:
  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    const bool is_known = id == IID_IUnknown || id == __uuidof(Interface) || knows(id);
    *result = is_known ? this : nullptr;
    return is_known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

 protected:
  virtual bool knows(REFIID /*id*/) const { return false; }
};

/// Called by number: events, or ambient properties.
class Called : public Uncounted<IDispatch> {
 public:
  /// The arguments come last first, as they are passed.
  std::function<HRESULT(DISPID, DISPPARAMS&, VARIANT*)> act;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT* result,
                      EXCEPINFO*, UINT*) override {
    return act ? act(id, *arguments, result) : S_OK;
  }
};

class NoticeSink : public Uncounted<IPropertyNotifySink> {
 public:
  std::vector<DISPID> changed;
  bool allows = true;

  STDMETHODIMP OnChanged(DISPID property) override { return changed.push_back(property), S_OK; }
  STDMETHODIMP OnRequestEdit(DISPID) override { return allows ? S_OK : S_FALSE; }
};

/// Told of what a host keeps of the control.
class AdviseSink : public Uncounted<IAdviseSink> {
 public:
  std::string told;

  STDMETHODIMP_(void) OnDataChange(FORMATETC*, STGMEDIUM*) override { told += "data "; }
  STDMETHODIMP_(void) OnViewChange(DWORD, LONG) override { told += "view "; }
  STDMETHODIMP_(void) OnRename(IMoniker*) override { told += "name "; }
  STDMETHODIMP_(void) OnSave() override { told += "save "; }
  STDMETHODIMP_(void) OnClose() override { told += "close "; }
};

/// Keeps values under names, as text.
class Bag : public Uncounted<IPropertyBag> {
 public:
  std::map<std::wstring, std::wstring> values;

  STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog*) override {
    const auto place = values.find(name);
    if (place == values.end()) return E_INVALIDARG;
    VariantClear(value);
    value->vt = VT_BSTR;
    value->bstrVal = SysAllocString(place->second.c_str());
    return S_OK;
  }
  STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override {
    VARIANT text = {};
    VariantChangeTypeEx(&text, value, LOCALE_INVARIANT, VARIANT_ALPHABOOL, VT_BSTR);
    values[name] = taken(text.bstrVal);
    return S_OK;
  }
};

/// Connects a sink for as long as it lives.
class Connection {
 public:
  template <class Sink>
  Connection(IUnknown& source, const IID& id, Sink& sink) {
    const auto container = Pointer<IUnknown>(&source).as<IConnectionPointContainer>();
    if (container && SUCCEEDED(container->FindConnectionPoint(id, point_.put()))) {
      point_->Advise(&sink, &cookie_);
    }
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() { point_->Unadvise(cookie_); }

  bool holds() const { return cookie_ != 0; }

 private:
  Pointer<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

/// Makes a class of the component known to this process alone.
class RegisteredClass {
 public:
  RegisteredClass(const Component& component, const CLSID& id) {
    component.class_object(id, IID_IClassFactory, reinterpret_cast<void**>(factory_.put()));
    CoRegisterClassObject(id, factory_.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
  }
  RegisteredClass(const RegisteredClass&) = delete;
  RegisteredClass& operator=(const RegisteredClass&) = delete;
  ~RegisteredClass() { CoRevokeClassObject(cookie_); }

 private:
  Pointer<IClassFactory> factory_;
  DWORD cookie_ = 0;
};

/// A form with one control on it, in the system's own container.
class Form {
 public:
  explicit Form(const Component& component) : class_(component, __uuidof(::QELTextbox)) {
    static const HMODULE atl = LoadLibraryW(L"atl.dll");
    reinterpret_cast<BOOL(WINAPI*)()>(
        reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxWinInit")))();
    window_ = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN, 0, 0, 400,
                              200, frame(), nullptr, nullptr, nullptr);
    place_ = CreateWindowExW(0, L"AtlAxWin", class_text(), WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10,
                             10, 380, 160, window_, nullptr, nullptr, nullptr);
    SetForegroundWindow(frame());
    handle_messages();
    Pointer<IUnknown> object;
    reinterpret_cast<HRESULT(WINAPI*)(HWND, IUnknown**)>(
        reinterpret_cast<void*>(GetProcAddress(atl, "AtlAxGetControl")))(place_, object.put());
    control_ = object.as<IQELTextbox>();
  }
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  ~Form() {
    control_ = {};
    close();
  }

  /// Null once it was let go.
  Pointer<IQELTextbox>& control() { return control_; }
  IQELTextbox* operator->() const { return control_.get(); }
  HWND window() const { return window_; }
  void close() {
    if (window_ != nullptr) DestroyWindow(std::exchange(window_, nullptr));
    handle_messages();
  }

  /// The rich edit window that can be seen.
  HWND box() const {
    HWND found = nullptr;
    EnumChildWindows(window_, find_box, reinterpret_cast<LPARAM>(&found));
    return found;
  }
  std::wstring markup() const {
    BSTR text = nullptr;
    control_->get_TextQEL(&text);
    return taken(text);
  }
  void put_markup(const wchar_t* text) const { control_->put_TextQEL(Text(text)); }

 private:
  /// The same for all forms: to show one takes a system without window manager long.
  static HWND frame() {
    static const HWND window =
        CreateWindowExW(0, L"STATIC", L"Host", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN,
                        0, 0, 420, 240, nullptr, nullptr, nullptr, nullptr);
    return window;
  }
  static const wchar_t* class_text() {
    static wchar_t text[39];
    StringFromGUID2(__uuidof(::QELTextbox), text, 39);
    return text;
  }
  static BOOL CALLBACK find_box(HWND window, LPARAM found) {
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    const bool is_box = lstrcmpiW(name, L"RICHEDIT50W") == 0 && IsWindowVisible(window) != FALSE;
    if (is_box) *reinterpret_cast<HWND*>(found) = window;
    return is_box ? FALSE : TRUE;
  }

  RegisteredClass class_;
  HWND window_ = nullptr;
  HWND place_ = nullptr;
  Pointer<IQELTextbox> control_;
};

/// Closes the large editor as soon as it is open; a procedure for a timer.
inline int opened_editors = 0;
inline void CALLBACK close_editor(HWND, UINT, UINT_PTR timer, DWORD) {
  const HWND editor = FindWindowW(L"QELTextEditor", nullptr);
  if (editor == nullptr || IsWindowVisible(editor) == FALSE) return;
  KillTimer(nullptr, timer);
  ++opened_editors;
  SendMessageW(editor, WM_CLOSE, 0, 0);
}

/// Presses a key with modifiers held, by the system's own input.
inline void press(WORD key, const std::vector<WORD>& held = {}) {
  std::vector<INPUT> inputs;
  const auto add = [&](WORD code, DWORD flags) {
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = code;
    input.ki.dwFlags = flags;
    inputs.push_back(input);
  };
  for (const WORD code : held) add(code, 0);
  add(key, 0);
  add(key, KEYEVENTF_KEYUP);
  for (const WORD code : held) add(code, KEYEVENTF_KEYUP);
  SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
  handle_messages();
}

/// Types characters that the keyboard has.
inline void type(const std::wstring& text) {
  for (const wchar_t c : text) {
    const SHORT key = VkKeyScanW(c);
    press(LOBYTE(key), (HIBYTE(key) & 1) != 0 ? std::vector<WORD>{VK_SHIFT} : std::vector<WORD>());
  }
}

}  // namespace qel::com::test
