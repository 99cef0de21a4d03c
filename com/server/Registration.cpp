#include "com/server/Registration.h"

#include <ole2.h>
#include <olectl.h>
#include <windows.h>

#include <array>
#include <string>
#include <utility>

#include "com/automation/Errors.h"
#include "com/automation/TypeLibrary.h"
#include "com/control/Embedding.h"
#include "com/server/ClassTable.h"
#include "com/server/Module.h"
#include "windows/Pointer.h"

// Declared by the import library only.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib*, OLECHAR*, OLECHAR*);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID, WORD, WORD, LCID, SYSKIND);

namespace qel::com {
namespace {

const std::wstring product = L"QEL";
// The major number of the classes' names and of the type library.
const std::wstring version = L".1";

/// The registry failed with that code.
struct RegistryFailure {
  LSTATUS status;
};

void require(LSTATUS status) {
  if (status != ERROR_SUCCESS) throw RegistryFailure{status};
}

template <class Action>
HRESULT reported(Action&& action) noexcept {
  try {
    action();
    return S_OK;
  } catch (const RegistryFailure& failure) {
    const HRESULT result = HRESULT_FROM_WIN32(static_cast<DWORD>(failure.status));
    return result == E_ACCESSDENIED ? SELFREG_E_CLASS : result;
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

/// A key of the registry, made where it is missing.
class Key {
 public:
  Key(HKEY parent, const std::wstring& path) {
    require(RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr,
                            &key_, nullptr));
  }
  Key(const Key&) = delete;
  Key& operator=(const Key&) = delete;
  ~Key() { RegCloseKey(key_); }

  HKEY get() const { return key_; }
  Key key(const std::wstring& name) const { return {key_, name}; }
  const Key& put(const std::wstring& value, const wchar_t* name = nullptr) const {
    const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    require(
        RegSetValueExW(key_, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()), size));
    return *this;
  }

 private:
  HKEY key_ = nullptr;
};

std::wstring text_of(const GUID& id) {
  std::array<wchar_t, 39> text = {};
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return text.data();
}

std::wstring taken(BSTR text) {
  std::wstring result(text == nullptr ? L"" : text);
  SysFreeString(text);
  return result;
}

/// What the type library calls a class.
struct ClassName {
  std::wstring name;
  std::wstring description;

  std::wstring plain() const { return product + L"." + name; }
  std::wstring versioned() const { return plain() + version; }
};

ClassName name_of(const CLSID& id) {
  Pointer<ITypeInfo> info;
  BSTR name = nullptr;
  BSTR description = nullptr;
  if (FAILED(type_info(id, info.put())) ||
      FAILED(info->GetDocumentation(MEMBERID_NIL, &name, &description, nullptr, nullptr))) {
    throw RegistryFailure{ERROR_RESOURCE_TYPE_NOT_FOUND};
  }
  return {taken(name), taken(description)};
}

GUID library_id(WORD* major, WORD* minor) {
  Pointer<ITypeLib> library;
  TLIBATTR* attributes = nullptr;
  if (FAILED(type_library(library.put())) || FAILED(library->GetLibAttr(&attributes))) {
    throw RegistryFailure{ERROR_RESOURCE_TYPE_NOT_FOUND};
  }
  const GUID id = attributes->guid;
  *major = attributes->wMajorVerNum;
  *minor = attributes->wMinorVerNum;
  library->ReleaseTLibAttr(attributes);
  return id;
}

std::wstring class_path(const CLSID& id) { return L"CLSID\\" + text_of(id); }

// The system's numbers of what hosts look for in a class.
constexpr const wchar_t* is_control_category = L"{40FC6ED4-2438-11CF-A3DB-080036F12502}";
constexpr const wchar_t* is_safe_for_scripting = L"{7DD95801-9882-11CF-9FA9-00AA006C42C4}";
constexpr const wchar_t* is_safe_for_initialising = L"{7DD95802-9882-11CF-9FA9-00AA006C42C4}";

void add_category(const Key& key, const std::wstring& category) {
  key.key(L"Implemented Categories\\" + category);
}

void add_control(const Key& key) {
  key.key(L"Control");
  key.key(L"MiscStatus").put(L"0");
  key.key(L"MiscStatus\\1").put(std::to_wstring(Embedding::behaviour));
  key.key(L"Verb\\0").put(L"&Edit,0,2");
  key.key(L"Verb\\" + std::to_wstring(Embedding::edit_verb)).put(L"&Large Editor...,0,2");
  key.key(L"ToolboxBitmap32").put(Module::path() + L", 101");
  add_category(key, is_control_category);
}

void add_for_scripts(HKEY classes, const ClassEntry& entry, const ClassName& name) {
  const std::wstring id = text_of(entry.id);
  for (const std::wstring& program : {name.plain(), name.versioned()}) {
    Key(classes, program).put(name.description).key(L"CLSID").put(id);
  }
  Key(classes, name.plain()).key(L"CurVer").put(name.versioned());

  const Key key(classes, class_path(entry.id));
  key.key(L"ProgID").put(name.versioned());
  key.key(L"VersionIndependentProgID").put(name.plain());
  key.key(L"Programmable");
  // The category promises safety to hosts that do not say whom they trust.
  if (entry.kind != ClassKind::file_user) add_category(key, is_safe_for_scripting);
  add_category(key, is_safe_for_initialising);
}

void add_class(HKEY classes, const ClassEntry& entry, const std::wstring& library) {
  const ClassName name = name_of(entry.id);
  const Key key(classes, class_path(entry.id));
  key.put(name.description);
  key.key(L"InprocServer32").put(Module::path()).put(L"Apartment", L"ThreadingModel");
  key.key(L"TypeLib").put(library);
  key.key(L"Version").put(L"1.0");
  if (entry.kind != ClassKind::page) add_for_scripts(classes, entry, name);
  if (entry.kind == ClassKind::control) add_control(key);
}

/// Takes keys out one by one, and raises at the end for what could not be.
class Removal {
 public:
  explicit Removal(HKEY classes) : classes_(classes) {}

