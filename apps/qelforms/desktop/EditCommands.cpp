#include "EditCommands.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>

#include "qel/qt/TextBox.h"

namespace qel::forms {
namespace {

/// The keys by which a box or field knows the commands.
QKeySequence key_of(int command) {
  static const QKeySequence keys[] = {{Qt::CTRL | Qt::Key_Z}, {Qt::CTRL | Qt::Key_Y},
                                      {Qt::CTRL | Qt::Key_X}, {Qt::CTRL | Qt::Key_C},
                                      {Qt::CTRL | Qt::Key_V}, {Qt::CTRL | Qt::SHIFT | Qt::Key_V},
                                      {Qt::Key_Delete},       {Qt::CTRL | Qt::Key_A}};
  return keys[command];
}

/// The widget of the box that shows the focused widget; null for another field.
qt::TextBox* box_of(QWidget* widget) {
  for (; widget != nullptr; widget = widget->parentWidget()) {
    if (auto* const box = qobject_cast<qt::TextBox*>(widget)) return box;
  }
  return nullptr;
}

}  // namespace

EditCommands::EditCommands(QWidget& window) : QObject(&window), window_(window) {
  connect(qApp, &QApplication::focusChanged, this,
          [this](QWidget*, QWidget* now) { follow_focus(now); });
  connect(QApplication::clipboard(), &QClipboard::dataChanged, this, &EditCommands::show_state);
}

void EditCommands::add_to(QMenu& menu) {
  const QString captions[] = {tr("&Undo"),  tr("&Redo"),          tr("Cu&t"),    tr("&Copy"),
                              tr("&Paste"), tr("Paste as Te&xt"), tr("&Delete"), tr("Select &All")};
  for (int i = 0; i < command_count; ++i) {
    const auto command = static_cast<Command>(i);
    if (command == cut || command == select_all) menu.addSeparator();
    // The keys are only shown: what has the focus handles them.
    actions_[static_cast<std::size_t>(i)] =
        menu.addAction(captions[i] + QChar(u'\t') + key_of(i).toString(QKeySequence::NativeText));
    connect(actions_[static_cast<std::size_t>(i)], &QAction::triggered, this,
            [this, command] { run(command); });
  }
  connect(&menu, &QMenu::aboutToShow, this, &EditCommands::show_state);
  show_state();
}

void EditCommands::follow_focus(QWidget* now) {
  if (now == nullptr || !window_.isAncestorOf(now)) return;
  if (box_of(now) == nullptr && qobject_cast<QLineEdit*>(now) == nullptr) return;
  if (auto* const field = qobject_cast<QLineEdit*>(now)) {
    connect(field, &QLineEdit::selectionChanged, this, &EditCommands::show_state,
            Qt::UniqueConnection);
  }
  target_ = now;
  show_state();
}

void EditCommands::show_state() {
  const std::array<bool, command_count> possible = this->possible();
  for (std::size_t i = 0; i < possible.size(); ++i) {
    if (actions_[i] != nullptr) actions_[i]->setEnabled(possible[i]);
  }
}

std::array<bool, EditCommands::command_count> EditCommands::possible() const {
  bool edits = false;
  bool selects = false;
  bool has_text = false;
  bool undoes = false;
  bool redoes = false;
  if (const qt::TextBox* const widget = box_of(target_)) {
    const QELTextbox& control = widget->control();
    edits = control.get_AllowEdits();
    selects = control.get_SelLength() > 0;
    has_text = !control.get_Text().empty();
    undoes = control.CurrentRichTextBox()->can_undo();
    redoes = control.CurrentRichTextBox()->can_redo();
  } else if (const auto* const field = qobject_cast<QLineEdit*>(target_)) {
    edits = !field->isReadOnly();
    selects = field->hasSelectedText();
    has_text = !field->text().isEmpty();
    undoes = field->isUndoAvailable();
    redoes = field->isRedoAvailable();
  }
  const QMimeData* const clipboard = QApplication::clipboard()->mimeData();
  const bool may_paste = edits && clipboard != nullptr && !clipboard->formats().isEmpty();
  return {undoes,    redoes,    edits && selects, selects,
          may_paste, may_paste, edits && selects, has_text};
}

void EditCommands::run(Command command) const {
  if (target_ == nullptr) return;
  auto* const field = qobject_cast<QLineEdit*>(target_);
  if (field != nullptr && command == paste_text) return field->paste();
  const QKeyCombination keys = key_of(command)[0];
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, keys.key(), keys.keyboardModifiers());
    QApplication::sendEvent(target_, &event);
  }
}

}  // namespace qel::forms
