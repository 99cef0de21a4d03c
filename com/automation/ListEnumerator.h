#pragma once

#include <unknwn.h>

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "com/automation/Errors.h"
#include "com/server/Module.h"
#include "windows/ComObject.h"

namespace qel::com {

/// Walks a list that was made beforehand. `copy` turns an item of the list into one for the caller.
template <class Enumeration, class Item, class Given, auto copy>
class ListEnumerator final : public windows::ComObject<Enumeration> {
 public:
  explicit ListEnumerator(std::vector<Item> items, std::size_t next = 0)
      : items_(std::move(items)), next_(next) {}

  STDMETHODIMP Next(ULONG count, Given* items, ULONG* fetched) override {
    if (items == nullptr || (count != 1 && fetched == nullptr)) return E_POINTER;
    ULONG done = 0;
    for (; done < count && next_ < items_.size(); ++done) items[done] = copy(items_[next_++]);
    if (fetched != nullptr) *fetched = done;
    return done == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const std::size_t skipped = std::min<std::size_t>(count, items_.size() - next_);
    next_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    next_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(Enumeration** result) override {
    if (result == nullptr) return E_POINTER;
    return guarded(__uuidof(Enumeration), [&] { *result = new ListEnumerator(items_, next_); });
  }

 private:
  const ModuleUse module_use_;
  std::vector<Item> items_;
  std::size_t next_;
};

}  // namespace qel::com
