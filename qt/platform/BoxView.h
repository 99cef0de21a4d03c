#pragma once

#include <QPointer>
#include <QTextCursor>
#include <QTextEdit>
#include <cstdint>
#include <memory>
#include <optional>

#include "qel/box/Box.h"
#include "qel/box/Drop.h"
#include "qel/box/Keyboard.h"
#include "qel/box/Mouse.h"
#include "qt/platform/BoxLinks.h"
#include "qt/platform/BoxMarks.h"
#include "qt/platform/DocumentDisplay.h"
#include "qt/platform/DropData.h"
#include "qt/platform/KeyMapping.h"
#include "qt/platform/ViewOptions.h"
#include "qt/platform/ZoomedDevice.h"

namespace qel::qt {

class BoxHost;

/// The window of a box: a text edit that shows its content, and passes in what the user does.
///
/// Qt provides the layout of lines and the caret's movement through them, text from right to left,
/// input methods, accessibility, scrolling and painting. A change that Qt makes in its document
/// itself, for an assistive program for instance, is passed to the box as an edit, or taken back
/// where the box may not be edited.
///
/// An offset of any size is shown as Qt's own raised or lowered text. Scroll bars are shown when
/// there is something to scroll, and never for a single line.
class BoxView : public QTextEdit, public box::View {
  Q_OBJECT

 public:
  class Handling;

  /// A new box in a window on `owner`, which must outlive it; with a null owner it is not shown.
  static std::shared_ptr<box::Box> create(QWidget* owner);
  /// The window of a box that this platform has created; null when the window is gone.
  static BoxView* of(const platform::RichEdit& box);
  ~BoxView() override;

  /// The box that is shown; null when it is gone.
  box::Box* box() const { return box_; }
  /// What is marked in the window, beside the text.
  BoxMarks& marks() { return marks_; }
  /// The addresses in the text.
  const BoxLinks& links() const { return links_; }
  /// Tells of the link, and lets the desktop open it unless somebody has done so.
  void open_link(const QUrl& url);
  /// Replaces part of the document by text as the user's edit; the caret stays in its text. Whether
  /// the user may.
  bool edit(Span span, const QString& text);
  /// The place in the document that is shown at the top left corner.
  QPoint origin() const;
  /// The position of the character that is shown at a place, if there is one.
  std::optional<std::size_t> character_at(QPoint place) const;
  /// Does what the key does by itself, for menus.
  void run_command(std::int16_t key_code, std::int16_t shift);

  /// The widget to which the box belongs, which may go at any time; null for none.
  BoxHost* host() const;
  void put_host(BoxHost* host);

  const ViewOptions& options() const { return options_; }
  /// Values out of range become the nearest in it.
  void put_options(const ViewOptions& options);
  /// To the next larger size (above 0), the next smaller one (below 0), or to 100 per cent (0).
  void zoom_by(int direction);
  /// Shown while there is no text.
  const QString& placeholder() const { return placeholder_; }
  void put_placeholder(const QString& text);

  void settle() override;
  void show(const box::Change& change) override;
  void show_selection() override;
  void show_appearance(const platform::BoxAppearance& before) override;
  platform::WindowHandle window() override;
  void put_owner(platform::WindowHandle owner) override;
  platform::Clipboard& clipboard() override;
  Color text_color() const override;
  void carry(box::Drag& drag) override;
  void close() override;

 signals:
  /// The options have changed, by a key or the wheel perhaps.
  void options_changed();
  /// A link is to be opened: by the desktop, unless a slot clears `opens` during the call.
  void link_activated(const QUrl& url, bool* opens);

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

  QMimeData* createMimeDataFromSelection() const override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  class Place;

  BoxView(box::Box& box, QWidget* owner);

  void put_caret_of_box();
  static void show_direction(QTextCursor cursor, Qt::LayoutDirection direction);
  void show_zoom();
  void show_space();
  void center_line();
  void show_colors();
  void show_text_colors();
  /// What `zoom_by` is to do for a key; nothing for one that has to do with something else.
  static std::optional<int> zoom_direction(const QKeyEvent& event);
  box::Selection selection_in_window() const;
  void take_selection();
  void note_change(int position, int removed, int added);
  void take_foreign_edit();
  void show_touched_formats(std::size_t edited);

  bool takes_shortcut(const QKeyEvent& event) const;
  bool leave_by_tab(QKeyEvent& event);
  void act_on_key(QKeyEvent* event, Stroke stroke);
  bool moves_natively(Stroke stroke) const;
  void compose(const QInputMethodEvent& event);
  bool composes() const { return !composition_.at.isNull(); }
  void end_composition();
  void reset_input_method();
  void complete_composition();
  void take_committed(const QInputMethodEvent& event);

  bool is_on_selection(QPoint point) const;
  std::size_t position_at(QPoint point) const;
  void accept_drop(QDropEvent& event, std::int32_t effect) const;

  box::Box* box_;
  box::Keyboard keyboard_{*box_};
  box::Mouse mouse_{*box_};
  box::Drop drop_{*box_};
  DropData dropped_;
  DocumentDisplay display_;
  QPointer<QObject> host_;
  ViewOptions options_;
  ZoomedDevice zoomed_{*viewport()};
  int wheel_turned_ = 0;  // since the last step
  QString placeholder_;
  BoxMarks marks_{*this};
  BoxLinks links_{*this};
  std::optional<QUrl> pressed_link_;
  int showing_ = 0;   // above 0: changes of the document are this class's own
  int handling_ = 0;  // number of events being handled: the view must not go now
  /// Text that is being composed, which only this window shows: where, at null when there is none,
  /// and the beginning of the paragraph that shows it, which others may have cut in two.
  struct {
    QTextCursor at;
    QTextCursor paragraph;
    QString text;
  } composition_;
  bool has_foreign_edit_ = false;
  /// How much of the document others have left alone before and after what they changed.
  struct {
    int before = 0;
    int behind = 0;
  } touched_;
  bool shows_colors_ = false;
  std::optional<QPoint> pressed_at_;
};

}  // namespace qel::qt
