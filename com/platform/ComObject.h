#pragma once

#include <windows.h>

#include <utility>

namespace qel::windows {

/// A COM object with one interface and a count of who holds it. It begins with one, and goes when
/// nobody does any more.
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

/// Holds a COM object.
template <class Interface>
class ComPtr {
 public:
  ComPtr() = default;
  /// Takes over one of the references that the object counts.
  static ComPtr adopt(Interface* object) {
    ComPtr pointer;
    pointer.object_ = object;
    return pointer;
  }
  /// Holds the object besides whoever else does.
  static ComPtr share(Interface* object) {
    if (object != nullptr) object->AddRef();
    return adopt(object);
  }
  ComPtr(const ComPtr& other) : ComPtr(share(other.object_)) {}
  ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  ComPtr& operator=(ComPtr other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ComPtr() {
    if (object_ != nullptr) object_->Release();
  }

  Interface* get() const { return object_; }
  Interface* operator->() const { return object_; }
  Interface& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  Interface* object_ = nullptr;
};

}  // namespace qel::windows
