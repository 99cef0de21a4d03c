#include "com/automation/TypeLibrary.h"

#include <ole2.h>
#include <windows.h>

#include <cstring>
#include <map>
#include <mutex>
#include <string>

#include "com/automation/Pointer.h"
#include "com/server/Module.h"

namespace qel::com {
namespace {

struct BeforeGuid {
  bool operator()(const GUID& a, const GUID& b) const { return std::memcmp(&a, &b, sizeof a) < 0; }
};

/// What was read of the library, which stays for the life of the module: it is the same for all
/// objects, and many calls ask for it.
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

 private:
  std::mutex mutex_;
  ITypeLib* library_ = nullptr;
  std::map<GUID, ITypeInfo*, BeforeGuid> infos_;
};

Cache& cache() {
  static Cache cache_of_module;
  return cache_of_module;
}

template <class Interface>
HRESULT shared(HRESULT result, Interface* object, Interface** target) {
  if (SUCCEEDED(result)) *target = Pointer<Interface>(object).detach();
  return result;
}

}  // namespace

HRESULT type_library(ITypeLib** library) noexcept {
  ITypeLib* known = nullptr;
  const HRESULT result = cache().library(&known);
  return shared(result, known, library);
}

HRESULT type_info(const GUID& id, ITypeInfo** info) noexcept {
  if (info == nullptr) return E_POINTER;
  *info = nullptr;
  ITypeInfo* known = nullptr;
  const HRESULT result = cache().info(id, &known);
  return shared(result, known, info);
}

HRESULT ids_of_names(const IID& interface_id, LPOLESTR* names, UINT count, DISPID* ids) noexcept {
  ITypeInfo* info = nullptr;
  const HRESULT result = cache().info(interface_id, &info);
  return FAILED(result) ? result : info->GetIDsOfNames(names, count, ids);
}

HRESULT invoke(const IID& interface_id, void* object, const Call& call) noexcept {
  ITypeInfo* info = nullptr;
  const HRESULT result = cache().info(interface_id, &info);
  if (FAILED(result)) return result;
  constexpr WORD reading = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  const WORD kind = (call.kind & reading) != 0 ? call.kind | reading : call.kind;
  return info->Invoke(object, call.member, kind, call.arguments, call.result, call.exception,
                      call.wrong_argument);
}

}  // namespace qel::com
