#pragma once

#include <string>

#include "qel/richtext/Document.h"

namespace qel::richtext {

/// The part of the document as RTF: only the fonts, colours and words that it needs. Reading it
/// gives the same text, paragraphs and formats; an offset loses what is less than a half-point, a
/// size what is less than half a point. `base` names the font of a document that has no text.
std::u16string write_rtf(const Document& document, Extent extent, const CharFormat& base);

}  // namespace qel::richtext
