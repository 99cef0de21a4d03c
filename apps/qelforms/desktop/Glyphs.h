#pragma once

#include <QIcon>
#include <cstdint>

class QWidget;

namespace qel::forms {

enum class Glyph : std::uint8_t { add, search, sort, close, trash, tag };

/// A sign drawn in the colour of the widget's text, crisp at any size.
QIcon glyph(Glyph glyph, const QWidget& widget);

}  // namespace qel::forms
