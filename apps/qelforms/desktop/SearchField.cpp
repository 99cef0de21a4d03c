#include "SearchField.h"

#include <QKeyEvent>

#include "Glyphs.h"

namespace qel::forms {

SearchField::SearchField(QWidget* parent) : QLineEdit(parent) {
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
      QLineEdit::keyPressEvent(event);
  }
}

}  // namespace qel::forms
