#pragma once

#include <windows.h>

/// Sizes on screens of any resolution.
namespace qel::windows {

/// Sizes in pixels are given for this many dots per inch.
inline constexpr int usual_dpi = USER_DEFAULT_SCREEN_DPI;

/// The dots per inch for which a window draws; those of the screen on systems where all windows
/// have the same.
int dpi_of(HWND window);
/// The dots per inch that device contexts of the screen have, whatever the window.
int dpi_of_screen();

/// The system tells it to a window whose parent has come to a screen of another resolution; headers
/// for older systems do not have it.
inline constexpr UINT dpi_changed_after_parent = 0x02E3;

inline int scaled(int pixels, int dpi) { return MulDiv(pixels, dpi, usual_dpi); }

/// The font of messages and dialogs.
LOGFONTW message_font(int dpi);

}  // namespace qel::windows
