// What the system calls in the library: to create objects, to unload it, to register it.

#include <olectl.h>
#include <windows.h>

#include <string_view>

#include "com/automation/Errors.h"
#include "com/automation/TypeLibrary.h"
#include "com/server/ClassFactory.h"
#include "com/server/Module.h"
#include "com/server/Registration.h"

using qel::com::Registration;
using qel::com::RegistrationScope;

namespace {

HRESULT registered(RegistrationScope scope) noexcept {
  const HRESULT done = Registration(scope).add();
  if (FAILED(done)) Registration(scope).remove();
  return done;
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID class_id, REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  for (const auto& entry : qel::com::creatable_classes()) {
    if (entry.id == class_id) return qel::com::class_factory_of(entry, id, result);
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
  if (!qel::com::Module::is_idle()) return S_FALSE;
  qel::com::forget_type_library();
  return S_OK;
}

STDAPI DllRegisterServer() { return registered(RegistrationScope::machine); }

STDAPI DllUnregisterServer() { return Registration(RegistrationScope::machine).remove(); }

/// Called for `regsvr32 /i:user`, and with `/u` to undo it: the registration for one user.
STDAPI DllInstall(BOOL install, LPCWSTR command) {
  using namespace std::string_view_literals;
  const bool is_user = command != nullptr && command == L"user"sv;
  if (command != nullptr && *command != L'\0' && !is_user) return E_INVALIDARG;
  const auto scope = is_user ? RegistrationScope::user : RegistrationScope::machine;
  return install != FALSE ? registered(scope) : Registration(scope).remove();
}
