#pragma once

#include <string>
#include <string_view>

namespace qel::rtf {

/// The RTF with the words for typographic characters as code page escapes, and raised and lowered
/// text as offsets. The words are replaced wherever they occur, even at the beginning of longer
/// ones.
std::u16string preprocess(std::u16string_view rtf);

/// The RTF as a conversion box gets it. With `protect_codes`, each code that stands in it as text
/// has two backslashes for its slash; each escaped backslash becomes a code page escape, so that
/// what follows it is not a control word; and the rest is preprocessed, with two differences:
/// typographic characters are written as themselves, since their escapes mean something else in
/// code pages other than 1252, and binary data is left alone. Of a text that is no RTF only the
/// codes are protected. `storage` holds the result where it differs from `rtf`.
std::u16string_view prepare(std::u16string_view rtf, bool protect_codes, std::u16string& storage);

}  // namespace qel::rtf
