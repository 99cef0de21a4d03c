#pragma once

#include <unknwn.h>

namespace qel::com {

/// A part of an object, with interfaces of its own. It shares the reference count and the identity
/// of the object, and has to be a member of it.
template <class... Interfaces>
class Part : public Interfaces... {
 public:
  explicit Part(IUnknown& whole) : whole_(whole) {}
  Part(const Part&) = delete;
  Part& operator=(const Part&) = delete;

  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    return whole_.QueryInterface(id, result);
  }
  STDMETHODIMP_(ULONG) AddRef() override { return whole_.AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return whole_.Release(); }

 protected:
  ~Part() = default;

  IUnknown& whole() const { return whole_; }

 private:
  IUnknown& whole_;
};

}  // namespace qel::com
