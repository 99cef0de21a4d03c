#include "com/server/ClassFactory.h"

#include <atomic>

#include "com/automation/Errors.h"
#include "com/automation/Pointer.h"
#include "com/platform/WindowsPlatform.h"
#include "com/server/Module.h"
#include "qel/control/Common.h"

namespace qel::com {
namespace {

class ClassFactory final : public IClassFactory {
 public:
  explicit ClassFactory(const ClassEntry& entry) : entry_(entry) {}

  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    const bool is_known = id == IID_IUnknown || id == IID_IClassFactory;
    *result = is_known ? this : nullptr;
    if (!is_known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    Pointer<IUnknown> object;
    const HRESULT made =
        guarded(IID_IClassFactory, [&] { object = Pointer<IUnknown>::adopted(entry_.create()); });
    return FAILED(made) ? made : object->QueryInterface(id, result);
  }
  STDMETHODIMP LockServer(BOOL locked) override {
    ModuleUse::lock(locked != FALSE);
    return S_OK;
  }

 private:
  ~ClassFactory() = default;

  const ModuleUse module_use_;
  std::atomic<ULONG> references_ = 1;
  const ClassEntry& entry_;
};

}  // namespace

HRESULT class_factory_of(const ClassEntry& entry, REFIID id, void** result) noexcept {
  Pointer<IClassFactory> factory;
  const HRESULT made = guarded(IID_IClassFactory, [&] {
    factory = Pointer<IClassFactory>::adopted(new ClassFactory(entry));
  });
  return FAILED(made) ? made : factory->QueryInterface(id, result);
}

}  // namespace qel::com
