#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "qel/richtext/CharFormat.h"
#include "qel/richtext/Document.h"

namespace qel::richtext {

/// Whether the text is an RTF document: "{\rtf", after white space or a byte order mark at the
/// most.
bool is_rtf(std::u16string_view text);

/// The document that the text holds; plain text in the base format when it is not RTF. RTF takes
/// from it the font, size and colour of text for which it names none.
Document read_document(std::u16string_view text, const CharFormat& base);

/// The same with a blank in place of each break.
Document in_one_line(const Document& document);

/// What lies on a clipboard or is dragged: its RTF where it has any, else its text in the base
/// format; nothing when it has neither. A box for a single line gets blanks in place of breaks.
std::optional<Document> read_transfer(const std::optional<std::u16string>& rtf,
                                      const std::optional<std::u16string>& text,
                                      const CharFormat& base, bool in_one_line);

}  // namespace qel::richtext
