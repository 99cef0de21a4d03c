#include "SearchField.h"

#include <QKeyEvent>
#include <QPainter>

#include "Glyphs.h"
#include "RecordDelegate.h"

namespace qel::forms {

SearchField::SearchField(QWidget* parent) : FlatField(parent) {
  constexpr int above = 4;
  setTextMargins(0, above, 0, above);
  setPlaceholderText(tr("Search"));
  setAccessibleName(tr("Search titles and texts"));
  setClearButtonEnabled(true);
  addAction(glyph(Glyph::search, *this), LeadingPosition);
}

void SearchField::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      emit entered();
      return;
    case Qt::Key_Escape:
      clear();
      emit left();
      return;
    default:
      FlatField::keyPressEvent(event);
  }
}

/// The frames of some styles cannot be seen on a dark list.
void SearchField::paintEvent(QPaintEvent* event) {
  constexpr double tint = 0.07;
  constexpr qreal radius = 6;
  const QPalette colors = parentWidget()->palette();
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(hasFocus() ? QPen(colors.color(QPalette::Highlight)) : QPen(Qt::NoPen));
  painter.setBrush(mixed(colors.color(QPalette::Base), colors.color(QPalette::Text), tint));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  FlatField::paintEvent(event);
}

}  // namespace qel::forms
