#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>
#include <vector>

#include "qel/platform/EditorWindow.h"

class QMenu;
class QPlainTextEdit;
class QPushButton;
class QToolButton;

namespace qel::qt {

class BoxView;

/// The window of the large editor: menus, a form with the box and two buttons, which the listener
/// lays out, and below it a pane that can be unfolded.
class EditorDialog : public QDialog {
  Q_OBJECT

 public:
  EditorDialog(const platform::EditorDescription& description, QWidget* parent);
  ~EditorDialog() override;

  const std::shared_ptr<platform::RichEdit>& box() const { return box_; }
  BoxView& view() const;
  /// Sets the listener, which decides what happens; null for none.
  void listen(platform::EditorListener* listener) { listener_ = listener; }

  // In pixels.

  /// Opens the window with a form of that size, or of the size that the user left it with; at least
  /// as large as the box that it replaces, and up to two thirds of the screen.
  void open_form(QSize size);
  void lay_out(const QRect& box, const QRect& ok, const QRect& cancel);

  /// Tells the listener how large the form is.
  void tell_size();

  void done(int result) override;
  void reject() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  void add_menus(const std::vector<platform::Menu>& menus);
  void add_item(QMenu& menu, const platform::MenuItem& item);
  void take_over(BoxView& replaced);
  /// Whether to go on closing, after the user was asked where there is something to ask.
  bool may_drop_edits();
  void remember_size() const;
  void add_pane(const QString& caption);
  void show_items();
  void show_pane_text();

  platform::EditorListener* listener_ = nullptr;
  QWidget* form_;
  std::shared_ptr<platform::RichEdit> box_;
  QPushButton* ok_;
  QPushButton* cancel_;
  QToolButton* fold_ = nullptr;
  QPlainTextEdit* pane_ = nullptr;
  QTimer pane_delay_;
  std::vector<QAction*> items_;
  QSize replaced_size_;  // of the box, but at least as wide as the bar
};

}  // namespace qel::qt
