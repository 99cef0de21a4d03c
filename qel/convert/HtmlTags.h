#pragma once

#include <array>
#include <string>
#include <string_view>

#include "qel/convert/HtmlWriter.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::convert {

/// What HTML makes of the tables.
struct HtmlTags {
  HtmlTags(const QELIndexFonts& fonts, const QELIndexColors& colors, const HtmlOptions& options);

  /// What opens an element in that font: empty for an unused entry, which has no name.
  std::array<std::u16string, 10> fonts;
  std::array<std::u16string, 10> colors;
  std::u16string head;  ///< what stands before the text: nothing in a fragment
};

/// The entity for the character; empty for one that stands for itself.
std::u16string_view entity_of(char16_t c);

}  // namespace qel::convert
