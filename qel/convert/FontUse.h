#pragma once

#include <cstdint>

#include "qel/model/RunSink.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::convert {

/// Takes note of the fonts that texts have.
class FontUse {
 public:
  void add(const style_codes::CodeState& state) {
    fonts_ |= 1U << static_cast<unsigned>(state.font);
  }
  /// How many of them are unused entries of the table.
  std::uint64_t lacking(const QELIndexFonts& fonts) const {
    std::uint64_t count = 0;
    for (std::int16_t index = 1; index <= 9; ++index) {
      const std::u16string name = fonts.get_Font(index);
      const bool is_used = (fonts_ >> static_cast<unsigned>(index) & 1U) != 0;
      if (is_used && (name.empty() || name == QELIndexFonts::unused)) ++count;
    }
    return count;
  }

 private:
  unsigned fonts_ = 0;
};

}  // namespace qel::convert
