#pragma once

#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <optional>
#include <string_view>

#include "qel/base/Color.h"
#include "qel/platform/RichEdit.h"
#include "qel/richtext/CharFormat.h"

class QColor;

/// Converts formats between the library and Qt's text documents.
namespace qel::qt {

QColor to_qt(Color color);
Color from_qt(const QColor& color);

/// The colours that decide how others are shown.
struct Scheme {
  Color window_text = 0;            ///< the system's colour of text
  std::optional<Color> background;  ///< on which others are to be readable, if at all

  friend bool operator==(const Scheme&, const Scheme&) = default;
};

/// Black and the system's colour of text become no colour at all: such text is shown in the
/// palette's colour in any theme. An offset of any size becomes Qt's own raised or lowered text.
QTextCharFormat to_qt(const richtext::CharFormat& format, const Scheme& scheme);
/// Whether that font has signs in the places of letters, which few systems have: text in it is
/// shown by the signs' own characters in another font.
bool is_symbol_font(std::u16string_view name);
/// The font that shows text in a font of that name.
QString shown_family(std::u16string_view name);
/// The character that is shown for one in a symbol font.
char16_t shown_symbol(char16_t unit);
/// The other way round; `base` gives the font, size and colour where Qt's format has none.
richtext::CharFormat format_of(const QTextCharFormat& format, const richtext::CharFormat& base);
/// Left means where a paragraph begins: text from right to left begins on the right.
Qt::Alignment to_qt(richtext::Alignment alignment);
richtext::Alignment alignment_of(const QTextBlockFormat& format);

}  // namespace qel::qt
