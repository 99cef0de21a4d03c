#pragma once

#include <windows.h>

extern "C" IMAGE_DOS_HEADER __ImageBase;

namespace qel::windows {

/// The program or library that this code is a part of.
inline HINSTANCE module_handle() { return reinterpret_cast<HINSTANCE>(&__ImageBase); }

}  // namespace qel::windows
