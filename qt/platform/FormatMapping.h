#pragma once

#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <optional>

#include "qel/base/Color.h"
#include "qel/platform/RichEdit.h"
#include "qel/richtext/CharFormat.h"

class QColor;

/// Converts formats between the library and Qt's text documents.
namespace qel::qt {

QColor to_qt(Color color);
Color from_qt(const QColor& color);

/// Black and `window_text`, the system's colour of text, become no colour at all: such text is
/// shown in the palette's colour in any theme. An offset of any size becomes Qt's own raised or
/// lowered text.
QTextCharFormat to_qt(const richtext::CharFormat& format, Color window_text);
/// The other way round; `base` gives the font, size and colour where Qt's format has none.
richtext::CharFormat format_of(const QTextCharFormat& format, const richtext::CharFormat& base);
/// Left means where a paragraph begins: text from right to left begins on the right.
Qt::Alignment to_qt(richtext::Alignment alignment);
richtext::Alignment alignment_of(const QTextBlockFormat& format);

}  // namespace qel::qt
