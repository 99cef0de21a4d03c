#pragma once

#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <optional>

#include "qel/base/Color.h"
#include "qel/platform/RichEdit.h"
#include "qel/richtext/CharFormat.h"

/// Converts the library's formats to those of the system's rich edit window.
namespace qel::windows {

/// The value of a colour, which may be a system colour.
COLORREF color_value(Color color);

/// The whole format. Black and the system's colour of text become the window's own text colour, so
/// that such text stays readable in any scheme; on a background of the host's own that colour must
/// be given (`automatic`).
CHARFORMAT2W native_format(const richtext::CharFormat& format, std::optional<COLORREF> automatic);

/// How a format that a window shows compares with the one that it is to show.
enum class Likeness {
  same,
  looks_alike,  ///< but for the offset and small capitals, which not every window paints
  different,
};
Likeness likeness(const CHARFORMAT2W& shown, const CHARFORMAT2W& wanted);

PARAFORMAT2 native_format(richtext::Alignment alignment);

/// The colour of text that is readable on a background of the host's own; empty on the system's.
std::optional<COLORREF> text_color_on(Color background);

}  // namespace qel::windows
