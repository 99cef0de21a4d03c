#include "com/automation/Arguments.h"

namespace qel::com {

ByReference::ByReference(VARIANT* variable)
    : variable_(variable), number_(variable == nullptr ? 0 : Value(*variable).as_integer()) {
  if (variable == nullptr) throw Error(Error::object_not_set, "QEL", "a variable is needed");
}

ByReference::~ByReference() {
  VARIANT* const target = variable_->vt == (VT_BYREF | VT_VARIANT) ? variable_->pvarVal : variable_;
  if (target->vt == (VT_BYREF | VT_I2)) {
    *target->piVal = number_;
  } else if (target->vt == (VT_BYREF | VT_I4)) {
    *target->plVal = number_;
  } else if ((target->vt & VT_BYREF) == 0) {
    *target = (VariantClear(target), Value::of(number_).detach());
  }
}

}  // namespace qel::com
