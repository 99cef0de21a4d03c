#pragma once

#include <windows.h>

namespace qel::windows {

/// A COM object with one interface and a reference count. It begins with one reference, and deletes
/// itself with the last.
template <class Interface>
class ComObject : public Interface {
 public:
  ComObject() = default;
  ComObject(const ComObject&) = delete;
  ComObject& operator=(const ComObject&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) noexcept override {
    if (object == nullptr) return E_POINTER;
    const bool has = id == __uuidof(IUnknown) || id == __uuidof(Interface);
    *object = has ? static_cast<Interface*>(this) : nullptr;
    if (!has) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() noexcept override {
    return static_cast<ULONG>(InterlockedIncrement(&count_));
  }
  ULONG STDMETHODCALLTYPE Release() noexcept override {
    const LONG count = InterlockedDecrement(&count_);
    if (count == 0) delete this;
    return static_cast<ULONG>(count);
  }

 protected:
  virtual ~ComObject() = default;

 private:
  LONG count_ = 1;
};

}  // namespace qel::windows
