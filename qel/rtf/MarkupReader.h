#pragma once

#include <array>
#include <string>
#include <string_view>

#include "qel/base/Color.h"
#include "qel/richtext/CharFormat.h"
#include "qel/richtext/Document.h"
#include "qel/rtf/RTFParser.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::rtf {

/// What the codes of markup mean.
struct MarkupFormats {
  std::array<std::u16string, 10> fonts;
  std::array<Color, 10> colors = {};
  float size = 0;         ///< of all text
  Way way = Way::stated;  ///< in which markup is read
};

/// The formats that text has once `RTFParser::QELToRTF` has written it and that RTF is read; `base`
/// supplies what the tables leave open. Raises the errors of `QELToRTF`.
MarkupFormats markup_formats(const RTFParser& parser, QELIndexFonts& fonts,
                             const QELIndexColors& colors, const richtext::CharFormat& base);

/// The document that the markup becomes that way, but without going through RTF. Accepts any text.
richtext::Document read_markup(std::u16string_view markup, const MarkupFormats& formats);

}  // namespace qel::rtf
