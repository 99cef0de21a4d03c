#pragma once

#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "qel/control/FormatCommands.h"
#include "qel/qt/TextBox.h"

class QAction;
class QMenu;

namespace qel::qt {

class BoxView;

/// The view of the box in which a text box is being edited, be it that of the large editor; null
/// when it is gone.
BoxView* edited_view(TextBox& box);

/// The actions by which a user formats what is selected in a text box: those of the table of
/// format commands, the fonts and colours of its tables, plain, undo and redo. They are checked
/// and enabled as the box's selection says.
class FormatActions : public QObject {
  Q_OBJECT

 public:
  explicit FormatActions(QObject* parent);
  ~FormatActions() override;

  TextBox* box() const { return box_; }
  /// Sets the box that they act on; null for none. It may go at any time.
  void put_box(TextBox* box);
  /// Shows the state of the box now; otherwise they do so soon after each change.
  void update();

  // They belong to this object.

  const std::vector<QAction*>& toggles() const { return toggles_; }
  QAction* font() const { return font_; }
  QAction* color() const { return color_; }
  QAction* plain() const { return plain_; }
  QAction* undo() const { return undo_; }
  QAction* redo() const { return redo_; }
  QAction* cases() const { return cases_; }

  /// Whether the box may be formatted now.
  bool may_format() const;

 signals:
  /// The state of the box was shown.
  void updated();

 private:
  using Label = format_commands::Label;

  bool eventFilter(QObject* watched, QEvent* event) override;
  QAction* create(const Label& label, std::function<void(TextBox&)> act);
  void run(const std::function<void(TextBox&)>& act);
  QAction* create_menu(const QString& caption, QMenu& menu);
  QAction* create_step(const Label& label);
  void create_cases();
  void fill_fonts(QMenu& menu);
  void fill_colors(QMenu& menu);
  void show_font();
  void show_color();

  QPointer<TextBox> box_;
  std::vector<QMetaObject::Connection> connections_;
  QTimer soon_;
  std::vector<std::unique_ptr<QMenu>> menus_;
  std::vector<QAction*> toggles_;
  QAction* font_ = nullptr;
  QAction* color_ = nullptr;
  QAction* plain_ = nullptr;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
  QAction* cases_ = nullptr;
  std::optional<Color> shown_color_;
};

}  // namespace qel::qt
