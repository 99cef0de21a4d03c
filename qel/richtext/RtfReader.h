#pragma once

#include <cstddef>
#include <string_view>

#include "qel/richtext/CharFormat.h"
#include "qel/richtext/DocumentSink.h"

namespace qel::richtext {

/// Reads RTF, as far as it can be read: broken or truncated input gives what came before. Takes
/// time linear in the input and memory in proportion to the open groups, fonts and colours, and
/// does not recurse.
///
/// Understood: font and colour tables; bold, italic, small capitals, every kind of underline and
/// strike-through, raised and lowered text, fonts, colours, sizes, \plain; paragraphs, lines, tabs,
/// table cells and rows, alignment; named and coded characters in every code page the system knows;
/// pictures of symbol fonts; results of fields and of embedded objects; text boxes, on lines of
/// their own. Dropped: all other destinations, pictures, field instructions, hidden and deleted
/// text.
///
/// HTML that is wrapped in RTF (\fromhtml1) reads as the RTF around it, which has the breaks,
/// formats and characters of all tags and entities. The tags themselves are one more dropped
/// destination.
///
/// `base` gives the font, size and colour of text for which the document names none (or a colour
/// entry that is empty, the automatic colour).
void read_rtf(std::u16string_view rtf, const CharFormat& base, DocumentSink& sink);

/// Reads a part of a document, which need not be one group; input that begins with "{\rtf" is a
/// document and ends with its group. While the sink is called, `token` is the position in `rtf` of
/// the text, word, symbol or brace read last.
void read_rtf_fragment(std::u16string_view rtf, const CharFormat& base, DocumentSink& sink,
                       std::size_t& token);

}  // namespace qel::richtext
