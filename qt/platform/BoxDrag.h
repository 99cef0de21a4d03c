#pragma once

#include <QMimeData>
#include <QPointer>
#include <cstdint>

#include "qel/platform/DragData.h"
#include "qt/platform/Positions.h"

class QDropEvent;

namespace qel::qt {

class BoxView;

/// What a box drags, in Qt's form. What was only promised is supplied when somebody reads it.
class DragMimeData : public QMimeData {
  Q_OBJECT

 public:
  platform::DragData& dragged() const { return data_; }
  bool hasFormat(const QString& name) const override;
  QStringList formats() const override;

 protected:
  QVariant retrieveData(const QString& name, QMetaType type) const override;

 private:
  // Reading fills in what was promised.
  mutable platform::DragData data_;
};

/// Dragging from a box, and over it. The desktop shows the pointer, whatever the listener says
/// about cursors.
class BoxDrag {
 public:
  explicit BoxDrag(BoxView& view) : view_(view) {}

  /// Drags the selection until it is dropped.
  void start();

  // As the target.
  void enter(QDropEvent& event);
  void move(QDropEvent& event);
  void leave();
  void drop(QDropEvent& event);
  /// Whether the box would put what is over it into its text.
  bool would_insert() const;

 private:
  void tell_target(QDropEvent& event, platform::DragState state);
  std::int32_t suggested_effect(const QDropEvent& event);
  void look_at(const QMimeData& data);
  platform::DragData& data() { return own_ ? own_->dragged() : foreign_; }
  bool insert_at(int position, std::int32_t effect);
  bool takes() const;
  bool is_still_there() const;

  BoxView& view_;
  bool drags_ = false;                // this box is the source of what is dragged:
  Span dragged_;                      // this part,
  std::u16string dragged_text_;       // with that text
  bool stays_here_ = false;           // and has put it into its own text
  QPointer<const DragMimeData> own_;  // what is over the box comes from one of ours,
  platform::DragData foreign_;        // or from elsewhere
  QPointer<const QMimeData> source_;
  std::int32_t effect_ = platform::no_drop;
};

}  // namespace qel::qt
