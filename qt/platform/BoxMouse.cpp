// How a box's view handles the mouse.

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <utility>

#include "qt/platform/BoxHandling.h"

namespace qel::qt {

namespace {

box::Mouse::Event told(const QMouseEvent& event, Qt::MouseButtons buttons) {
  return {button_mask(buttons), shift_mask(event.modifiers()),
          static_cast<float>(event.position().x()), static_cast<float>(event.position().y())};
}

}  // namespace

QPoint BoxView::origin() const {
  const QScrollBar& across = *horizontalScrollBar();
  const int x = isRightToLeft() ? across.maximum() - across.value() : across.value();
  return {x, verticalScrollBar()->value()};
}

std::optional<std::size_t> BoxView::character_at(QPoint place) const {
  const int position = document()->documentLayout()->hitTest(place + origin(), Qt::ExactHit);
  if (position < 0) return {};
  return static_cast<std::size_t>(box_position(*document(), position));
}

bool BoxView::is_on_selection(QPoint point) const {
  const std::optional<std::size_t> position = character_at(point);
  const box::Selection selected = selection_in_window();
  return position && *position >= selected.start() && *position < selected.end();
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
  pressed_link_.reset();
  if (event->button() == Qt::LeftButton && event->modifiers() == Qt::ControlModifier) {
    if (const auto link = links_.link_under(point)) pressed_link_ = link->url;
  }
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
  if (box_ == nullptr) return;
  links_.point_at(event->position().toPoint(), event->modifiers() == Qt::ControlModifier);
}

void BoxView::mouseReleaseEvent(QMouseEvent* event) {
  const Handling handling(*this);
  if (mouse_.release()) {
    box_->put_caret(position_at(event->position().toPoint()), false);
  } else {
    QTextEdit::mouseReleaseEvent(event);
  }
  mouse_.released(told(*event, event->button()));
  const auto pressed = std::exchange(pressed_link_, {});
  if (!pressed || event->button() != Qt::LeftButton) return;
  const auto link = links_.link_under(event->position().toPoint());
  if (link && link->url == *pressed) open_link(*pressed);
}

void BoxView::mouseDoubleClickEvent(QMouseEvent* event) {
  const Handling handling(*this);
  mouse_.double_click();
  QTextEdit::mouseDoubleClickEvent(event);
  keyboard_.select_word(position_at(event->position().toPoint()));
}

}  // namespace qel::qt
