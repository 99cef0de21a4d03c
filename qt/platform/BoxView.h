#pragma once

#include <QTextEdit>
#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

#include "qel/platform/BoxAppearance.h"
#include "qel/platform/BoxListener.h"
#include "qel/richtext/Document.h"
#include "qt/platform/KeyMapping.h"
#include "qt/platform/Positions.h"

class QDrag;

namespace qel::qt {

class BoxDrag;

/// The window of a rich edit box: a text edit that tells a listener of its events before it acts,
/// and holds text in the library's formats only.
///
/// From Qt come input methods, text from right to left, accessibility, scrolling, selecting and
/// undo. Positions here are Qt's.
class BoxView : public QTextEdit {
  Q_OBJECT

 public:
  explicit BoxView(QWidget* parent);
  ~BoxView() override;

  void listen(platform::BoxListener* listener) {
    listener_ = listener == nullptr ? &nobody_ : listener;
  }
  platform::BoxListener& listener() const { return *listener_; }
  const platform::BoxAppearance& appearance() const { return appearance_; }
  void put_appearance(const platform::BoxAppearance& appearance);

  // The content.

  Span selected() const;
  void select(Span span);
  /// The format of what is typed at the caret.
  QTextCharFormat typing_format() const { return textCursor().charFormat(); }
  /// The format of text put in place of that part: of its first character, or for a caret that of
  /// what is typed there.
  QTextCharFormat format_for(Span span) const;
  /// Replaces all of it; nothing can be undone afterwards. The caret goes to the beginning.
  void load(const richtext::Document& content);
  /// Replaces a part as one change, which can be undone; the caret goes behind the content.
  void replace(Span span, const richtext::Document& content);
  /// Puts text from elsewhere in place of the selection, its RTF where it has one; whether there is
  /// either. In a box for a single line breaks become blanks.
  bool insert(const std::optional<std::u16string>& rtf, const std::optional<std::u16string>& text);
  /// Moves the selection, and keeps it selected, as one change.
  void move_selection(int to);
  /// What comes next is undone by itself.
  void end_undo_step() { document()->setModified(false); }

  /// Makes changes that the listener is told of as one; of appearances only, nobody is told.
  enum class Telling { once, never };
  template <class Edit>
  void change(Telling telling, Edit edit);

  /// Drags the selection until it is dropped.
  void start_drag();
  /// Whether events are being handled: the view must not go now.
  bool is_busy() const { return busy_ > 0; }

 protected:
  bool event(QEvent* event) override;
  void changeEvent(QEvent* event) override;
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
  bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  friend class BoxDrag;
  class Busy;

  void note_change();
  void follow_caret();
  void show_colors();

  bool takes_shortcut(const QKeyEvent& event) const;
  bool leave_by_tab(QKeyEvent& event);
  void type_key(QKeyEvent* event, const QString& text);
  void act_on_key(QKeyEvent* event, Stroke stroke);
  void press_key(QKeyEvent* event, Stroke stroke);
  void press_own(QKeyEvent* event, Stroke stroke, std::int16_t character);
  std::optional<Span> erased_by(Stroke stroke) const;
  bool run_command(Stroke stroke);
  std::optional<QString> told_text(const QString& text);
  void type(const QString& text);

  bool is_on_selection(QPoint point) const;

  platform::BoxListener nobody_;
  platform::BoxListener* listener_ = &nobody_;
  platform::BoxAppearance appearance_;
  std::unique_ptr<BoxDrag> drag_;
  int held_ = 0;  // changes in progress that are told as one
  int busy_ = 0;
  bool has_changed_ = false;
  bool shows_colors_ = false;
  bool after_double_click_ = false;
  std::optional<QPoint> may_drag_from_;
};

template <class Edit>
void BoxView::change(Telling telling, Edit edit) {
  ++held_;
  edit();
  --held_;
  has_changed_ = false;
  if (telling == Telling::once && held_ == 0) listener_->on_change();
}

/// While one of these lives, the view is handling an event.
class BoxView::Busy {
 public:
  explicit Busy(BoxView& view) : view_(view) { ++view_.busy_; }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;
  ~Busy() { --view_.busy_; }

 private:
  BoxView& view_;
};

}  // namespace qel::qt
