#pragma once

#include <cstdint>
#include <set>
#include <string>

#include "qel/richtext/CharFormat.h"
#include "qel/rtf/TableIndexes.h"

namespace qel::rtf {

/// Collects what the tables lack of a text's formats.
class LackingFormats {
 public:
  void add(const richtext::CharFormat& format, const TableIndexes& indexes) {
    if (indexes.find_font(format.font_name) < 0) fonts_.insert(format.font_name);
    if (indexes.find_color(format.color) < 0) colors_.insert(format.color);
    sizes_.insert(format.size);
  }

  /// Distinct fonts and colours that are in no table.
  std::uint64_t fonts() const { return fonts_.size(); }
  std::uint64_t colors() const { return colors_.size(); }
  /// Distinct sizes beyond the one that any text has.
  std::uint64_t sizes() const { return sizes_.empty() ? 0 : sizes_.size() - 1; }

 private:
  std::set<std::u16string> fonts_;
  std::set<Color> colors_;
  std::set<float> sizes_;
};

}  // namespace qel::rtf
