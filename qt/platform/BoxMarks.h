#pragma once

#include <QList>
#include <QObject>
#include <QTextCharFormat>
#include <QTextEdit>
#include <cstdint>
#include <vector>

#include "qel/box/Box.h"

class QPainter;

namespace qel::qt {

class BoxView;

/// Where something is to be marked, in the box's positions, and how. A colour of the text costs
/// time at each painting, and is not meant for many marks.
struct Mark {
  richtext::Extent extent;
  QTextCharFormat format;
};

/// Says what is to be marked in a box.
class MarkSource : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  /// The marks in the visible part of the box, in any order. They may reach out of that part.
  virtual std::vector<Mark> marks(const box::Box& box, richtext::Extent visible) = 0;

 signals:
  /// Other marks are to be shown.
  void changed();
};

/// Marks over the visible part of a box's window, which are no part of its text: they get into no
/// copy, no undo step and no accessible text. The sources are asked after the text, the size or the
/// part that is visible has changed, once a turn of the event loop; without sources, nothing is
/// done.
class BoxMarks : public QObject {
  Q_OBJECT

 public:
  /// Of two marks at the same place, the one further down is painted over the other.
  enum class Layer : std::uint8_t { spelling, links, words, hits };

  /// The view must outlive this.
  explicit BoxMarks(BoxView& view);

  /// Adds a source, which may go at any time.
  void add(MarkSource& source, Layer layer);
  void remove(MarkSource& source);
  /// The part that is visible, by whole lines as far as they are not endless.
  richtext::Extent visible() const;
  /// What is marked now, in the order of the layers.
  const QList<QTextEdit::ExtraSelection>& shown() const { return shown_; }
  /// Paints what is behind the text.
  void paint(QPainter& painter, const QRect& part) const;

 private:
  struct Source {
    MarkSource* source;
    Layer layer;
  };

  bool eventFilter(QObject* watched, QEvent* event) override;
  void ask_soon();
  void ask();
  void show(const std::vector<Mark>& marks);
  void paint(QPainter& painter, const QRectF& part, const QTextEdit::ExtraSelection& mark) const;

  BoxView& view_;
  QList<QTextEdit::ExtraSelection> shown_;
  std::vector<Source> sources_;  // in the order of the layers
  bool will_ask_ = false;
  bool has_right_to_left_ = false;  // the part that is visible
};

}  // namespace qel::qt
