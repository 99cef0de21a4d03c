#pragma once

#include <windows.h>
// Needs the types of the other.
#include <richedit.h>

#include <string>

#include "qel/richtext/Document.h"
#include "windows/Colors.h"

namespace qel::windows {

/// The part of a document as RTF that the system's rich edit window reads at its caret, where text
/// would get the format `base`. It has only words that every version of the window knows; the
/// window may still drop some of the format, so that the caller has to look at what it has read.
std::string native_rtf(const richtext::Document& document, richtext::Extent extent,
                       const richtext::CharFormat& base, const ShownColors& colors);

}  // namespace qel::windows
