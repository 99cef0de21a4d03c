// A box's view at the keyboard.

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QTextCursor>
#include <algorithm>
#include <iterator>

#include "qt/platform/BoxView.h"
#include "qt/platform/FormatMapping.h"
#include "qt/platform/Text.h"

namespace qel::qt {

using namespace keys;

bool BoxView::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    auto& key = static_cast<QKeyEvent&>(*event);
    if (takes_shortcut(key)) {
      key.accept();
      return true;
    }
  }
  if (event->type() == QEvent::KeyPress && leave_by_tab(static_cast<QKeyEvent&>(*event))) {
    return true;
  }
  return QTextEdit::event(event);
}

/// Keys that listeners know come to the box, whatever the window's menus make of them.
bool BoxView::takes_shortcut(const QKeyEvent& event) const {
  const auto [key_code, shift] = stroke_of(event);
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
  const bool is_editor = shift == shift_key && key_code == function_key(2);
  return is_style || is_shifted || is_quote || is_index || is_editor;
}

/// Tab alone goes to the next control; whoever listens is told all the same.
bool BoxView::leave_by_tab(QKeyEvent& event) {
  const auto [key_code, shift] = stroke_of(event);
  if (key_code != tab_key || (shift & ~shift_key) != 0) return false;
  const Busy busy(*this);
  std::int16_t left = key_code;
  std::int16_t mask = shift;
  listener_->on_key_down(left, mask);
  if (left != 0) focusNextPrevChild((shift & shift_key) == 0);
  event.accept();
  return true;
}

void BoxView::keyPressEvent(QKeyEvent* event) {
  const Busy busy(*this);
  const Stroke stroke = stroke_of(*event);
  if (stroke.key_code == 0) {
    QTextEdit::keyPressEvent(event);
    return;
  }
  Stroke left = stroke;
  listener_->on_key_down(left.key_code, left.shift);
  if (left.key_code == 0) {
    event->accept();
    return;
  }
  const QString text = typed_text(*event);
  if (!text.isEmpty()) {
    type_key(event, text);
  } else if (left.key_code == stroke.key_code && left.shift == stroke.shift) {
    act_on_key(event, left);
  } else {
    QKeyEvent other(QEvent::KeyPress, qt_key_of(left.key_code), modifiers_of(left.shift));
    act_on_key(&other, left);
    event->setAccepted(other.isAccepted());
  }
}

void BoxView::keyReleaseEvent(QKeyEvent* event) {
  const Busy busy(*this);
  Stroke stroke = stroke_of(*event);
  const bool tells = stroke.key_code != 0 && !event->isAutoRepeat();
  if (tells) listener_->on_key_up(stroke.key_code, stroke.shift);
  QTextEdit::keyReleaseEvent(event);
}

void BoxView::type_key(QKeyEvent* event, const QString& text) {
  const auto typed = told_text(text);
  const bool by_qt = typed == text && !textCursor().hasSelection() && text.size() == 1;
  if (by_qt) {
    QTextEdit::keyPressEvent(event);
  } else if (typed) {
    type(*typed);
  }
  event->accept();
}

/// The characters as the listener leaves them; nothing when it leaves none.
std::optional<QString> BoxView::told_text(const QString& text) {
  QString left;
  for (const QChar unit : text) {
    auto character = static_cast<std::int16_t>(unit.unicode());
    listener_->on_key_press(character);
    if (character != 0) left.append(QChar(static_cast<char16_t>(character)));
  }
  return left.isEmpty() ? std::nullopt : std::optional(left);
}

void BoxView::type(const QString& text) {
  if (isReadOnly()) return;
  QTextCursor cursor = textCursor();
  cursor.insertText(text, format_for(selected()));
  setTextCursor(cursor);
}

/// What is typed next takes the format of what was erased.
void BoxView::act_on_key(QKeyEvent* event, Stroke stroke) {
  const std::optional<Span> erased = erased_by(stroke);
  const QTextCharFormat format = erased ? format_for(*erased) : QTextCharFormat();
  const int before = document()->characterCount();
  press_key(event, stroke);
  if (erased && document()->characterCount() < before) setCurrentCharFormat(format);
}

