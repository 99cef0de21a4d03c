#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <array>

class QAction;
class QMenu;

namespace qel::forms {

/// The commands of an Edit menu, for the box or field that has the focus, or had it last.
class EditCommands : public QObject {
  Q_OBJECT

 public:
  explicit EditCommands(QWidget& window);

  /// Adds the actions to the menu.
  void add_to(QMenu& menu);
  /// To be called when a selection has changed.
  void show_state();

 private:
  enum Command { undo, redo, cut, copy, paste, paste_text, erase, select_all, command_count };

  std::array<bool, command_count> possible() const;
  void run(Command command) const;
  void follow_focus(QWidget* now);

  QWidget& window_;
  QPointer<QWidget> target_;
  std::array<QAction*, command_count> actions_ = {};
};

}  // namespace qel::forms
