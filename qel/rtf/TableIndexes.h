#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/base/Color.h"
#include "qel/model/QELCode.h"
#include "qel/model/StyleCodes.h"
#include "qel/richtext/CharFormat.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::rtf {

/// Where a text comes from.
enum class Origin : std::uint8_t {
  rtf,  ///< a box that was loaded with RTF: taken as it is
  box,  ///< any other box: only what its RTF would say counts
};

/// Finds the fonts and colours of a text in the tables. The stated way knows entries 1 to 3, the
/// lossless way all of them, and fonts whatever the case of their names; all others count as the
/// default.
class TableIndexes {
 public:
  TableIndexes(const QELIndexFonts& fonts, const QELIndexColors& colors, Origin origin, Way way);

  Way way() const { return way_; }
  int font(std::u16string_view name) const { return std::max(find_font(name), 0); }
  int color(Color color) const { return std::max(find_color(color), 0); }
  /// -1 where the table lacks the font or colour.
  int find_font(std::u16string_view name) const;
  int find_color(Color color) const;
  /// In twips, positive above the line.
  std::int32_t offset(const richtext::CharFormat& format) const;
  /// All that markup can say of a format.
  style_codes::CodeState state(const richtext::CharFormat& format) const;

 private:
  std::size_t count() const { return way_ == Way::lossless ? names_.size() : 4; }

  Origin origin_;
  Way way_;
  std::array<std::u16string, 10> names_;
  std::array<Color, 10> colors_ = {};
};

}  // namespace qel::rtf
