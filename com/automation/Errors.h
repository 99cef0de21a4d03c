#pragma once

#include <windows.h>

#include <exception>

namespace qel::com {

/// Tells the host what the exception in flight says, and returns the failure for it. To be called
/// where an exception was caught.
HRESULT report_exception(const IID& interface_id) noexcept;

/// Numbers of errors that scripts know.
namespace errors {
constexpr unsigned overflow = 6;
constexpr unsigned type_mismatch = 13;
constexpr unsigned no_such_member = 438;
}  // namespace errors

/// Runs what stands behind a member of a component: no exception leaves it.
template <class Action>
HRESULT guarded(const IID& interface_id, Action&& action) noexcept {
  try {
    action();
    return S_OK;
  } catch (...) {
    return report_exception(interface_id);
  }
}

}  // namespace qel::com
