#include "com/automation/HostObject.h"

#include "com/automation/Errors.h"
#include "qel/base/Error.h"
#include "qel/base/Utf8.h"

namespace qel::com {

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
  const bool has_result = (kind & DISPATCH_PROPERTYPUT) == 0;
  const HRESULT done =
      object_->Invoke(member(name), IID_NULL, LOCALE_USER_DEFAULT, kind, &arguments,
                      has_result ? result.put() : nullptr, nullptr, nullptr);
  if (FAILED(done)) {
    throw Error(static_cast<std::uint32_t>(done), "QEL", "the object refuses " + to_utf8(name));
  }
  return result;
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
