#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QString>
#include <cstdint>
#include <functional>

class QPainter;

/// Icons that are drawn in the colours of the palette, at any size.
namespace qel::qt::icons {

enum class Sign : std::uint8_t {
  bold,
  italic,
  underline,
  strike_out,
  raised,
  lowered,
  small_capitals,
  font,
  color,
  plain,
  undo,
  redo,
  brush,
};

/// Draws in a square of 16 by 16, in a colour that can be seen.
using Draw = std::function<void(QPainter& painter, const QColor& ink)>;
QIcon drawn(Draw draw);

/// `color` is that of the bar below a sign of a colour; that of text for none.
QIcon sign(Sign sign, QColor color = {});
/// A field of that colour.
QIcon swatch(const QColor& color);
/// The font in which a menu, whose own font is `base`, shows the name of a family: in its own face,
/// unless that is a font of symbols.
QFont menu_font(const QString& family, const QFont& base);

}  // namespace qel::qt::icons
