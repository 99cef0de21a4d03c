#pragma once

#include <string_view>

#include "qel/convert/Options.h"
#include "qel/richtext/CharFormat.h"
#include "qel/richtext/DocumentSink.h"
#include "qel/richtext/DroppedParts.h"

namespace qel::html {

/// Whether the bytes look like HTML: they begin with a document type, with the header of HTML on a
/// clipboard ("Version:1.0 ... StartHTML:"), or with a tag that HTML knows, after at most white
/// space, comments and a byte order mark.
bool is_html(std::string_view bytes);

/// Reads HTML, whole or a part, as a browser shows it. Nothing in it is an error: what makes no
/// sense as HTML is text. Takes time linear in the input and bounded stack; elements are counted as
/// nested up to some hundred deep, text in more is read all the same.
///
/// Understood: bold, italic, underlined, struck-through, raised and lowered text, small capitals,
/// fonts, sizes and colours, by elements, attributes, styles and simple rules of style sheets;
/// headings (bold), paragraphs and other blocks, line breaks, alignment, preformatted text; lists,
/// whose marks and indentation become text; tables, with tabs between the cells of a line; the
/// texts of links and in place of pictures. Of HTML from a clipboard, only the marked fragment.
/// Dropped: scripts, styles, comments, what is in the head, and what is not displayed.
///
/// The bytes are UTF-16 or UTF-8 where they begin with a mark, else in the encoding that a "meta"
/// element names, else UTF-8, in which an invalid byte is read in code page 1252.
///
/// `base` gives the font, size and colour of text for which the HTML names none, and other sizes
/// are relative to its size.
///
/// Returns what has been dropped. Of tables, cells and rows count, of pictures those whose text
/// stands in their place, too.
richtext::DroppedParts read_html(std::string_view bytes, const richtext::CharFormat& base,
                                 richtext::DocumentSink& sink);

/// The two as conversions take them.
convert::HtmlReader reader();

}  // namespace qel::html
