#pragma once

#include <string>
#include <string_view>

namespace qel::rtf {

/// The RTF with the words for typographic characters as code page escapes, and raised and lowered
/// text as offsets. The words are replaced wherever they occur, also at the beginning of longer
/// ones.
std::u16string preprocess(std::u16string_view rtf);

/// The RTF as a conversion box gets it: a code that stands in it as text, if `protect_codes`, with
/// two backslashes for its slash; each escaped backslash as a code page escape, so that what
/// follows it is no control word; and then preprocessed, but for two things. The typographic
/// characters stand as such, since their escapes mean something else in other code pages than 1252,
/// and binary data is left alone. `storage` holds the result where it differs from `rtf`.
std::u16string_view prepare(std::u16string_view rtf, bool protect_codes, std::u16string& storage);

}  // namespace qel::rtf
