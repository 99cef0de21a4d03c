#pragma once

#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include "qel/platform/RichEdit.h"
#include "qel/richtext/CharFormat.h"
#include "windows/Colors.h"

/// Converts the library's formats to those of the system's rich edit window.
namespace qel::windows {

/// The whole format. Black and the system's colour of text become the colour of text that has none,
/// so that such text stays readable in any scheme.
CHARFORMAT2W native_format(const richtext::CharFormat& format, const ShownColors& colors);

/// How a format that a window shows compares with the one that it is to show.
enum class Likeness {
  same,
  looks_alike,  ///< but for the offset and small capitals, which not every window paints
  different,
};
Likeness likeness(const CHARFORMAT2W& shown, const CHARFORMAT2W& wanted);

PARAFORMAT2 native_format(richtext::Alignment alignment);

}  // namespace qel::windows
