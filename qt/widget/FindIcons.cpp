#include "qt/widget/FindIcons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <array>

namespace qel::qt {
namespace {

/// Draws in a square of 16 by 16.
class Engine : public QIconEngine {
 public:
  explicit Engine(FindIcon icon) : icon_(icon) {}

  QIconEngine* clone() const override { return new Engine(icon_); }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(), size), mode, state);
    return pixmap;
  }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
             QIcon::State /*state*/) override {
    constexpr double side = 16;
    const QPalette::ColorGroup group =
        mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    constexpr double width = 1.6;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.topLeft());
    painter->scale(rect.width() / side, rect.height() / side);
    painter->setPen(QPen(QGuiApplication::palette().color(group, QPalette::ButtonText), width,
                         Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw(*painter);
    painter->restore();
  }

 private:
  void draw(QPainter& painter) const {
    switch (icon_) {
      case FindIcon::previous:
        return draw_line(painter, {{3, 10.5}, {8, 5.5}, {13, 10.5}});
      case FindIcon::next:
        return draw_line(painter, {{3, 5.5}, {8, 10.5}, {13, 5.5}});
      case FindIcon::close:
        painter.drawLine(QPointF(4, 4), QPointF(12, 12));
        return painter.drawLine(QPointF(12, 4), QPointF(4, 12));
      case FindIcon::match_case:
        draw_line(painter, {{1.5, 12.5}, {4.75, 3.5}, {8, 12.5}});
        painter.drawLine(QPointF(2.8, 9.5), QPointF(6.7, 9.5));
        painter.drawEllipse(QPointF(11.7, 10), 2.3, 2.5);
        return painter.drawLine(QPointF(14.2, 7.3), QPointF(14.2, 12.6));
      case FindIcon::whole_words:
        draw_line(painter, {{4, 4}, {5.9, 9}, {8, 4.5}, {10.1, 9}});
        painter.drawLine(QPointF(10.1, 9), QPointF(12, 4));
        draw_line(painter, {{1.5, 10}, {1.5, 13}, {14.5, 13}});
        return painter.drawLine(QPointF(14.5, 13), QPointF(14.5, 10));
      case FindIcon::format:
        draw_line(painter, {{4.2, 11}, {8, 2.5}, {11.8, 11}});
        painter.drawLine(QPointF(5.6, 8), QPointF(10.4, 8));
        return painter.drawLine(QPointF(3, 14), QPointF(13, 14));
    }
  }

  template <std::size_t Size>
  static void draw_line(QPainter& painter, const QPointF (&points)[Size]) {
    painter.drawPolyline(points, static_cast<int>(Size));
  }

  FindIcon icon_;
};

}  // namespace

QIcon icon_of(FindIcon icon) { return QIcon(new Engine(icon)); }

}  // namespace qel::qt
