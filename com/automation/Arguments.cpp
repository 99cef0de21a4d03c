#include "com/automation/Arguments.h"

#include <cstddef>
#include <cstring>

namespace qel::com {
namespace {

/// The size of a variable of this type in bytes; 0 for a type that is not a number.
std::size_t size_of_number(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    default:
      return 0;
  }
}

/// Stores the content of a converted value in a variable of its type.
void store_converted(VARIANT& value, void* variable) {
  if (value.vt == VT_BSTR) {
    std::swap(*static_cast<BSTR*>(variable), value.bstrVal);
  } else if (value.vt == VT_DECIMAL) {
    // The type of the variant lies in bytes that the decimal does not use.
    value.decVal.wReserved = 0;
    std::memcpy(variable, &value.decVal, sizeof value.decVal);
    value.vt = VT_DECIMAL;
  } else {
    std::memcpy(variable, &value.llVal, size_of_number(value.vt));
  }
}

void store(std::int16_t number, VARIANT& variable) noexcept {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_I2;
  value.iVal = number;
  if ((variable.vt & VT_BYREF) == 0) {
    VariantClear(&variable);
    variable = value;
    return;
  }
  const auto type = static_cast<VARTYPE>(variable.vt & VT_TYPEMASK);
  if (SUCCEEDED(VariantChangeTypeEx(&value, &value, LOCALE_INVARIANT, 0, type))) {
    store_converted(value, variable.byref);
    VariantClear(&value);
  }
}

}  // namespace

ByReference::ByReference(VARIANT* variable) : variable_(variable) {
  if (variable == nullptr) throw Error(Error::object_not_set, "QEL", "a variable is needed");
  if (variable->vt == (VT_BYREF | VT_VARIANT)) variable_ = variable->pvarVal;
  number_ = Value(*variable_).as_integer();
}

ByReference::~ByReference() { store(number_, *variable_); }

}  // namespace qel::com
