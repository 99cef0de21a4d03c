#include "com/automation/Values.h"

#include <cstring>
#include <new>
#include <type_traits>

#include "com/automation/Errors.h"
#include "qel/base/Error.h"
#include "qel/base/Utf8.h"

namespace qel::com {
namespace {

/// Raises an error for a failure of the system's own conversions.
void require(HRESULT result) {
  if (SUCCEEDED(result)) return;
  if (result == E_OUTOFMEMORY) throw std::bad_alloc();
  if (result == DISP_E_OVERFLOW) throw Error(Error::overflow, "QEL", "the number is too large");
  throw Error(errors::type_mismatch, "QEL", "the value is of a type that does not convert");
}

/// An array that is being filled.
class StringArray {
 public:
  explicit StringArray(std::size_t size)
      : array_(SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(size))) {
    if (array_ == nullptr) throw std::bad_alloc();
  }
  StringArray(const StringArray&) = delete;
  StringArray& operator=(const StringArray&) = delete;
  ~StringArray() { SafeArrayDestroy(array_); }

  void put(std::size_t index, std::u16string_view text) {
    auto place = static_cast<LONG>(index);
    const Value value = Value::of(text);
    require(SafeArrayPutElement(array_, &place, const_cast<VARIANT*>(&value.get())));
  }
  SAFEARRAY* detach() { return std::exchange(array_, nullptr); }

 private:
  SAFEARRAY* array_;
};

}  // namespace

BSTR new_bstr(std::u16string_view text) {
  if (text.size() > 0x3FFFFFFFU) throw std::bad_alloc();
  BSTR result = SysAllocStringLen(wide(text).data(), static_cast<UINT>(text.size()));
  if (result == nullptr) throw std::bad_alloc();
  return result;
}

std::u16string from_message(std::string_view text) {
  return from_utf8(text, [](std::uint8_t /*byte*/) { return u'\uFFFD'; });
}

Value::Value(const VARIANT& source) : variant_() {
  VariantInit(&variant_);
  require(VariantCopyInd(&variant_, const_cast<VARIANT*>(&source)));
}

Value Value::of(bool value) {
  Value result;
  result.variant_.vt = VT_BOOL;
  result.variant_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  return result;
}

Value Value::of(std::int16_t value) {
  Value result;
  result.variant_.vt = VT_I2;
  result.variant_.iVal = value;
  return result;
}

Value Value::of(std::int32_t value) {
  Value result;
  result.variant_.vt = VT_I4;
  result.variant_.lVal = value;
  return result;
}

Value Value::of(float value) {
  Value result;
  result.variant_.vt = VT_R4;
  result.variant_.fltVal = value;
  return result;
}

Value Value::of(double value) {
  Value result;
  result.variant_.vt = VT_R8;
  result.variant_.dblVal = value;
  return result;
}

Value Value::of(std::u16string_view value) {
  Value result;
  result.variant_.bstrVal = new_bstr(value);
  result.variant_.vt = VT_BSTR;
  return result;
}

Value Value::of(IDispatch* object) {
  Value result;
  result.variant_.vt = VT_DISPATCH;
  result.variant_.pdispVal = Pointer<IDispatch>(object).detach();
  return result;
}

Value Value::of(const std::vector<std::u16string>& values) {
  StringArray array(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) array.put(i, values[i]);
  Value result;
  result.variant_.parray = array.detach();
  result.variant_.vt = VT_ARRAY | VT_VARIANT;
  return result;
}

Value Value::of_bytes(std::string_view bytes) {
  SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  void* data = nullptr;
  if (array == nullptr || FAILED(SafeArrayAccessData(array, &data))) throw std::bad_alloc();
  if (!bytes.empty()) std::memcpy(data, bytes.data(), bytes.size());
  SafeArrayUnaccessData(array);
  Value result;
  result.variant_.parray = array;
  result.variant_.vt = VT_ARRAY | VT_UI1;
  return result;
}

Value Value::as(VARTYPE type) const {
  Value result;
  require(VariantChangeTypeEx(&result.variant_, const_cast<VARIANT*>(&variant_), LOCALE_INVARIANT,
                              0, type));
  return result;
}

Pointer<IDispatch> Value::object() const {
  if (variant_.vt == VT_DISPATCH) return Pointer<IDispatch>(variant_.pdispVal);
  if (variant_.vt == VT_UNKNOWN) return Pointer<IUnknown>(variant_.punkVal).as<IDispatch>();
  return {};
}

template <>
bool in_type<bool>(const Value& value) {
  return value.as(VT_BOOL).get().boolVal != VARIANT_FALSE;
}
template <>
std::int16_t in_type<std::int16_t>(const Value& value) {
  return value.as(VT_I2).get().iVal;
}
template <>
std::int32_t in_type<std::int32_t>(const Value& value) {
  return value.as(VT_I4).get().lVal;
}
template <>
std::int64_t in_type<std::int64_t>(const Value& value) {
  return value.as(VT_I8).get().llVal;
}
template <>
float in_type<float>(const Value& value) {
  return value.as(VT_R4).get().fltVal;
}
template <>
std::u16string in_type<std::u16string>(const Value& value) {
  return std::u16string(text_of(value.as(VT_BSTR).get().bstrVal));
}

Variant kept(const VARIANT& value) { return std::make_shared<KeptValue>(value); }

Value value_of(const Variant& value) {
  return std::visit(
      [](const auto& held) {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, std::monostate>) {
          return Value();
        } else if constexpr (std::is_same_v<Held, std::shared_ptr<Object>>) {
          const auto* const kept = dynamic_cast<const KeptValue*>(held.get());
          return kept != nullptr ? kept->value() : Value();
        } else {
          return Value::of(held);
        }
      },
      value);
}

Variant plain(const VARIANT& source) {
  const Value value(source);
  switch (value.type()) {
    case VT_EMPTY:
    case VT_NULL:
      return {};
    case VT_BOOL:
      return value.get().boolVal != VARIANT_FALSE;
    case VT_I2:
      return value.get().iVal;
    case VT_I1:
    case VT_UI1:
    case VT_UI2:
    case VT_I4:
    case VT_INT:
      return in_type<std::int32_t>(value);
    case VT_R4:
      return value.get().fltVal;
    case VT_BSTR:
      return std::u16string(text_of(value.get().bstrVal));
    case VT_UI4:
    case VT_UINT:
      return static_cast<std::int32_t>(value.get().ulVal);
    default:
      return value.as(VT_R8).get().dblVal;
  }
}

}  // namespace qel::com
