#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string_view>

#include "com/automation/Values.h"
#include "qel/platform/Dispatch.h"
#include "windows/Pointer.h"

namespace qel::com {

/// A host's object, whose members are called by name. All calls raise for a name that the object
/// does not know, and for errors of the member itself.
class HostObject : public platform::Dispatch {
 public:
  /// Raises for null.
  explicit HostObject(IDispatch* object);

  Variant get(std::u16string_view name) const override;
  void put(std::u16string_view name, const Variant& value) override;
  void call(std::u16string_view name) override;

  bool has(std::u16string_view name) const;
  Value get_value(std::u16string_view name) const;
  IDispatch* object() const { return object_.get(); }

 private:
  HRESULT find(std::u16string_view name, DISPID& member) const;
  DISPID member(std::u16string_view name) const;
  Value invoke(std::u16string_view name, WORD kind, DISPPARAMS arguments) const;

  Pointer<IDispatch> object_;
};

}  // namespace qel::com
