#pragma once

#include <QKeySequence>
#include <QPointer>
#include <QToolBar>
#include <QToolButton>
#include <memory>
#include <vector>

class QShortcut;

namespace qel::qt {

class FormatActions;
class FormatPainter;
class TextBox;

/// A tool bar with the formats of text boxes: undo and redo, bold, italic, underline, strike-out,
/// raised, lowered, small capitals, the fonts and colours of the box's tables, plain, and a format
/// painter. It can be put on any window, and follows the text box of that window that has the
/// focus: what it shows is the state of the caret, and its actions act there. While the bar itself,
/// a menu or another bar has the focus it stays with the box; it is grey while some other widget
/// has it, while nothing may be edited or formatted, and where codes are shown.
///
/// The painter takes the format of the selection, and what is selected next gets it; after a double
/// click everything that is selected gets it, until Escape.
///
/// A key (F6) leads to the bar, arrows, Home and End through it, and Escape back to the box. The
/// actions (`actions()`) can be added to menus as well.
class FormatBar : public QToolBar {
  Q_OBJECT
  /// The key that leads to the bar.
  Q_PROPERTY(QKeySequence ReachKey READ get_ReachKey WRITE put_ReachKey)

 public:
  explicit FormatBar(QWidget* parent = nullptr);
  ~FormatBar() override;

  /// The box that it acts on now; null for none.
  TextBox* box() const;
  /// Makes it stay with that box; with null, it follows the focus again.
  void follow(TextBox* box);

  QKeySequence get_ReachKey() const;
  void put_ReachKey(const QKeySequence& Value);

  /// What a colour (0x00BBGGRR) is called, such as "Dark green"; a system colour has no name.
  static QString color_name(int color);

 signals:
  /// It acts on another box, or on none.
  void BoxChanged(qel::qt::TextBox* Box);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void actionEvent(QActionEvent* event) override;

 private:
  QToolButton* button_of(QAction* action) const;
  /// The buttons that can have the focus now, in order.
  std::vector<QToolButton*> reachable() const;
  int font_width() const;
  void note_focus(QWidget* now);
  void put_box(TextBox* box);
  void show_state();
  bool handle_key(QToolButton& button, int key);
  void reach();
  void leave();

  FormatActions* actions_;
  std::unique_ptr<FormatPainter> painter_;
  QAction* brush_;
  QShortcut* reach_;
  QPointer<QToolButton> last_;  // of the buttons, the one that had the focus
  bool is_fixed_ = false;       // stays with its box
};

}  // namespace qel::qt
