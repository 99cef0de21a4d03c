#pragma once

#include <string_view>

#include "qel/base/Variant.h"

namespace qel::platform {

/// An object whose members are bound by name at run time. Each function raises for a name that the
/// object does not know.
class Dispatch {
 public:
  Dispatch() = default;
  Dispatch(const Dispatch&) = delete;
  Dispatch& operator=(const Dispatch&) = delete;
  virtual ~Dispatch() = default;

  virtual Variant get(std::u16string_view name) const = 0;
  virtual void put(std::u16string_view name, const Variant& value) = 0;
  virtual void call(std::u16string_view name) = 0;
};

}  // namespace qel::platform