  void take(const std::wstring& path) {
    const LSTATUS status = RegDeleteTreeW(classes_, path.c_str());
    if (status != ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) failure_ = status;
  }
  /// For a key that was made on the way to others, if nobody has used it since.
  void take_empty(const std::wstring& path) {
    DWORD values = 0;
    DWORD keys = 0;
    HKEY key = nullptr;
    if (RegOpenKeyExW(classes_, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr,
                     nullptr, nullptr, nullptr);
    RegCloseKey(key);
    if (keys == 0 && values == 0) take(path);
  }
  void finish() const { require(failure_); }

 private:
  HKEY classes_;
  LSTATUS failure_ = ERROR_SUCCESS;
};

constexpr SYSKIND system_kind = sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32;

}  // namespace

HKEY Registration::root() const {
  return scope_ == RegistrationScope::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

HRESULT Registration::add_classes() const {
  return reported([&] {
    const Key classes(root(), L"Software\\Classes");
    WORD major = 0;
    WORD minor = 0;
    const std::wstring library = text_of(library_id(&major, &minor));
    for (const ClassEntry& entry : creatable_classes()) add_class(classes.get(), entry, library);
  });
}

HRESULT Registration::add_type_library() const {
  Pointer<ITypeLib> library;
  const HRESULT loaded = type_library(library.put());
  if (FAILED(loaded)) return loaded;
  std::wstring path = Module::path();
  const HRESULT done = scope_ == RegistrationScope::machine
                           ? RegisterTypeLib(library.get(), path.data(), nullptr)
                           : RegisterTypeLibForUser(library.get(), path.data(), nullptr);
  return FAILED(done) ? SELFREG_E_TYPELIB : S_OK;
}

HRESULT Registration::add() const noexcept {
  const HRESULT done = add_classes();
  return FAILED(done) ? done : add_type_library();
}

HRESULT Registration::remove_classes() const {
  return reported([&] {
    const Key classes(root(), L"Software\\Classes");
    Removal removal(classes.get());
    for (const ClassEntry& entry : creatable_classes()) {
      const ClassName name = name_of(entry.id);
      removal.take(class_path(entry.id));
      removal.take(name.versioned());
      removal.take(name.plain());
    }
    removal.take_empty(L"CLSID");
    removal.finish();
  });
}

/// The system reads what it has to remove from the file that is registered. That file may have been
/// moved: the library's own takes its place first.
HRESULT Registration::remove_type_library() const {
  const HRESULT added = add_type_library();
  if (FAILED(added)) return added;
  const auto remove_library =
      scope_ == RegistrationScope::machine ? UnRegisterTypeLib : UnRegisterTypeLibForUser;
  HRESULT removed = S_OK;
  const HRESULT done = reported([&] {
    WORD major = 0;
    WORD minor = 0;
    const GUID library = library_id(&major, &minor);
    removed = remove_library(library, major, minor, LOCALE_NEUTRAL, system_kind);
  });
  return FAILED(removed) ? SELFREG_E_TYPELIB : done;
}

HRESULT Registration::remove() const noexcept {
  const HRESULT classes = remove_classes();
  const HRESULT library = remove_type_library();
  return FAILED(classes) ? classes : library;
}

}  // namespace qel::com
