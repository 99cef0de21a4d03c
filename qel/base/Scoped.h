#pragma once

#include <utility>

namespace qel {

/// Gives a variable another value as long as this object lives, even if an exception ends its
/// scope.
template <class Value>
class Scoped {
 public:
  Scoped(Value& variable, Value value)
      : variable_(variable), before_(std::exchange(variable, std::move(value))) {}
  Scoped(const Scoped&) = delete;
  Scoped& operator=(const Scoped&) = delete;
  ~Scoped() { variable_ = std::move(before_); }

 private:
  Value& variable_;
  Value before_;
};

}  // namespace qel
