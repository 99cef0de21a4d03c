#include "qt/widget/FormatPainter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include "qt/platform/BoxView.h"

namespace qel::qt {
namespace {

/// Whether Shift, with which keys select, is not held any longer.
bool ends_selecting(const QKeyEvent& released) {
  return released.key() == Qt::Key_Shift || !released.modifiers().testFlag(Qt::ShiftModifier);
}

}  // namespace

void FormatPainter::begin(State state) {
  if (!actions_.may_format()) return;
  if (!brush_.is_on()) qApp->installEventFilter(this);
  brush_.begin(*actions_.box()->control().CurrentRichTextBox(), state);
  emit state_changed();
}

void FormatPainter::end() {
  if (!brush_.is_on()) return;
  qApp->removeEventFilter(this);
  brush_.end();
  emit state_changed();
}

/// A selection is made when the button that sweeps over it, or the key, comes up.
bool FormatPainter::eventFilter(QObject* watched, QEvent* event) {
  const auto type = event->type();
  if (type == QEvent::ShortcutOverride || type == QEvent::KeyPress) {
    if (static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) return false;
    // The window would take the key to close itself.
    event->accept();
    if (type == QEvent::KeyPress) end();
    return true;
  }
  const QWidget* const view = actions_.box() == nullptr ? nullptr : edited_view(*actions_.box());
  if (view == nullptr) return false;
  const bool is_mouse = type == QEvent::MouseButtonRelease &&
                        watched == static_cast<const QTextEdit*>(view)->viewport();
  const bool is_key = type == QEvent::KeyRelease && watched == view &&
                      ends_selecting(*static_cast<QKeyEvent*>(event));
  if (is_mouse || is_key) {
    QMetaObject::invokeMethod(this, &FormatPainter::paint, Qt::QueuedConnection);
  }
  return false;
}

void FormatPainter::paint() {
  if (!brush_.is_on()) return;
  if (!actions_.may_format()) {
    end();
    return;
  }
  const auto box = actions_.box()->control().CurrentRichTextBox();
  if (brush_.paint(*box) && state() == State::once) end();
}

}  // namespace qel::qt
