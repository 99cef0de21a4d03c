#include "com/server/ClassFactory.h"

#include "com/automation/Errors.h"
#include "com/server/Module.h"
#include "qel/platform/Common.h"
#include "windows/ComObject.h"
#include "windows/Pointer.h"
#include "windows/WindowsPlatform.h"

namespace qel::com {
namespace {

class ClassFactory final : public windows::ComObject<IClassFactory> {
 public:
  explicit ClassFactory(const ClassEntry& entry) : entry_(entry) {}

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** result) override {
    if (result == nullptr) return E_POINTER;
    *result = nullptr;
    // The outer object needs what the part is without it.
    if (outer != nullptr && id != IID_IUnknown) return CLASS_E_NOAGGREGATION;
    Pointer<IUnknown> object;
    const HRESULT made = guarded(IID_IClassFactory, [&] {
      // What the objects ask a platform is asked of the one of their thread.
      Common::set_platform(windows::WindowsPlatform::shared());
      object = Pointer<IUnknown>::adopted(entry_.create(outer));
    });
    return FAILED(made) ? made : object->QueryInterface(id, result);
  }
  STDMETHODIMP LockServer(BOOL locked) override {
    ModuleUse::lock(locked != FALSE);
    return S_OK;
  }

 private:
  const ModuleUse module_use_;
  const ClassEntry& entry_;
};

}  // namespace

HRESULT class_factory_of(const ClassEntry& entry, REFIID id, void** result) noexcept {
  Pointer<IClassFactory> factory;
  const HRESULT made = guarded(IID_IClassFactory, [&] {
    // NOLINTNEXTLINE(bugprone-unhandled-exception-at-new): `guarded` handles it.
    factory = Pointer<IClassFactory>::adopted(new ClassFactory(entry));
  });
  return FAILED(made) ? made : factory->QueryInterface(id, result);
}

}  // namespace qel::com
