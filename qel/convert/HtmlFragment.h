#pragma once

#include <string>

#include "qel/richtext/Document.h"

namespace qel::convert {

/// The document as a piece of HTML to be pasted into another program's text: a text without breaks
/// and alignment as its characters alone, else each paragraph as a `<p>` without distance to the
/// next. Fonts are named, and colours other than black; sizes are those of the place where it is
/// pasted. What `BasicHtmlWriter` says of elements and blanks holds here.
std::u16string html_fragment(const richtext::Document& document);

}  // namespace qel::convert
