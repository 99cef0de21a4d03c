#pragma once

#include <string>

#include "qel/richtext/Document.h"

namespace qel::richtext {

/// The part of the document as RTF, with only the fonts, colours and words that it needs. Reading
/// it gives the same text, paragraphs and formats, except that offsets and sizes come back to
/// within a half-point. `base` names the font of a part without text.
std::u16string write_rtf(const Document& document, Extent extent, const CharFormat& base);

}  // namespace qel::richtext
