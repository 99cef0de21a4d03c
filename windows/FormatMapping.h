#pragma once

#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <optional>

#include "qel/base/Color.h"
#include "qel/platform/RichEdit.h"
#include "qel/richtext/CharFormat.h"

/// Formats of the library as the system's rich edit window takes them.
namespace qel::windows {

/// The value of a colour that may be a system's.
COLORREF color_value(Color color);

/// All of a format. Black and the system's colour of text become the window's own colour of text,
/// so that such text stays readable in any scheme; on a background of the host's own that colour
/// has to be named (`automatic`).
CHARFORMAT2W native_format(const richtext::CharFormat& format, std::optional<COLORREF> automatic);

PARAFORMAT2 native_format(richtext::Alignment alignment);

/// The colour of text that is readable on a background of the host's own; nothing on the system's.
std::optional<COLORREF> text_color_on(Color background);

}  // namespace qel::windows
