#pragma once

#include <concepts>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "com/automation/Classes.h"
#include "com/automation/Errors.h"
#include "com/automation/Values.h"
#include "qel/base/Error.h"
#include "windows/Pointer.h"

/// Converts the arguments of a member for the library, and its results for the host.
namespace qel::com {

/// The interface that gives the library object behind an adapter. Each loaded module makes an id of
/// its own: objects of another build have another one.
template <class Class>
class OwnObject : public IUnknown {
 public:
  static const IID& id() {
    static const IID own_id = [] {
      IID made = {};
      CoCreateGuid(&made);
      return made;
    }();
    return own_id;
  }
  virtual std::shared_ptr<Class> behind() const = 0;
};

/// The library object behind an object from the host; null for null. Raises for an object of
/// another class.
template <class Class>
std::shared_ptr<Class> own_object(IUnknown* object) {
  if (object == nullptr) return nullptr;
  OwnObject<Class>* own = nullptr;
  if (FAILED(object->QueryInterface(OwnObject<Class>::id(), reinterpret_cast<void**>(&own)))) {
    throw Error(errors::type_mismatch, "QEL", "the object is of another class");
  }
  return Pointer<OwnObject<Class>>::adopted(own)->behind();
}

/// Whether an object from the host is an adapter of this class.
template <class Class>
bool stands_for(IUnknown* object) {
  void* own = nullptr;
  if (object == nullptr || FAILED(object->QueryInterface(OwnObject<Class>::id(), &own)))
    return false;
  static_cast<OwnObject<Class>*>(own)->Release();
  return true;
}

/// An object argument: a parameter that is a reference needs one, a pointer may be null.
template <class Class>
class Given {
 public:
  explicit Given(IUnknown* object) : object_(own_object<Class>(object)) {}

  operator Class&() const {  // NOLINT(google-explicit-constructor)
    if (!object_) throw Error(Error::object_not_set, "QEL", "an object is needed, not nothing");
    return *object_;
  }
  operator Class*() const { return object_.get(); }  // NOLINT(google-explicit-constructor)
  operator const std::shared_ptr<Class>&() const {   // NOLINT(google-explicit-constructor)
    return object_;
  }

 private:
  std::shared_ptr<Class> object_;
};

/// A 16-bit argument by reference, which hosts pass as a variable of any type. It is read as a
/// number, and the new number is stored in it if its type allows that.
class ByReference {
 public:
  explicit ByReference(VARIANT* variable);
  ByReference(const ByReference&) = delete;
  ByReference& operator=(const ByReference&) = delete;
  ~ByReference();

  operator std::int16_t&() { return number_; }  // NOLINT(google-explicit-constructor)

 private:
  VARIANT* variable_;
  std::int16_t number_ = 0;
};

inline std::u16string_view given(BSTR text) { return text_of(text); }
inline ByReference given(VARIANT* variable) { return ByReference(variable); }
inline Variant given(const VARIANT& value) { return kept(value); }
template <OwnInterface Interface>
Given<typename Described<Interface>::Class> given(Interface* object) {
  return Given<typename Described<Interface>::Class>(object);
}
template <class Number>
requires std::is_arithmetic_v<Number> || std::is_enum_v<Number> Number given(Number number) {
  return number;
}

/// The adapter of the object for the host, with a reference for the caller; null for null.
template <class Class>
typename Described<Class>::Interface* adapter_of(std::shared_ptr<Class> object);

/// Whether an optional argument was left out.
inline bool is_missing(const VARIANT& value) {
  return value.vt == VT_ERROR && value.scode == DISP_E_PARAMNOTFOUND;
}

inline void put_result(BSTR* result, std::u16string_view text) { *result = new_bstr(text); }
inline void put_result(VARIANT_BOOL* result, std::same_as<bool> auto value) {
  *result = value ? VARIANT_TRUE : VARIANT_FALSE;
}
inline void put_result(SHORT* result, std::same_as<std::int16_t> auto value) { *result = value; }
inline void put_result(LONG* result, std::int32_t value) { *result = value; }
inline void put_result(OLE_COLOR* result, std::int32_t value) {
  *result = static_cast<OLE_COLOR>(value);
}
inline void put_result(OLE_HANDLE* result, OLE_HANDLE value) { *result = value; }
template <class Enumeration, class Value>
requires std::is_enum_v<Enumeration> && std::is_enum_v<Value>
void put_result(Enumeration* result, Value value) { *result = static_cast<Enumeration>(value); }
/// An enumeration of the type library is a long to hosts, and may hold any.
template <class Enumeration>
requires std::is_enum_v<Enumeration>
void put_result(Enumeration* result, std::int32_t value) {
  static_assert(sizeof value == sizeof *result);
  std::memcpy(result, &value, sizeof value);
}
inline void put_result(FLOAT* result, float value) { *result = value; }
inline void put_result(VARIANT* result, const Variant& value) {
  *result = value_of(value).detach();
}
inline void put_result(VARIANT* result, const std::vector<std::u16string>& values) {
  *result = Value::of(values).detach();
}
/// Null where there is no single value.
template <class Held>
void put_result(VARIANT* result, const std::optional<Held>& value) {
  if (value) {
    *result = Value::of(*value).detach();
  } else {
    result->vt = VT_NULL;
  }
}
template <class Interface, class Class>
void put_result(Interface** result, std::shared_ptr<Class> object) {
  *result = nullptr;
  *result = adapter_of(std::move(object));
}

}  // namespace qel::com
