// Dragging from a box's view and over it.

#include <QDrag>
#include <QDropEvent>
#include <QPointer>

#include "qt/platform/BoxHandling.h"

namespace qel::qt {

using namespace platform;

namespace {

Qt::DropActions actions_of(std::int32_t effects) {
  Qt::DropActions actions;
  actions.setFlag(Qt::CopyAction, (effects & copy_drop) != 0);
  actions.setFlag(Qt::MoveAction, (effects & move_drop) != 0);
  return actions;
}

std::int32_t effects_of(Qt::DropActions actions) {
  return (actions.testFlag(Qt::CopyAction) ? copy_drop : no_drop) |
         (actions.testFlag(Qt::MoveAction) ? move_drop : no_drop);
}

Qt::DropAction action_of(std::int32_t effect) {
  if ((effect & move_drop) != 0) return Qt::MoveAction;
  return (effect & copy_drop) != 0 ? Qt::CopyAction : Qt::IgnoreAction;
}

box::DropPoint point_of(const QDropEvent& event) {
  return {button_mask(event.buttons()), shift_mask(event.modifiers()),
          static_cast<float>(event.position().x()), static_cast<float>(event.position().y())};
}

}  // namespace

/// The desktop chooses the pointer, whatever the listener says about cursors.
void BoxView::carry(box::Drag& drag) {
  auto* const dragged = new QDrag(this);  // deletes itself and the data
  auto* const carried = new TransferMimeData(drag.data());
  dragged->setMimeData(carried);
  const QPointer<TransferMimeData> kept = carried;
  connect(dragged, &QDrag::actionChanged, dragged, [&drag](Qt::DropAction action) {
    std::int32_t effect = effects_of(action);
    bool default_cursors = true;
    drag.give_feedback(effect, default_cursors);
  });
  const std::int32_t allowed = drag.allowed_effects();
  drag.end(effects_of(dragged->exec(actions_of(allowed), action_of(allowed))));
  if (kept) kept->end();
}

void BoxView::accept_drop(QDropEvent& event, std::int32_t effect) const {
  event.setDropAction(action_of(effect));
  event.setAccepted(effect != no_drop);
}

void BoxView::dragEnterEvent(QDragEnterEvent* event) {
  const Handling handling(*this);
  DragData& dragged = dropped_.look_at(*event->mimeData());
  accept_drop(*event, drop_.enter(dragged, effects_of(event->possibleActions()), point_of(*event)));
  // Qt would not ask again after a refusal here.
  event->accept();
}

void BoxView::dragMoveEvent(QDragMoveEvent* event) {
  const Handling handling(*this);
  accept_drop(*event, drop_.move(effects_of(event->possibleActions()), point_of(*event)));
  if (!drop_.would_insert()) return;
  // Qt marks where a drop would go.
  const Qt::DropAction action = event->dropAction();
  QTextEdit::dragMoveEvent(event);
  event->setDropAction(action);
  event->accept();
}

void BoxView::dragLeaveEvent(QDragLeaveEvent* event) {
  const Handling handling(*this);
  drop_.leave();
  QTextEdit::dragLeaveEvent(event);
}

void BoxView::dropEvent(QDropEvent* event) {
  const Handling handling(*this);
  DragData& dragged = dropped_.look_at(*event->mimeData());
  const QPoint at = event->position().toPoint();
  accept_drop(*event, drop_.drop(dragged, effects_of(event->possibleActions()), point_of(*event),
                                 [this, at] { return position_at(at); }));
  // Removes that mark.
  QDragLeaveEvent leaves;
  QTextEdit::dragLeaveEvent(&leaves);
}

}  // namespace qel::qt
