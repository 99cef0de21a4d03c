#pragma once

#include <QByteArray>
#include <QString>
#include <string>
#include <string_view>

#include "qel/richtext/Document.h"

/// HTML as programs exchange it.
namespace qel::qt {

/// The text of HTML that a program offers: in UTF-8 or, with a mark or without, in UTF-16.
std::u16string decode_html(const QByteArray& bytes);

/// HTML as a document, by `QEL::html` where the library was built with it, else by Qt. `base` gives
/// the font, size and colour of text for which the HTML names none.
richtext::Document read_html(std::u16string_view html, const richtext::CharFormat& base);
/// The same by Qt.
richtext::Document read_html_by_qt(const QString& html, const richtext::CharFormat& base);

}  // namespace qel::qt
