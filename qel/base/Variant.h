#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

namespace qel {

/// The base class of a host's own objects that a `Variant` may hold.
class Object {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;
};

/// A host's value of any type: empty (the default), a Boolean, a number, a text, or a reference to
/// an object, which copies of the value share. A null pointer is a reference to nothing.
using Variant = std::variant<std::monostate, bool, std::int16_t, std::int32_t, float, double,
                             std::u16string, std::shared_ptr<Object>>;

}  // namespace qel
