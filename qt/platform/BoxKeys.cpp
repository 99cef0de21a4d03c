// How a box's view handles the keyboard.

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTextBlock>
#include <QTextLayout>
#include <utility>

#include "qel/base/Scoped.h"
#include "qt/platform/BoxHandling.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using namespace keys;

namespace {

/// Whether the key is Shift, Ctrl or Alt.
bool is_modifier(std::int16_t key_code) {
  constexpr std::int16_t shift = 16;
  constexpr std::int16_t alt = 18;
  return key_code >= shift && key_code <= alt;
}

}  // namespace

bool BoxView::event(QEvent* event) {
  if (box_ == nullptr) return QTextEdit::event(event);
  if (event->type() == QEvent::ShortcutOverride) {
    auto& key = static_cast<QKeyEvent&>(*event);
    key.setAccepted(takes_shortcut(key));
    return true;
  }
  if (event->type() == QEvent::KeyPress && leave_by_tab(static_cast<QKeyEvent&>(*event))) {
    return true;
  }
  return QTextEdit::event(event);
}

/// Keys that listeners may handle come to the box, even where the window's menus use them.
bool BoxView::takes_shortcut(const QKeyEvent& event) const {
  const Stroke stroke = stroke_of(event);
  const auto [key_code, shift] = stroke;
  constexpr std::u16string_view plain = u"BIU";
  constexpr std::u16string_view shifted = u"BKPHTO";
  const bool is_style =
      shift == ctrl_key && plain.find(static_cast<char16_t>(key_code)) != std::u16string_view::npos;
  const bool is_shifted = shift == ctrl_shift && shifted.find(static_cast<char16_t>(key_code)) !=
                                                     std::u16string_view::npos;
  const bool is_quote =
      shift == ctrl_key && (key_code == grave_accent_key || key_code == apostrophe_key);
  const bool is_function = key_code >= function_key(1) && key_code <= function_key(10);
  const bool closes_window = shift == alt_key && key_code == function_key(4);
  const bool is_index = is_function && (shift == ctrl_key || shift == alt_key) && !closes_window;
  const bool is_plain = shift == ctrl_key && key_code == space_key;
  const bool is_editor = shift == shift_key && key_code == function_key(2);
  const bool is_zoom = zoom_direction(event).has_value();
  const bool is_own = !typed_text(event).isEmpty() || moves_natively(stroke) ||
                      box::Keyboard::knows(key_code, shift) ||
                      (key_code == enter_key && box_->appearance().multiline);
  return is_style || is_shifted || is_plain || is_quote || is_index || is_editor || is_zoom ||
         is_own;
}

/// Tab alone goes to the next control, but the listener is still told of it.
bool BoxView::leave_by_tab(QKeyEvent& event) {
  const auto [key_code, shift] = stroke_of(event);
  if (!box::Keyboard::leaves_box(key_code, shift)) return false;
  const Handling handling(*this);
  std::int16_t left = key_code;
  std::int16_t mask = shift;
  box_->listener().on_key_down(left, mask);
  if (left != 0) focusNextPrevChild((shift & shift_key) == 0);
  event.accept();
  return true;
}

void BoxView::keyPressEvent(QKeyEvent* event) {
  const Handling handling(*this);
  const Stroke stroke = stroke_of(*event);
  if (event->key() == Qt::Key_Control) links_.put_ctrl(true);
  event->accept();
  if (stroke.key_code == 0) {
    event->ignore();
    return;
  }
  if (composes() && !is_modifier(stroke.key_code)) complete_composition();
  Stroke left = stroke;
  box_->listener().on_key_down(left.key_code, left.shift);
  if (left.key_code == 0) return;
  const QString text = typed_text(*event);
  const bool is_same = left.key_code == stroke.key_code && left.shift == stroke.shift;
  if (!text.isEmpty()) {
    keyboard_.type(view_of(text));
    ensureCursorVisible();
  } else if (is_same) {
    act_on_key(event, left);
  } else {
    QKeyEvent other(QEvent::KeyPress, qt_key_of(left.key_code), modifiers_of(left.shift));
    act_on_key(&other, left);
    event->setAccepted(other.isAccepted());
  }
}

void BoxView::keyReleaseEvent(QKeyEvent* event) {
  const Handling handling(*this);
  Stroke stroke = stroke_of(*event);
  if (event->key() == Qt::Key_Control) links_.put_ctrl(false);
  const bool tells = stroke.key_code != 0 && !event->isAutoRepeat();
  if (tells) box_->listener().on_key_up(stroke.key_code, stroke.shift);
  QTextEdit::keyReleaseEvent(event);
}

