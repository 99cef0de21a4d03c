#pragma once

#include <unknwn.h>
#include <windows.h>

#include <utility>

namespace qel::windows {

/// A smart pointer to a COM object: holds one reference to it.
template <class Interface>
class Pointer {
 public:
  Pointer() = default;
  /// Adds a reference to an object that somebody else holds; may be null.
  explicit Pointer(Interface* shared) noexcept : object_(shared) {
    if (object_ != nullptr) object_->AddRef();
  }
  Pointer(const Pointer& other) noexcept : Pointer(other.object_) {}
  Pointer(Pointer&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  Pointer& operator=(Pointer other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~Pointer() {
    if (object_ != nullptr) object_->Release();
  }

  /// Takes over a reference that somebody else has added.
  static Pointer adopted(Interface* object) noexcept {
    Pointer pointer;
    pointer.object_ = object;
    return pointer;
  }

  Interface* get() const noexcept { return object_; }
  Interface* operator->() const noexcept { return object_; }
  Interface& operator*() const noexcept { return *object_; }
  explicit operator bool() const noexcept { return object_ != nullptr; }
  friend bool operator==(const Pointer&, const Pointer&) = default;

  /// The address where a call leaves an object; releases the one held before.
  Interface** put() noexcept {
    *this = Pointer();
    return &object_;
  }
  /// Passes the reference on to the caller.
  Interface* detach() noexcept { return std::exchange(object_, nullptr); }
  /// The same object by another interface; null where it does not have it.
  template <class Other>
  Pointer<Other> as() const noexcept {
    Other* other = nullptr;
    if (object_ != nullptr) {
      object_->QueryInterface(__uuidof(Other), reinterpret_cast<void**>(&other));
    }
    return Pointer<Other>::adopted(other);
  }

 private:
  Interface* object_ = nullptr;
};

}  // namespace qel::windows

namespace qel::com {

using windows::Pointer;

}  // namespace qel::com
