#include "FlatField.h"

#include <QEvent>
#include <QPalette>

namespace qel::forms {

FlatField::FlatField(QWidget* parent) : QLineEdit(parent) {
  setFrame(false);
  QPalette colors = palette();
  colors.setColor(QPalette::Base, Qt::transparent);
  setPalette(colors);
  follow_colors();
}

void FlatField::changeEvent(QEvent* event) {
  QLineEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) follow_colors();
}

/// Half of the text's strength, which is what Qt takes, is too little contrast on white.
void FlatField::follow_colors() {
  constexpr float strength = 0.62F;
  QPalette colors = palette();
  QColor quiet = colors.color(QPalette::Text);
  quiet.setAlphaF(strength);
  if (colors.color(QPalette::PlaceholderText) == quiet) return;
  colors.setColor(QPalette::PlaceholderText, quiet);
  setPalette(colors);
}

}  // namespace qel::forms
