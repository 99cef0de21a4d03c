#pragma once

#include <QString>
#include <span>
#include <string>
#include <vector>

#include "RecordStore.h"
#include "Tables.h"
#include "qel/qt/Printing.h"

namespace qel::forms {

/// The records as they are printed, each with its title above it.
std::vector<qt::PrintSection> sections_of(std::span<const Record> records);
/// A single record's title is that of the document; several have a common one, on every page.
qt::PrintOptions print_options(std::span<const Record> records, const command::Tables& tables);
/// The records as a PDF. Needs a `QGuiApplication`, but neither a window nor a display.
std::string pdf_of(std::span<const Record> records, const command::Tables& tables);

}  // namespace qel::forms
