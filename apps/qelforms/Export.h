#pragma once

#include <span>
#include <string>
#include <vector>

#include "RecordStore.h"
#include "Tables.h"

namespace qel::forms {

enum class ExportFormat { qel, rtf, html, text, svg, pdf };

/// A format by the name that users know it by, which is also the ending of its files.
struct ExportFormatName {
  ExportFormat format;
  const char* name;    ///< such as "rtf"; "text" for files that end in "txt"
  const char* ending;  ///< without the dot
};

/// All of them, in the order to offer them.
std::span<const ExportFormatName> export_formats();

/// The format that the ending of the file's name tells. Raises a `std::runtime_error` that lists
/// the endings that there are for any other.
ExportFormat format_of_file(const std::string& path);

/// The records as one markup text: titles and bodies on lines of their own, with an empty line
/// between records. The formats of a text do not affect the next.
std::u16string document_of(std::span<const Record> records);

/// The same as the content of a file. HTML has the titles as headings, and `name` as the title of
/// the document, or that of the first record where it is empty. PDF is made by what draws pages:
/// it raises a `std::runtime_error` here.
std::string exported(std::span<const Record> records, ExportFormat format,
                     const command::Tables& tables, const std::u16string& name = {});

}  // namespace qel::forms
