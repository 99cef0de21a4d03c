// How a box's view handles the mouse.

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>

#include "qt/platform/BoxHandling.h"

namespace qel::qt {

namespace {

box::Mouse::Event told(const QMouseEvent& event, Qt::MouseButtons buttons) {
  return {button_mask(buttons), shift_mask(event.modifiers()),
          static_cast<float>(event.position().x()), static_cast<float>(event.position().y())};
}

}  // namespace

bool BoxView::is_on_selection(QPoint point) const {
  const QPointF in_document(point.x() + horizontalScrollBar()->value(),
                            point.y() + verticalScrollBar()->value());
  const int position = document()->documentLayout()->hitTest(in_document, Qt::ExactHit);
  const QTextCursor cursor = textCursor();
  return position >= cursor.selectionStart() && position < cursor.selectionEnd();
}

std::size_t BoxView::position_at(QPoint point) const {
  return static_cast<std::size_t>(box_position(*document(), cursorForPosition(point).position()));
}

void BoxView::mousePressEvent(QMouseEvent* event) {
  const Handling handling(*this);
  settle();
  const QPoint point = event->position().toPoint();
  const bool on_selection = event->button() == Qt::LeftButton && is_on_selection(point);
  pressed_at_ = point;
  if (!mouse_.press(told(*event, event->button()), on_selection)) {
    event->accept();
    return;
  }
  // Otherwise Qt would begin a drag of its own.
  if (on_selection && event->modifiers() == Qt::NoModifier) {
    box_->put_caret(position_at(point), false);
  }
  QTextEdit::mousePressEvent(event);
}

void BoxView::mouseMoveEvent(QMouseEvent* event) {
  const Handling handling(*this);
  const QPoint way = event->position().toPoint() - pressed_at_.value_or(QPoint());
  const bool is_far = way.manhattanLength() >= QApplication::startDragDistance();
  if (mouse_.move(told(*event, event->buttons()), is_far)) QTextEdit::mouseMoveEvent(event);
}

void BoxView::mouseReleaseEvent(QMouseEvent* event) {
  const Handling handling(*this);
  if (mouse_.release()) {
    box_->put_caret(position_at(event->position().toPoint()), false);
  } else {
    QTextEdit::mouseReleaseEvent(event);
  }
  mouse_.released(told(*event, event->button()));
}

void BoxView::mouseDoubleClickEvent(QMouseEvent* event) {
  const Handling handling(*this);
  mouse_.double_click();
  QTextEdit::mouseDoubleClickEvent(event);
  keyboard_.select_word(position_at(event->position().toPoint()));
}

}  // namespace qel::qt
