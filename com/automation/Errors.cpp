#include "com/automation/Errors.h"

#include <ole2.h>
#include <windows.h>

#include <new>
#include <stdexcept>
#include <string>

#include "com/automation/Pointer.h"
#include "com/automation/Values.h"
#include "qel/base/Error.h"

namespace qel::com {
namespace {

const std::u16string component = u"QEL";

/// A number of the script engines' own error object; what has the failure bit is a result already.
HRESULT result_of(std::uint32_t number) {
  constexpr std::uint32_t control_facility = 0x800A0000U;
  return static_cast<HRESULT>((number & 0x80000000U) != 0 ? number : control_facility | number);
}

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

HRESULT report_in_flight(const IID& interface_id) {
  try {
    throw;
  } catch (const Error& error) {
    return report(interface_id, result_of(error.number()), from_ascii(error.source()),
                  from_ascii(error.description()));
  } catch (const std::bad_alloc&) {
    return report(interface_id, E_OUTOFMEMORY, component, u"Out of memory");
  } catch (const std::length_error&) {
    return report(interface_id, E_OUTOFMEMORY, component, u"Out of memory");
  } catch (const std::exception& error) {
    return report(interface_id, E_FAIL, component, from_ascii(error.what()));
  } catch (...) {
    return report(interface_id, E_UNEXPECTED, component, u"Unexpected failure");
  }
}

}  // namespace

HRESULT report_exception(const IID& interface_id) noexcept {
  try {
    return report_in_flight(interface_id);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace qel::com