/// Whether Qt moves the caret: it depends on the layout of lines, or on the direction of the text.
bool BoxView::moves_natively(Stroke stroke) const {
  const auto [key_code, shift] = stroke;
  const bool is_plain_arrow =
      (key_code == left_key || key_code == right_key) && (shift & (ctrl_key | alt_key)) == 0;
  return is_plain_arrow || box::Keyboard::moves_by_lines(key_code, shift);
}

void BoxView::act_on_key(QKeyEvent* event, Stroke stroke) {
  if (const auto direction = zoom_direction(*event)) {
    zoom_by(*direction);
    event->accept();
    return;
  }
  if (moves_natively(stroke)) {
    // With Ctrl, Qt would do nothing.
    QKeyEvent moves(QEvent::KeyPress, event->key(), event->modifiers() & ~Qt::ControlModifier);
    QTextEdit::keyPressEvent(&moves);
    take_selection();
    event->accept();
    return;
  }
  std::int16_t key_code = stroke.key_code;
  const bool is_arrow = key_code == left_key || key_code == right_key;
  if (is_arrow && textCursor().block().textDirection() == Qt::RightToLeft) {
    key_code = key_code == left_key ? right_key : left_key;
  }
  // A dialog's default button may want Enter, a menu a key with Alt.
  if (!keyboard_.act_on_key(key_code, stroke.shift)) return event->ignore();
  if (box_ != nullptr) ensureCursorVisible();
}

// Composed text is not part of the text until it is committed.

void BoxView::compose(const QInputMethodEvent& event) {
  if (composition_.at != textCursor()) end_composition();
  const Scoped showing(showing_, showing_ + 1);
  // The caret belongs to the box.
  QList<QInputMethodEvent::Attribute> attributes = event.attributes();
  attributes.removeIf([](const QInputMethodEvent::Attribute& attribute) {
    return attribute.type == QInputMethodEvent::Selection;
  });
  QInputMethodEvent shown(event.preeditString(), attributes);
  QTextEdit::inputMethodEvent(&shown);
  composition_ = {textCursor(), QTextCursor(textCursor().block()), event.preeditString()};
  composition_.at.setKeepPositionOnInsert(true);
  composition_.paragraph.setKeepPositionOnInsert(true);
}

/// No longer shows what is being composed.
void BoxView::end_composition() {
  if (!composes()) return;
  const Scoped showing(showing_, showing_ + 1);
  const auto ended = std::exchange(composition_, {});
  for (const QTextBlock& block : {ended.at.block(), ended.paragraph.block()}) {
    block.layout()->setPreeditArea(-1, {});
    block.layout()->clearFormats();
    document()->markContentsDirty(block.position(), block.length());
  }
  // The caret is shown again. Only now: before, this would also erase a selection.
  QInputMethodEvent ends({}, {{QInputMethodEvent::Cursor, 0, 1, {}}});
  QTextEdit::inputMethodEvent(&ends);
}

void BoxView::reset_input_method() {
  const Scoped showing(showing_, showing_ + 1);
  if (hasFocus()) QGuiApplication::inputMethod()->reset();
}

/// Types what has been composed so far.
void BoxView::complete_composition() {
  const Handling handling(*this, Handling::Foreign::leave);
  if (hasFocus()) QGuiApplication::inputMethod()->commit();
  if (!composes()) return;
  const QString composed = composition_.text;
  end_composition();
  reset_input_method();
  take_foreign_edit();
  if (box_->may_edit()) keyboard_.type(view_of(composed));
}

void BoxView::inputMethodEvent(QInputMethodEvent* event) {
  event->accept();
  if (showing_ > 0 || box_ == nullptr) return;
  const Handling handling(*this, Handling::Foreign::leave);
  const bool commits = !event->commitString().isEmpty() || event->replacementLength() > 0;
  if (commits || event->preeditString().isEmpty()) end_composition();
  if (commits) take_committed(*event);
  if (event->preeditString().isEmpty()) return;
  if (!composes()) {
    take_foreign_edit();
    // The composition replaces the selection, and both are undone together.
    if (box_->may_edit()) box_->erase(box_->selected().extent(), box::Box::Kind::typing);
  }
  // The listener may have ended editing, or have selected something.
  if (box_->may_edit() && box_->selected().is_empty()) {
    compose(*event);
  } else {
    end_composition();
  }
}

void BoxView::take_committed(const QInputMethodEvent& event) {
  take_foreign_edit();
  if (!box_->may_edit()) return;
  if (event.replacementLength() > 0) {
    const int start = textCursor().position() + event.replacementStart();
    const auto position = [this](int at) {
      return static_cast<std::size_t>(box_position(*document(), std::max(at, 0)));
    };
    box_->put_selection({position(start), position(start + event.replacementLength())});
    if (event.commitString().isEmpty()) {
      box_->erase(box_->selected().extent(), box::Box::Kind::other);
    }
  }
  keyboard_.type(view_of(event.commitString()));
  ensureCursorVisible();
}

}  // namespace qel::qt
