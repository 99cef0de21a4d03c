#pragma once

#include <ole2.h>
#include <olectl.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <vector>

#include "windows/Pointer.h"

namespace qel::com::test {

/// A string of automation for the time of a call.
class Text {
 public:
  explicit Text(const wchar_t* text) : text_(SysAllocString(text)) {}
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  ~Text() { SysFreeString(text_); }
  operator BSTR() const { return text_; }  // NOLINT(google-explicit-constructor)

 private:
  BSTR text_;
};

/// How far the system's tables of handles are filled: those of drawing, of windows, and of
/// everything else. Wine counts no handles, but uses free places before new ones: as many as may be
/// free are taken to see how far the last one lies.
inline std::array<int, 3> filled_handles() {
  const auto last_of = [](auto create, auto destroy) {
    std::vector<decltype(create())> handles(500);
    std::generate(handles.begin(), handles.end(), create);
    int last = 0;
    for (const auto handle : handles) {
      last = std::max<int>(last, LOWORD(handle));
      destroy(handle);
    }
    return last;
  };
  int windows = 0;
  HWND window = nullptr;
  while ((window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr) ++windows;
  return {last_of([] { return CreateSolidBrush(RGB(1, 2, 3)); }, DeleteObject), windows,
          last_of([] { return CreateEventW(nullptr, FALSE, FALSE, nullptr); }, CloseHandle)};
}

/// Whether more handles are held than before, by more than the system itself may hold.
inline bool leaves_handles(const std::array<int, 3>& before) {
  constexpr int few = 100;
  const std::array<int, 3> now = filled_handles();
  return now[0] > before[0] + few || now[1] > before[1] + few || now[2] > before[2] + few;
}

/// What a call left in its argument; releases it.
inline std::wstring taken(BSTR text) {
  std::wstring result(text, SysStringLen(text));
  SysFreeString(text);
  return result;
}

/// What the failure of a member left for its caller.
struct Report {
  std::wstring source;
  std::wstring description;
  GUID interface_id = {};
};

inline Report last_report() {
  Pointer<IErrorInfo> info;
  BSTR source = nullptr;
  BSTR description = nullptr;
  Report report;
  if (GetErrorInfo(0, info.put()) == S_OK) {
    info->GetSource(&source);
    info->GetDescription(&description);
    info->GetGUID(&report.interface_id);
    report.source = taken(source);
    report.description = taken(description);
  }
  return report;
}

/// The component, loaded as a host's own library, without any registration.
class Component {
 public:
  Component() : module_(LoadLibraryW(path().c_str())) {
    if (module_ == nullptr) throw std::runtime_error("the component does not load");
  }
  Component(const Component&) = delete;
  Component& operator=(const Component&) = delete;
  ~Component() { FreeLibrary(module_); }

  /// It lies beside the test.
  static std::wstring path() {
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
    return path.substr(0, path.rfind(L'\\') + 1) + L"qelcom.dll";
  }
  static bool is_loaded() { return GetModuleHandleW(L"qelcom.dll") != nullptr; }

  /// Calls one of its entry points.
  template <class... Arguments>
  HRESULT call(const char* entry, Arguments... arguments) const {
    using Entry = HRESULT(STDAPICALLTYPE*)(Arguments...);
    const auto address = reinterpret_cast<void*>(GetProcAddress(module_, entry));
    return reinterpret_cast<Entry>(address)(arguments...);
  }
  HRESULT class_object(const CLSID& id, const IID& interface_id, void** result) const {
    return call<const CLSID&, const IID&, void**>("DllGetClassObject", id, interface_id, result);
  }
  bool is_idle() const { return call("DllCanUnloadNow") == S_OK; }

  /// A new object; nothing where there is no such class or interface.
  template <class Interface>
  Pointer<Interface> create(const CLSID& id) const {
    Pointer<IClassFactory> factory;
    Pointer<Interface> object;
    if (SUCCEEDED(class_object(id, IID_IClassFactory, reinterpret_cast<void**>(factory.put())))) {
      factory->CreateInstance(nullptr, __uuidof(Interface), reinterpret_cast<void**>(object.put()));
    }
    return object;
  }

  Pointer<ITypeLib> type_library() const {
    Pointer<ITypeLib> library;
    LoadTypeLibEx(path().c_str(), REGKIND_NONE, library.put());
    return library;
  }

 private:
  HMODULE module_;
};

/// Calls `visit(info, attributes)` for each description in a type library.
template <class Visit>
void each_type(ITypeLib& library, Visit visit) {
  for (UINT i = 0; i < library.GetTypeInfoCount(); ++i) {
    Pointer<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    library.GetTypeInfo(i, info.put());
    info->GetTypeAttr(&attributes);
    visit(*info, *attributes);
    info->ReleaseTypeAttr(attributes);
  }
}

inline std::wstring name_of(ITypeInfo& info, MEMBERID member = MEMBERID_NIL) {
  BSTR name = nullptr;
  info.GetDocumentation(member, &name, nullptr, nullptr, nullptr);
  return taken(name);
}

/// Calls `visit(id, name)` for each class that a host can create and that has no place on forms.
template <class Visit>
void each_class(ITypeLib& library, Visit visit) {
  each_type(library, [&](ITypeInfo& info, const TYPEATTR& attributes) {
    constexpr WORD kinds = TYPEFLAG_FCANCREATE | TYPEFLAG_FCONTROL | TYPEFLAG_FHIDDEN;
    if (attributes.typekind == TKIND_COCLASS &&
        (attributes.wTypeFlags & kinds) == TYPEFLAG_FCANCREATE) {
      visit(attributes.guid, name_of(info));
    }
  });
}

}  // namespace qel::com::test
