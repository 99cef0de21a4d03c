#pragma once

#include <span>
#include <string>

#include "RecordStore.h"
#include "Tables.h"

namespace qel::forms {

/// The records as a PDF document of A4 pages, laid out as `exported` does in the other formats.
std::string pdf_of(std::span<const Record> records, const command::Tables& tables);

}  // namespace qel::forms
