#pragma once

#include <string_view>

#include "qel/base/Variant.h"

namespace qel::platform {

/// Where a host keeps the properties of a control.
class PropertyBag {
 public:
  PropertyBag() = default;
  PropertyBag(const PropertyBag&) = delete;
  PropertyBag& operator=(const PropertyBag&) = delete;
  virtual ~PropertyBag() = default;

  /// The value kept under the name, or `preset` where there is none. A value need not be of the
  /// type in which it was written: the reader converts it.
  virtual Variant read(std::u16string_view name, const Variant& preset) const = 0;
  /// Keeps the value, or nothing where it equals `preset`.
  virtual void write(std::u16string_view name, const Variant& value, const Variant& preset) = 0;
};

}  // namespace qel::platform
