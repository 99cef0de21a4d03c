#pragma once

#include <span>
#include <string>
#include <vector>

#include "RecordStore.h"
#include "Tables.h"
#include "qel/qt/Printing.h"

namespace qel::forms {

/// The records to print, one section each, and how.
std::vector<qt::PrintSection> print_sections(std::span<const Record> records);
qt::PrintOptions print_options(const command::Tables& tables, const std::u16string& title);

/// The records as a PDF document; for a program that has no `QGuiApplication` and no display.
/// Raises a `std::runtime_error` where none can be made.
std::string pdf_without_window(std::span<const Record> records, const command::Tables& tables,
                               const std::u16string& title);

}  // namespace qel::forms