/// What begins where the key would erase.
std::optional<Span> BoxView::erased_by(Stroke stroke) const {
  const bool cuts = stroke.key_code == letter_key('X') && stroke.shift == ctrl_key;
  const bool erases_back = stroke.key_code == backspace_key && (stroke.shift & alt_key) == 0;
  const bool erases = cuts || erases_back || stroke.key_code == delete_key;
  const Span span = selected();
  if (!erases || isReadOnly()) return {};
  if (!span.is_empty()) return span;
  if (erases_back && span.start > 0) return Span{span.start - 1, span.start};
  const bool erases_ahead = !erases_back && span.start < whole(*document()).end;
  return erases_ahead ? std::optional(Span{span.start, span.start + 1}) : std::nullopt;
}

void BoxView::press_key(QKeyEvent* event, Stroke stroke) {
  const bool is_done = run_command(stroke);
  const std::int16_t own = control_character(stroke);
  std::int16_t character = own;
  if (own != 0) listener_->on_key_press(character);
  event->accept();
  if (character != own) {
    if (character != 0) type(QChar(static_cast<char16_t>(character)));
  } else if (!is_done) {
    press_own(event, stroke, own);
  }
}

/// The key's own work; `character` is the control character that it stands for, or 0.
void BoxView::press_own(QKeyEvent* event, Stroke stroke, std::int16_t character) {
  const bool breaks = character == enter_key || character == tab_key;
  // Qt would type what comes with Alt, which may be a menu's.
  const bool is_menus = (stroke.shift & alt_key) != 0 && !event->text().isEmpty();
  if (breaks && appearance_.multiline && !isReadOnly()) {
    type(character == enter_key ? QStringLiteral("\n") : QStringLiteral("\t"));
  } else if (breaks || is_menus) {
    // A dialog's default button may want Enter.
    event->ignore();
  } else {
    QTextEdit::keyPressEvent(event);
  }
}

/// The keys are the same on every desktop.
bool BoxView::run_command(Stroke stroke) {
  struct Row {
    std::int16_t key_code;
    std::int16_t shift;
    void (QTextEdit::*act)();
  };
  static constexpr Row rows[] = {{letter_key('A'), ctrl_key, &QTextEdit::selectAll},
                                 {letter_key('C'), ctrl_key, &QTextEdit::copy},
                                 {insert_key, ctrl_key, &QTextEdit::copy},
                                 {letter_key('X'), ctrl_key, &QTextEdit::cut},
                                 {delete_key, shift_key, &QTextEdit::cut},
                                 {letter_key('V'), ctrl_key, &QTextEdit::paste},
                                 {insert_key, shift_key, &QTextEdit::paste},
                                 {letter_key('Z'), ctrl_key, &QTextEdit::undo},
                                 {backspace_key, alt_key, &QTextEdit::undo},
                                 {letter_key('Y'), ctrl_key, &QTextEdit::redo}};
  const auto row = std::find_if(std::begin(rows), std::end(rows), [&](const Row& candidate) {
    return candidate.key_code == stroke.key_code && candidate.shift == stroke.shift;
  });
  if (row == std::end(rows)) return false;
  const bool changes = row->act != &QTextEdit::selectAll && row->act != &QTextEdit::copy;
  if (!changes || !isReadOnly()) (this->*row->act)();
  return true;
}

void BoxView::inputMethodEvent(QInputMethodEvent* event) {
  const Busy busy(*this);
  const bool composes = event->commitString().isEmpty() && event->replacementLength() == 0;
  if (composes) {
    // Qt would take the selection out in silence.
    const bool begins = !event->preeditString().isEmpty() && textCursor().hasSelection();
    if (begins && !isReadOnly()) replace(selected(), {});
    // Text that is still being composed is no part of the document.
    change(Telling::never, [&] { QTextEdit::inputMethodEvent(event); });
    return;
  }
  QString left = told_text(event->commitString()).value_or(QString());
  if (isReadOnly()) left.clear();
  if (!appearance_.multiline) left.replace(QLatin1Char('\n'), QLatin1Char(' '));
  if (event->replacementLength() == 0 && textCursor().hasSelection()) {
    // In the format of what it replaces, as a key is.
    if (!left.isEmpty()) type(left);
    event->accept();
    return;
  }
  event->setCommitString(left, event->replacementStart(), event->replacementLength());
  QTextEdit::inputMethodEvent(event);
}

}  // namespace qel::qt
