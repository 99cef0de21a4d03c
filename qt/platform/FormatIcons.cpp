#include "qt/platform/FormatIcons.h"

#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <utility>

#include "qel/platform/MeasuringSurface.h"
#include "qel/qt/QtPlatform.h"
#include "qt/platform/Text.h"

namespace qel::qt::icons {
namespace {

/// Icons are drawn in a square of this side.
constexpr double side = 16;

/// Draws anew for each size, so that every screen gets sharp lines.
class Engine : public QIconEngine {
 public:
  explicit Engine(Draw draw) : draw_(std::move(draw)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const QPalette palette = QGuiApplication::palette();
    const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
    const double scale = qMin(rect.width(), rect.height()) / side;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.center() + QPointF(0.5, 0.5));
    painter->scale(scale, scale);
    painter->translate(-side / 2, -side / 2);
    if (mode == QIcon::Disabled) painter->setOpacity(disabled_opacity);
    draw_(*painter, palette.color(QPalette::Active, role));
    painter->restore();
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap drawn(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return drawn;
  }
  QIconEngine* clone() const override { return new Engine(draw_); }

 private:
  // The disabled colours of some dark palettes cannot be seen.
  static constexpr double disabled_opacity = 0.35;

  Draw draw_;
};

QFont letter_font(int pixels) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  font.setPixelSize(pixels);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

/// The outline of a text whose base line begins at a point.
QPainterPath outline(const QFont& font, const QString& text, QPointF at) {
  QPainterPath path;
  path.addText(at, font, text);
  return path;
}

/// Fills a text in the middle between left and right.
void draw_letter(QPainter& painter, const QColor& ink, const QFont& font, const QString& text) {
  constexpr double base_line = 13;
  QPainterPath path = outline(font, text, {0, base_line});
  const QRectF box = path.boundingRect();
  painter.fillPath(path.translated(side / 2 - box.center().x(), 0), ink);
}

void draw_line(QPainter& painter, const QColor& ink, double y) {
  constexpr double from = 2.5;
  painter.fillRect(QRectF(from, y, side - 2 * from, 1), ink);
}

constexpr int letter_size = 14;

void draw_bold(QPainter& painter, const QColor& ink) {
  QFont font = letter_font(letter_size);
  font.setWeight(QFont::Black);
  draw_letter(painter, ink, font, QStringLiteral("B"));
}

void draw_italic(QPainter& painter, const QColor& ink) {
  QFont font(QStringLiteral("serif"));
  font.setPixelSize(letter_size + 1);
  font.setItalic(true);
  draw_letter(painter, ink, font, QStringLiteral("I"));
}

void draw_underline(QPainter& painter, const QColor& ink) {
  constexpr double lifted = -1.5;
  painter.translate(0, lifted);
  draw_letter(painter, ink, letter_font(letter_size - 1), QStringLiteral("U"));
  painter.translate(0, -lifted);
  draw_line(painter, ink, 14);
}

void draw_strike_out(QPainter& painter, const QColor& ink) {
  draw_letter(painter, ink, letter_font(letter_size), QStringLiteral("S"));
  draw_line(painter, ink, 7.5);
}

/// An x with a small 2, whose base line is there.
void draw_script(QPainter& painter, const QColor& ink, double base_line) {
  constexpr int small_size = 8;
  painter.fillPath(outline(letter_font(letter_size), QStringLiteral("x"), {1.5, 12}), ink);
  QFont small = letter_font(small_size);
  small.setWeight(QFont::DemiBold);
  painter.fillPath(outline(small, QStringLiteral("2"), {10, base_line}), ink);
}

void draw_small_capitals(QPainter& painter, const QColor& ink) {
  constexpr int small_size = 9;
  painter.fillPath(outline(letter_font(letter_size - 1), QStringLiteral("A"), {0.5, 13}), ink);
  QFont small = letter_font(small_size);
  small.setWeight(QFont::DemiBold);
  painter.fillPath(outline(small, QStringLiteral("A"), {9, 13}), ink);
}

void draw_color(QPainter& painter, const QColor& ink, const QColor& color) {
  constexpr double lifted = -2.5;
  painter.translate(0, lifted);
  draw_letter(painter, ink, letter_font(letter_size - 1), QStringLiteral("A"));
  painter.translate(0, -lifted);
  const QRectF bar(2, 12.5, 12, 3);
  painter.fillRect(bar, color.isValid() ? color : ink);
}

void draw_font(QPainter& painter, const QColor& ink) {
  QFont font(QStringLiteral("serif"));
  font.setPixelSize(letter_size + 1);
  draw_letter(painter, ink, font, QStringLiteral("F"));
}

QPen line(const QColor& ink, double width) {
  return {ink, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

void draw_plain(QPainter& painter, const QColor& ink) {
  painter.fillPath(outline(letter_font(letter_size - 1), QStringLiteral("A"), {0.5, 12}), ink);
  painter.setPen(line(ink, 1.4));
  painter.drawLine(QPointF(10, 10), QPointF(14.5, 14.5));
  painter.drawLine(QPointF(14.5, 10), QPointF(10, 14.5));
}

/// An arrow that turns back to where lines begin.
void draw_undo(QPainter& painter, const QColor& ink, bool mirrored) {
  if (mirrored) {
    painter.translate(side, 0);
    painter.scale(-1, 1);
  }
  QPainterPath path({3, 6});
  path.lineTo(9.5, 6);
  path.arcTo(QRectF(6, 6, 7.5, 7.5), 90, -180);
  path.lineTo(6, 13.5);
  path.moveTo(6.5, 2.5);
  path.lineTo(3, 6);
  path.lineTo(6.5, 9.5);
  painter.strokePath(path, line(ink, 1.6));
}

/// A painter's brush, its handle at the top where lines end.
void draw_brush(QPainter& painter, const QColor& ink) {
  painter.setPen(line(ink, 1.8));
  painter.drawLine(QPointF(13.8, 2.2), QPointF(9.2, 6.8));
  QPainterPath ferrule({7.2, 5.4});
  ferrule.lineTo(10.6, 8.8);
  painter.strokePath(ferrule, line(ink, 1.6));
  QPainterPath bristles({6, 6.8});
  bristles.lineTo(9.2, 10);
  bristles.cubicTo(8.6, 13, 5.4, 14.6, 1.6, 14);
  bristles.cubicTo(3.4, 12.6, 2.6, 8.6, 6, 6.8);
  painter.fillPath(bristles, ink);
}

bool is_mirrored() { return QGuiApplication::layoutDirection() == Qt::RightToLeft; }

Draw drawing(Sign sign, const QColor& color) {
  switch (sign) {
    case Sign::bold:
      return draw_bold;
    case Sign::italic:
      return draw_italic;
    case Sign::underline:
      return draw_underline;
    case Sign::strike_out:
      return draw_strike_out;
    case Sign::raised:
      return [](QPainter& painter, const QColor& ink) { draw_script(painter, ink, 7); };
    case Sign::lowered:
      return [](QPainter& painter, const QColor& ink) { draw_script(painter, ink, 15); };
    case Sign::small_capitals:
      return draw_small_capitals;
    case Sign::font:
      return draw_font;
    case Sign::color:
      return [color](QPainter& painter, const QColor& ink) { draw_color(painter, ink, color); };
    case Sign::plain:
      return draw_plain;
    case Sign::undo:
      return [](QPainter& painter, const QColor& ink) { draw_undo(painter, ink, is_mirrored()); };
    case Sign::redo:
      return [](QPainter& painter, const QColor& ink) { draw_undo(painter, ink, !is_mirrored()); };
    case Sign::brush:
      break;
  }
  return draw_brush;
}

}  // namespace

QIcon drawn(Draw draw) { return QIcon(new Engine(std::move(draw))); }

QIcon sign(Sign sign, QColor color) { return QIcon(new Engine(drawing(sign, color))); }

QIcon swatch(const QColor& color) {
  return QIcon(new Engine([color](QPainter& painter, const QColor& ink) {
    constexpr int faint = 110;
    QColor edge = ink;
    edge.setAlpha(faint);
    painter.setBrush(color);
    painter.setPen(QPen(edge, 1));
    painter.drawRoundedRect(QRectF(1.5, 1.5, side - 3, side - 3), 2, 2);
  }));
}

QFont menu_font(const QString& family, const QFont& base) {
  const auto fonts = QtPlatform().create_measuring_surface();
  fonts->put_TestFont(view_of(family));
  QFont font = base;
  if (fonts->test_font_character_set() != platform::CharacterSet::symbol) {
    font.setFamilies({family});
  }
  return font;
}

}  // namespace qel::qt::icons
