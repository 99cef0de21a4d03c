#pragma once

#include <string>
#include <vector>

#include "RecordStore.h"

namespace qel::forms {

/// A record with the text of a file in RTF, HTML, plain text or markup; each line stays a line.
///
/// A file that begins as RTF does is RTF. Otherwise the ending of its name tells: .html, .htm, .txt
/// or .qel; with any other, it is HTML where it begins with a tag that HTML knows, and plain text
/// where it does not. Text and markup are UTF-8, or UTF-16 behind a byte order mark; an invalid
/// byte is read in code page 1252.
///
/// The title is that of the document where it has one, else the name of the file without its
/// folder and ending. Raises a `std::runtime_error` that names the file where it is no text, and
/// for HTML where the library cannot read that.
Record imported(const std::string& bytes, const std::string& name);

/// The endings of files that can be imported, without the dot, for those who choose some.
std::vector<std::string> import_endings();

/// The markup of what was read from a file of markup: line breaks become line codes, except for one
/// at the end.
std::u16string markup_of_file(const std::string& bytes);

}  // namespace qel::forms
