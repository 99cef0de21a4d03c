#include "Glyphs.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPointer>
#include <QWidget>

namespace qel::forms {
namespace {

/// The lines of a sign in a square of 16 units.
QPainterPath lines_of(Glyph glyph) {
  QPainterPath path;
  const auto line = [&path](qreal x1, qreal y1, qreal x2, qreal y2) {
    path.moveTo(x1, y1);
    path.lineTo(x2, y2);
  };
  switch (glyph) {
    case Glyph::add:
      line(8, 3, 8, 13);
      line(3, 8, 13, 8);
      break;
    case Glyph::search:
      path.addEllipse(QPointF(7, 7), 4.5, 4.5);
      line(10.2, 10.2, 14, 14);
      break;
    case Glyph::sort:
      line(3, 4.5, 13, 4.5);
      line(3, 8, 10, 8);
      line(3, 11.5, 7, 11.5);
      break;
    case Glyph::close:
      line(4.5, 4.5, 11.5, 11.5);
      line(11.5, 4.5, 4.5, 11.5);
      break;
    case Glyph::trash:
      line(3, 4.5, 13, 4.5);
      line(6.5, 4.5, 6.5, 2.5);
      line(6.5, 2.5, 9.5, 2.5);
      line(9.5, 2.5, 9.5, 4.5);
      line(4.5, 4.5, 5, 13.5);
      line(5, 13.5, 11, 13.5);
      line(11, 13.5, 11.5, 4.5);
      break;
    case Glyph::tag:
      path.addPolygon(QPolygonF({{2.5, 3}, {8, 3}, {13.5, 8.5}, {8.5, 13.5}, {2.5, 8}}));
      path.closeSubpath();
      path.addEllipse(QPointF(5.5, 6), 0.8, 0.8);
      break;
  }
  return path;
}

class Engine : public QIconEngine {
 public:
  Engine(Glyph glyph, const QWidget* widget) : glyph_(glyph), widget_(widget) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
    constexpr qreal units = 16;
    constexpr qreal width = 1.4;
    constexpr qreal disabled_opacity = 0.4;
    const QPalette palette = widget_ == nullptr ? QApplication::palette() : widget_->palette();
    const qreal scale = qMin(place.width(), place.height()) / units;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(place.center() + QPointF(0.5, 0.5));
    painter->scale(scale, scale);
    painter->translate(-units / 2, -units / 2);
    if (mode == QIcon::Disabled) painter->setOpacity(disabled_opacity);
    painter->setPen(QPen(palette.color(QPalette::Active, QPalette::WindowText), width,
                         Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPath(lines_of(glyph_));
    painter->restore();
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }
  QIconEngine* clone() const override { return new Engine(*this); }

 private:
  Glyph glyph_;
  QPointer<const QWidget> widget_;
};

}  // namespace

QIcon glyph(Glyph glyph, const QWidget& widget) { return QIcon(new Engine(glyph, &widget)); }

}  // namespace qel::forms
