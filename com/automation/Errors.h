#pragma once

#include <windows.h>

#include <cstdint>
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
constexpr unsigned no_named_arguments = 446;
constexpr unsigned no_such_argument = 448;
constexpr unsigned argument_needed = 449;
constexpr unsigned wrong_argument_count = 450;
}  // namespace errors

/// The result that tells a host such a number; results themselves stay.
constexpr HRESULT result_of(std::uint32_t number) noexcept {
  constexpr std::uint32_t script_errors = 0x800A0000U;
  return static_cast<HRESULT>((number & 0x80000000U) != 0 ? number : script_errors | number);
}

/// What a call by name is refused for before it reaches the member.
struct Refusal {
  HRESULT result;
  unsigned number;
  const char16_t* description;
};

/// The refusal that the result of a call by name stands for; null for other results.
const Refusal* refusal_of(HRESULT result) noexcept;

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
