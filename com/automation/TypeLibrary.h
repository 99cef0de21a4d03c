#pragma once

#include <oaidl.h>
#include <windows.h>

#include <string>

namespace qel::com {

/// The component's own type library, with a reference for the caller.
HRESULT type_library(ITypeLib** library) noexcept;

/// The library's information about an interface or a class, with a reference for the caller.
HRESULT type_info(const GUID& id, ITypeInfo** info) noexcept;

/// The name of the class to which an interface of the library belongs; empty for other interfaces.
std::u16string class_name_of(const IID& interface_id);

HRESULT ids_of_names(const IID& interface_id, LPOLESTR* names, UINT count, DISPID* ids) noexcept;

/// Releases the library, which is loaded again when it is needed. Must be called while nothing of
/// the module is in use.
void forget_type_library() noexcept;

/// A call by number, as `IDispatch::Invoke` gets it.
struct Call {
  DISPID member;
  WORD kind;
  DISPPARAMS* arguments;
  VARIANT* result;
  EXCEPINFO* exception;
  UINT* wrong_argument;
};

/// Calls a member of the dual interface that `object` points to. A property without arguments may
/// be called as a method and the other way round, since scripts differ in that. A call that is
/// refused before it reaches the member is reported like an error of the member.
HRESULT invoke(const IID& interface_id, void* object, const Call& call) noexcept;

}  // namespace qel::com
