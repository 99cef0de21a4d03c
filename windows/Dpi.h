#pragma once

#include <windows.h>

/// Sizes on screens of any resolution.
namespace qel::windows {

/// Sizes in pixels are given for this many dots per inch.
inline constexpr int usual_dpi = USER_DEFAULT_SCREEN_DPI;

/// The dots per inch for which a window draws; those of the screen on systems where all windows
/// have the same.
int dpi_of(HWND window);

inline int scaled(int pixels, int dpi) { return MulDiv(pixels, dpi, usual_dpi); }

/// The font of messages and dialogs.
LOGFONTW message_font(int dpi);

}  // namespace qel::windows
