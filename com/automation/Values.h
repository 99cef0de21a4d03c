#pragma once

#include <ole2.h>
#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qel/base/Variant.h"
#include "windows/Pointer.h"
#include "windows/Text.h"

/// Conversion between the values of automation and the library's.
namespace qel::com {

using windows::utf16;
using windows::wide;

/// The text of an automation string, valid as long as the string; null is the empty text.
inline std::u16string_view text_of(BSTR text) { return utf16(text, SysStringLen(text)); }

/// A new automation string, which the caller owns. Raises when memory has run out.
BSTR new_bstr(std::u16string_view text);

/// The message of an exception, which is in UTF-8.
std::u16string from_message(std::string_view text);

/// An automation variant that owns its content.
class Value {
 public:
  Value() : variant_() { VariantInit(&variant_); }
  /// A copy without references to a caller's variables: what they refer to is copied.
  explicit Value(const VARIANT& source);
  Value(const Value& other) : Value(other.variant_) {}
  Value(Value&& other) noexcept : variant_(other.detach()) {}
  Value& operator=(Value other) noexcept {
    std::swap(variant_, other.variant_);
    return *this;
  }
  ~Value() { VariantClear(&variant_); }

  static Value of(bool value);
  static Value of(std::int16_t value);
  static Value of(std::int32_t value);
  static Value of(float value);
  static Value of(double value);
  static Value of(std::u16string_view value);
  static Value of(IDispatch* object);
  /// A zero-based array of strings that scripts can read.
  static Value of(const std::vector<std::u16string>& values);
  /// A zero-based array of bytes.
  static Value of_bytes(std::string_view bytes);

  const VARIANT& get() const { return variant_; }
  VARTYPE type() const { return variant_.vt; }
  /// Where a call may store a value; the old one is cleared first.
  VARIANT* put() {
    VariantClear(&variant_);
    return &variant_;
  }
  /// Gives the value to the caller.
  VARIANT detach() noexcept {
    const VARIANT value = variant_;
    VariantInit(&variant_);
    return value;
  }
  /// The same value in another type. Raises if it does not convert or does not fit.
  Value as(VARTYPE type) const;
  std::int16_t as_integer() const { return as(VT_I2).variant_.iVal; }
  /// The object in the value; null if it is not an object.
  Pointer<IDispatch> object() const;

 private:
  VARIANT variant_ = {};
};

/// The content of the value in a type that members of the library take. Raises if it does not
/// convert.
template <class Type>
Type in_type(const Value& value);
template <>
bool in_type<bool>(const Value& value);
template <>
std::int16_t in_type<std::int16_t>(const Value& value);
template <>
std::int32_t in_type<std::int32_t>(const Value& value);
template <>
std::int64_t in_type<std::int64_t>(const Value& value);
template <>
float in_type<float>(const Value& value);
template <>
std::u16string in_type<std::u16string>(const Value& value);

/// A value of a host, of any type, kept in the library.
class KeptValue : public Object {
 public:
  explicit KeptValue(const VARIANT& value) : value_(value) {}
  const Value& value() const { return value_; }

 private:
  Value value_;
};

/// The library's value for a host's, and the host's for the library's.
Variant kept(const VARIANT& value);
Value value_of(const Variant& value);

/// The value in the library's type that corresponds to its own; raises if there is none.
Variant plain(const VARIANT& source);

}  // namespace qel::com
