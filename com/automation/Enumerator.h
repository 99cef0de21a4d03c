#pragma once

#include <ole2.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include "com/automation/Arguments.h"
#include "com/server/Module.h"
#include "windows/ComObject.h"

namespace qel::com {

/// Walks a collection from the first item to the last, for the "For Each" of scripts.
template <class Collection>
class Enumerator final : public windows::ComObject<IEnumVARIANT> {
 public:
  Enumerator(std::shared_ptr<Collection> collection, std::int32_t next)
      : collection_(std::move(collection)), next_(next) {}

  STDMETHODIMP Next(ULONG count, VARIANT* items, ULONG* fetched) override {
    if (items == nullptr || (count != 1 && fetched == nullptr)) return E_POINTER;
    if (fetched != nullptr) *fetched = 0;
    const std::int32_t first = next_;
    ULONG done = 0;
    const HRESULT result = guarded(IID_IEnumVARIANT, [&] {
      for (; done < count && next_ <= collection_->Count(); ++done) {
        const auto item = Pointer<IDispatch>::adopted(adapter_of(collection_->Item(next_)));
        items[done] = Value::of(item.get()).detach();
        ++next_;
      }
    });
    if (FAILED(result)) {
      for (VARIANT* item = items; item != items + done; ++item) VariantClear(item);
      next_ = first;
      return result;
    }
    if (fetched != nullptr) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const auto left = static_cast<ULONG>(std::max(collection_->Count() - next_ + 1, 0));
    next_ += static_cast<std::int32_t>(std::min(count, left));
    return count <= left ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    next_ = 1;
    return S_OK;
  }
  STDMETHODIMP Clone(IEnumVARIANT** copy) override {
    if (copy == nullptr) return E_POINTER;
    *copy = nullptr;
    return guarded(IID_IEnumVARIANT, [&] { *copy = new Enumerator(collection_, next_); });
  }

 private:
  const ModuleUse module_use_;
  std::shared_ptr<Collection> collection_;
  std::int32_t next_;  // from 1
};

template <class Collection>
HRESULT new_enumerator(IUnknown** result, std::shared_ptr<Collection> collection) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return guarded(IID_IEnumVARIANT,
                 [&] { *result = new Enumerator<Collection>(std::move(collection), 1); });
}

}  // namespace qel::com
