#pragma once

#include <memory>
#include <string>

#include "qel/convert/HtmlTags.h"
#include "qel/convert/Options.h"
#include "qel/rtf/TableIndexes.h"

namespace qel::convert {

/// What conversions make of the tables of fonts and colours, in the lossless way.
struct PreparedTables {
  explicit PreparedTables(const Options& options);

  std::u16string rtf_head;
  std::string rtf_head_in_bytes;
  std::shared_ptr<const rtf::TableIndexes> indexes_in_rtf;
  std::shared_ptr<const HtmlTags<char>> html_tags;
};

/// What is prepared, or else made now.
std::shared_ptr<const rtf::TableIndexes> indexes_in_rtf(const Options& options);

}  // namespace qel::convert
