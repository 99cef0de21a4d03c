#pragma once

#include <objbase.h>

#include <cstring>
#include <cwchar>

namespace qel::com {

/// A string that the caller has to free.
inline LPOLESTR for_caller(LPCOLESTR text) {
  const std::size_t size = (std::wcslen(text) + 1) * sizeof(OLECHAR);
  void* const copy = CoTaskMemAlloc(size);
  return copy == nullptr ? nullptr : static_cast<LPOLESTR>(std::memcpy(copy, text, size));
}

}  // namespace qel::com
