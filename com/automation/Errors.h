#pragma once

#include <windows.h>

#include <cstdint>
#include <exception>

namespace qel::com {

/// Reports the current exception to the host, and returns the failure for it. Must be called in a
/// handler of the exception.
HRESULT report_exception(const IID& interface_id) noexcept;

/// Error numbers that scripts know.
namespace errors {
constexpr unsigned bad_argument = 5;
constexpr unsigned overflow = 6;
constexpr unsigned type_mismatch = 13;
constexpr unsigned file_not_found = 53;
constexpr unsigned permission_denied = 70;
constexpr unsigned file_access = 75;
constexpr unsigned path_not_found = 76;
constexpr unsigned no_such_member = 438;
constexpr unsigned not_supported = 445;
constexpr unsigned no_named_arguments = 446;
constexpr unsigned no_such_argument = 448;
constexpr unsigned argument_needed = 449;
constexpr unsigned wrong_argument_count = 450;
}  // namespace errors

/// The result that carries such a number; a number that is a result already is returned as it is.
constexpr HRESULT result_of(std::uint32_t number) noexcept {
  constexpr std::uint32_t script_errors = 0x800A0000U;
  return static_cast<HRESULT>((number & 0x80000000U) != 0 ? number : script_errors | number);
}

/// Why a call by name was refused before it reached the member.
struct Refusal {
  HRESULT result;
  unsigned number;
  const char16_t* description;
};

/// The refusal behind the result of a call by name; null for other results.
const Refusal* refusal_of(HRESULT result) noexcept;

/// Raises the refusal of a member to callers that the host does not trust.
[[noreturn]] void raise_not_trusted();

/// Runs the action of a member of the component, and lets no exception out.
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
