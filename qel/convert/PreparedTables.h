#pragma once

#include <string>

#include "qel/rtf/TableIndexes.h"

namespace qel::convert {

/// What conversions make of the tables of fonts and colours, in the lossless way.
struct PreparedTables {
  std::u16string rtf_head;
  std::string rtf_head_in_bytes;
  rtf::TableIndexes indexes_in_rtf;
};

}  // namespace qel::convert
