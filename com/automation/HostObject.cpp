#include "com/automation/HostObject.h"

#include <cstdint>
#include <string>

#include "com/automation/Errors.h"
#include "qel/base/Error.h"
#include "qel/base/Utf8.h"

namespace qel::com {

namespace {

/// An object's description of its failure.
class Exception {
 public:
  Exception() = default;
  Exception(const Exception&) = delete;
  Exception& operator=(const Exception&) = delete;
  ~Exception() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }

  EXCEPINFO* put() { return &info_; }

  [[noreturn]] void raise(const std::string& what) {
    if (info_.pfnDeferredFillIn != nullptr) info_.pfnDeferredFillIn(&info_);
    throw Error(number(), text_or(info_.bstrSource, "QEL"), text_or(info_.bstrDescription, what));
  }

 private:
  std::uint32_t number() const {
    if (info_.wCode != 0) return info_.wCode;
    return static_cast<std::uint32_t>(FAILED(info_.scode) ? info_.scode : E_FAIL);
  }
  static std::string text_or(BSTR text, const std::string& otherwise) {
    return SysStringLen(text) == 0 ? otherwise : to_utf8(text_of(text));
  }

  EXCEPINFO info_ = {};
};

}  // namespace

HostObject::HostObject(IDispatch* object) : object_(object) {
  if (!object_) throw Error(Error::object_not_set, "QEL", "an object is needed, not nothing");
}

HRESULT HostObject::find(std::u16string_view name, DISPID& member) const {
  std::u16string wanted(name);
  auto* text = const_cast<LPOLESTR>(wide(wanted));
  return object_->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &member);
}

bool HostObject::has(std::u16string_view name) const {
  DISPID member = DISPID_UNKNOWN;
  return SUCCEEDED(find(name, member));
}

DISPID HostObject::member(std::u16string_view name) const {
  DISPID member = DISPID_UNKNOWN;
  if (FAILED(find(name, member))) {
    throw Error(errors::no_such_member, "QEL", "the object has no member " + to_utf8(name));
  }
  return member;
}

Value HostObject::invoke(std::u16string_view name, WORD kind, DISPPARAMS arguments) const {
  Value result;
  Exception exception;
  UINT wrong_argument = 0;
  const bool has_result = (kind & DISPATCH_PROPERTYPUT) == 0;
  const HRESULT done =
      object_->Invoke(member(name), IID_NULL, LOCALE_USER_DEFAULT, kind, &arguments,
                      has_result ? result.put() : nullptr, exception.put(), &wrong_argument);
  if (SUCCEEDED(done)) return result;
  const std::string what = "the object refuses " + to_utf8(name);
  if (done == DISP_E_EXCEPTION) exception.raise(what);
  const Refusal* const refusal = refusal_of(done);
  throw Error(refusal != nullptr ? refusal->number : static_cast<std::uint32_t>(done), "QEL", what);
}

Value HostObject::get_value(std::u16string_view name) const {
  return invoke(name, DISPATCH_PROPERTYGET, {});
}

Variant HostObject::get(std::u16string_view name) const { return plain(get_value(name).get()); }

void HostObject::put(std::u16string_view name, const Variant& value) {
  const Value held = value_of(value);
  DISPID put_id = DISPID_PROPERTYPUT;
  invoke(name, DISPATCH_PROPERTYPUT, {const_cast<VARIANT*>(&held.get()), &put_id, 1, 1});
}

void HostObject::call(std::u16string_view name) { invoke(name, DISPATCH_METHOD, {}); }

}  // namespace qel::com
