#pragma once

#include <bit>
#include <cstdint>

#include "qel/convert/Report.h"
#include "qel/model/RunSink.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::convert {

/// Takes note of the formats that texts have.
class FormatUse {
 public:
  void add(const style_codes::CodeState& state) {
    attributes_ |= state.attributes;
    fonts_ |= 1U << static_cast<unsigned>(state.font);
    colors_ |= 1U << static_cast<unsigned>(state.color);
  }
  /// How many of the fonts are unused entries of the table.
  std::uint64_t fonts_lacking(const QELIndexFonts& fonts) const {
    std::uint64_t count = 0;
    for (std::int16_t index = 1; index <= 9; ++index) {
      const std::u16string name = fonts.get_Font(index);
      const bool is_used = (fonts_ >> static_cast<unsigned>(index) & 1U) != 0;
      if (is_used && (name.empty() || name == QELIndexFonts::unused)) ++count;
    }
    return count;
  }
  /// Counts what the older code set does not have: it has two fonts and two colours.
  void count_lacking_in_v6(Dropped& dropped) const {
    constexpr unsigned first_lacking = 3;
    const auto beyond = [](unsigned indexes) {
      return static_cast<std::uint64_t>(std::popcount(indexes >> first_lacking));
    };
    dropped.fonts += beyond(fonts_);
    dropped.colors += beyond(colors_);
    if ((attributes_ & style_codes::strike_through_bit) != 0) ++dropped.formats;
  }

 private:
  unsigned attributes_ = 0;
  unsigned fonts_ = 0;
  unsigned colors_ = 0;
};

}  // namespace qel::convert
