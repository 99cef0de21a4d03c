#pragma once

#include <windows.h>

#include <new>

namespace qel::windows {

/// Runs `act` for a call from the system. No exception leaves it: what `act` throws becomes a
/// failure.
template <class Act>
HRESULT guarded(Act act) noexcept {
  try {
    return act();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace qel::windows
