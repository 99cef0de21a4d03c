#include "com/automation/TypeLibrary.h"

#include <ole2.h>
#include <windows.h>

#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "com/automation/Errors.h"
#include "com/automation/Values.h"
#include "com/server/Module.h"
#include "windows/Pointer.h"

namespace qel::com {
namespace {

struct BeforeGuid {
  bool operator()(const GUID& a, const GUID& b) const { return std::memcmp(&a, &b, sizeof a) < 0; }
};

/// Caches the library and its type information, which many calls on all objects need. The pointers
/// are valid until the cache is cleared.
class Cache {
 public:
  HRESULT library(ITypeLib** result) {
    const std::lock_guard lock(mutex_);
    if (!library_) {
      const std::wstring path = Module::path();
      const HRESULT loaded = LoadTypeLibEx(path.c_str(), REGKIND_NONE, &library_);
      if (FAILED(loaded)) return loaded;
    }
    *result = library_;
    return S_OK;
  }

  HRESULT info(const GUID& id, ITypeInfo** result) {
    ITypeLib* library = nullptr;
    const HRESULT loaded = this->library(&library);
    if (FAILED(loaded)) return loaded;
    const std::lock_guard lock(mutex_);
    ITypeInfo*& known = infos_[id];
    if (known == nullptr) {
      const HRESULT found = library->GetTypeInfoOfGuid(id, &known);
      if (FAILED(found)) return found;
    }
    *result = known;
    return S_OK;
  }

  void clear() noexcept {
    const std::lock_guard lock(mutex_);
    for (const auto& [id, info] : infos_) {
      if (info != nullptr) info->Release();
    }
    infos_.clear();
    if (library_ != nullptr) std::exchange(library_, nullptr)->Release();
  }

 private:
  std::mutex mutex_;
  ITypeLib* library_ = nullptr;
  std::map<GUID, ITypeInfo*, BeforeGuid> infos_;
};

Cache& cache() {
  static Cache cache_of_module;
  return cache_of_module;
}

/// Runs an action that may run out of memory.
template <class Action>
HRESULT without_exceptions(Action&& action) noexcept {
  try {
    return action();
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

/// The name of a member, or of the interface itself.
std::u16string name_of(ITypeInfo& info, MEMBERID member) {
  BSTR name = nullptr;
  if (FAILED(info.GetDocumentation(member, &name, nullptr, nullptr, nullptr))) return {};
  std::u16string text(text_of(name));
  SysFreeString(name);
  return text;
}

/// "IQELText" belongs to the class "QELText".
std::u16string class_name_of(ITypeInfo& info) {
  std::u16string name = name_of(info, MEMBERID_NIL);
  name.erase(0, 1);
  return name;
}

std::u16string description_of(ITypeInfo& info, MEMBERID member, const Refusal& refusal) {
  const std::u16string name = name_of(info, member);
  return (name.empty() ? name : name + u": ") + refusal.description;
}

/// Reports the refusal of a call as an error of the class, since not all hosts can explain the
/// results. Hosts try the standard members, whose numbers are not positive, on any object: these
/// are refused as usual.
HRESULT explained(HRESULT result, ITypeInfo& info, const Call& call) {
  const Refusal* const refusal = refusal_of(result);
  const bool is_attempt = result == DISP_E_MEMBERNOTFOUND && call.member <= DISPID_VALUE;
  if (refusal == nullptr || is_attempt || call.exception == nullptr) return result;
  *call.exception = {};
  call.exception->scode = result_of(refusal->number);
  call.exception->bstrSource = new_bstr(class_name_of(info));
  call.exception->bstrDescription = new_bstr(description_of(info, call.member, *refusal));
  return DISP_E_EXCEPTION;
}

/// Scripts have no unsigned numbers. Colours and handles are 32 bits, whatever the sign.
void drop_sign(VARIANT* value) {
  if (value != nullptr && (value->vt == VT_UI4 || value->vt == VT_UINT)) value->vt = VT_I4;
}

template <class Interface>
HRESULT shared(HRESULT result, Interface* object, Interface** target) {
  if (SUCCEEDED(result)) *target = Pointer<Interface>(object).detach();
  return result;
}

}  // namespace

HRESULT type_library(ITypeLib** library) noexcept {
  ITypeLib* known = nullptr;
  const HRESULT result = without_exceptions([&] { return cache().library(&known); });
  return shared(result, known, library);
}

HRESULT type_info(const GUID& id, ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  ITypeInfo* known = nullptr;
  const HRESULT result = without_exceptions([&] { return cache().info(id, &known); });
  return shared(result, known, info);
}

std::u16string class_name_of(const IID& interface_id) {
  Pointer<ITypeInfo> info;
  return SUCCEEDED(type_info(interface_id, info.put())) ? class_name_of(*info) : std::u16string();
}

HRESULT ids_of_names(const IID& interface_id, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
  return without_exceptions([&] {
    ITypeInfo* info = nullptr;
    const HRESULT result = cache().info(interface_id, &info);
    return FAILED(result) ? result : info->GetIDsOfNames(names, count, ids);
  });
}

HRESULT invoke(const IID& interface_id, void* object, const Call& call) noexcept {
  return without_exceptions([&] {
    ITypeInfo* info = nullptr;
    const HRESULT found = cache().info(interface_id, &info);
    if (FAILED(found)) return found;
    constexpr WORD reading = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    const WORD kind = (call.kind & reading) != 0 ? call.kind | reading : call.kind;
    const HRESULT result = info->Invoke(object, call.member, kind, call.arguments, call.result,
                                        call.exception, call.wrong_argument);
    if (SUCCEEDED(result)) drop_sign(call.result);
    return explained(result, *info, call);
  });
}

void forget_type_library() noexcept { cache().clear(); }

}  // namespace qel::com
