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
  const platform::RichEdit& box = *actions_.box()->control().CurrentRichTextBox();
  static_cast<richtext::FormatFields&>(format_) = box.format();
  // Users do not choose sizes.
  format_.size.reset();
  taken_from_ = box.selection();
  if (state_ == State::off) qApp->installEventFilter(this);
  state_ = state;
  emit state_changed();
}

void FormatPainter::end() {
  if (state_ == State::off) return;
  qApp->removeEventFilter(this);
  state_ = State::off;
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
  if (state_ == State::off) return;
  if (!actions_.may_format()) {
    end();
    return;
  }
  const auto box = actions_.box()->control().CurrentRichTextBox();
  const platform::Range selection = box->selection();
  if (selection.length == 0 || selection == taken_from_) return;
  box->change_format(format_);
  taken_from_ = selection;
  if (state_ == State::once) end();
}

}  // namespace qel::qt
