#pragma once

#include <string_view>

#include "qel/platform/CharFormat.h"
#include "qel/richtext/Document.h"

namespace qel::richtext {

/// Whether the text is an RTF document: "{\rtf", after white space or a byte order mark at the
/// most.
bool is_rtf(std::u16string_view text);

/// The document that the text holds; plain text in the base format when it is not RTF.
Document read_document(std::u16string_view text, const platform::CharFormat& base);

}  // namespace qel::richtext
