#pragma once

#include <span>
#include <string>

#include "RecordStore.h"
#include "Tables.h"

namespace qel::forms {

enum class ExportFormat { qel, rtf, text, svg };

/// The records as one markup text: titles and bodies on lines of their own, with an empty line
/// between records. The formats of a text do not affect the next.
std::u16string document_of(std::span<const Record> records);

/// The same as the content of a file.
std::string exported(std::span<const Record> records, ExportFormat format,
                     const command::Tables& tables);

}  // namespace qel::forms
