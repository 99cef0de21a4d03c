#include "qt/widget/FindIcons.h"

#include <QPainter>
#include <cstddef>

#include "qt/platform/FormatIcons.h"

namespace qel::qt {
namespace {

template <std::size_t Size>
void draw_line(QPainter& painter, const QPointF (&points)[Size]) {
  painter.drawPolyline(points, static_cast<int>(Size));
}

void draw(QPainter& painter, FindIcon icon) {
  switch (icon) {
    case FindIcon::previous:
      return draw_line(painter, {{3, 10.5}, {8, 5.5}, {13, 10.5}});
    case FindIcon::next:
      return draw_line(painter, {{3, 5.5}, {8, 10.5}, {13, 5.5}});
    case FindIcon::close:
      draw_line(painter, {{4, 4}, {12, 12}});
      return draw_line(painter, {{12, 4}, {4, 12}});
    case FindIcon::match_case:
      draw_line(painter, {{1.5, 12.5}, {4.75, 3.5}, {8, 12.5}});
      draw_line(painter, {{2.8, 9.5}, {6.7, 9.5}});
      painter.drawEllipse(QPointF(11.7, 10), 2.3, 2.5);
      return draw_line(painter, {{14.2, 7.3}, {14.2, 12.6}});
    case FindIcon::whole_words:
      draw_line(painter, {{4, 4}, {5.9, 9}, {8, 4.5}, {10.1, 9}, {12, 4}});
      return draw_line(painter, {{1.5, 10}, {1.5, 13}, {14.5, 13}, {14.5, 10}});
    case FindIcon::format:
      draw_line(painter, {{4.2, 11}, {8, 2.5}, {11.8, 11}});
      draw_line(painter, {{5.6, 8}, {10.4, 8}});
      return draw_line(painter, {{3, 14}, {13, 14}});
  }
}

}  // namespace

QIcon icon_of(FindIcon icon) {
  return icons::drawn([icon](QPainter& painter, const QColor& ink) {
    constexpr double width = 1.6;
    painter.setPen(QPen(ink, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw(painter, icon);
  });
}

}  // namespace qel::qt
