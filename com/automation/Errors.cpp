#include "com/automation/Errors.h"

#include <ole2.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <new>
#include <stdexcept>
#include <string>

#include "com/automation/TypeLibrary.h"
#include "com/automation/Values.h"
#include "qel/base/Error.h"
#include "windows/Pointer.h"

namespace qel::com {
namespace {

const std::u16string component = u"QEL";

constexpr std::array<Refusal, 9> refusals = {{
    {DISP_E_TYPEMISMATCH, errors::type_mismatch, u"an argument is of a type that does not convert"},
    {DISP_E_BADVARTYPE, errors::type_mismatch, u"an argument is of a type that does not convert"},
    {E_NOINTERFACE, errors::type_mismatch, u"the object is of another class"},
    {DISP_E_OVERFLOW, errors::overflow, u"a number is too large"},
    {DISP_E_MEMBERNOTFOUND, errors::no_such_member,
     u"there is no such member, or it cannot be used so"},
    {DISP_E_NONAMEDARGS, errors::no_named_arguments, u"it takes no named arguments"},
    {DISP_E_PARAMNOTFOUND, errors::no_such_argument, u"there is no argument of that name"},
    {DISP_E_PARAMNOTOPTIONAL, errors::argument_needed, u"an argument is missing"},
    {DISP_E_BADPARAMCOUNT, errors::wrong_argument_count, u"the number of arguments is wrong"},
}};

HRESULT report(const IID& interface_id, HRESULT result, const std::u16string& source,
               const std::u16string& description) {
  Pointer<ICreateErrorInfo> info;
  if (FAILED(CreateErrorInfo(info.put()))) return result;
  info->SetGUID(interface_id);
  info->SetSource(const_cast<LPOLESTR>(wide(source)));
  info->SetDescription(const_cast<LPOLESTR>(wide(description)));
  const Pointer<IErrorInfo> error = info.as<IErrorInfo>();
  if (error) SetErrorInfo(0, error.get());
  return result;
}

/// Errors of the component itself are reported in the name of the class that was called.
std::u16string source_of(const Error& error, const IID& interface_id) {
  std::u16string source = from_message(error.source());
  if (source == component) {
    if (std::u16string name = class_name_of(interface_id); !name.empty()) return name;
  }
  return source;
}

HRESULT report_in_flight(const IID& interface_id) {
  try {
    throw;
  } catch (const Error& error) {
    return report(interface_id, result_of(error.number()), source_of(error, interface_id),
                  from_message(error.description()));
  } catch (const std::bad_alloc&) {
    return report(interface_id, E_OUTOFMEMORY, component, u"Out of memory");
  } catch (const std::length_error&) {
    return report(interface_id, E_OUTOFMEMORY, component, u"Out of memory");
  } catch (const std::exception& error) {
    return report(interface_id, E_FAIL, component, from_message(error.what()));
  } catch (...) {
    return report(interface_id, E_UNEXPECTED, component, u"Unexpected failure");
  }
}

}  // namespace

const Refusal* refusal_of(HRESULT result) noexcept {
  const auto* const place =
      std::find_if(refusals.begin(), refusals.end(),
                   [result](const Refusal& refusal) { return refusal.result == result; });
  return place == refusals.end() ? nullptr : place;
}

void raise_not_trusted() {
  throw Error(errors::permission_denied, "QEL", "the host does not trust its scripts with this");
}

HRESULT report_exception(const IID& interface_id) noexcept {
  try {
    return report_in_flight(interface_id);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace qel::com
