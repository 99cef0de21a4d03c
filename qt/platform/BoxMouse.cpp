// A box's view under the mouse, and what is dragged with it.

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QDragMoveEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include "qt/platform/BoxDrag.h"
#include "qt/platform/BoxView.h"

namespace qel::qt {

namespace {

constexpr std::int32_t box_drags = 1;

struct Pointer {
  explicit Pointer(const QMouseEvent& event)
      : x(static_cast<float>(event.position().x())),
        y(static_cast<float>(event.position().y())),
        shift(shift_mask(event.modifiers())) {}

  float x;
  float y;
  std::int16_t shift;
};

}  // namespace

bool BoxView::is_on_selection(QPoint point) const {
  const QPointF in_document(point.x() + horizontalScrollBar()->value(),
                            point.y() + verticalScrollBar()->value());
  const int position = document()->documentLayout()->hitTest(in_document, Qt::ExactHit);
  const Span selection = selected();
  return position >= selection.start && position < selection.end;
}

void BoxView::mousePressEvent(QMouseEvent* event) {
  const Busy busy(*this);
  const Pointer at(*event);
  after_double_click_ = false;
  listener_->on_mouse_down(button_mask(event->button()), at.shift, at.x, at.y);
  const QPoint point = event->position().toPoint();
  const bool on_selection = event->button() == Qt::LeftButton &&
                            event->modifiers() == Qt::NoModifier && is_on_selection(point);
  may_drag_from_.reset();
  if (on_selection && appearance_.drag_mode == box_drags) {
    may_drag_from_ = point;
    event->accept();
    return;
  }
  // Qt would begin a drag of its own.
  if (on_selection) setTextCursor(cursorForPosition(point));
  QTextEdit::mousePressEvent(event);
}

void BoxView::mouseMoveEvent(QMouseEvent* event) {
  const Busy busy(*this);
  const Pointer at(*event);
  listener_->on_mouse_move(button_mask(event->buttons()), at.shift, at.x, at.y);
  if (!may_drag_from_) {
    QTextEdit::mouseMoveEvent(event);
    return;
  }
  const QPoint way = event->position().toPoint() - *may_drag_from_;
  if (way.manhattanLength() < QApplication::startDragDistance()) return;
  may_drag_from_.reset();
  start_drag();
}

void BoxView::mouseReleaseEvent(QMouseEvent* event) {
  const Busy busy(*this);
  const Pointer at(*event);
  if (may_drag_from_) {
    may_drag_from_.reset();
    setTextCursor(cursorForPosition(event->position().toPoint()));
  } else {
    QTextEdit::mouseReleaseEvent(event);
  }
  listener_->on_mouse_up(button_mask(event->button()), at.shift, at.x, at.y);
  const bool clicks = event->button() == Qt::LeftButton && !after_double_click_;
  after_double_click_ = false;
  if (clicks) listener_->on_click();
}

void BoxView::mouseDoubleClickEvent(QMouseEvent* event) {
  const Busy busy(*this);
  after_double_click_ = true;
  listener_->on_double_click();
  QTextEdit::mouseDoubleClickEvent(event);
}

void BoxView::start_drag() {
  const Busy busy(*this);
  drag_->start();
}

void BoxView::dragEnterEvent(QDragEnterEvent* event) {
  const Busy busy(*this);
  drag_->enter(*event);
}

void BoxView::dragMoveEvent(QDragMoveEvent* event) {
  const Busy busy(*this);
  drag_->move(*event);
  if (!drag_->would_insert()) return;
  // Qt shows where a drop would go.
  const Qt::DropAction action = event->dropAction();
  QTextEdit::dragMoveEvent(event);
  event->setDropAction(action);
  event->accept();
}

void BoxView::dragLeaveEvent(QDragLeaveEvent* event) {
  const Busy busy(*this);
  drag_->leave();
  QTextEdit::dragLeaveEvent(event);
}

void BoxView::dropEvent(QDropEvent* event) {
  const Busy busy(*this);
  drag_->drop(*event);
  QDragLeaveEvent leaves;
  QTextEdit::dragLeaveEvent(&leaves);
}

}  // namespace qel::qt
