#pragma once

#include <QObject>
#include <QTextCharFormat>
#include <cstdint>
#include <vector>

#include "qel/box/Box.h"

namespace qel::qt {

class BoxView;

/// Where something is to be marked, in the box's positions, and how.
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
  /// Of two marks at the same place, the one further down takes precedence in what both say.
  enum class Layer : std::uint8_t { spelling, links, words, hits };

  /// The view must outlive this.
  explicit BoxMarks(BoxView& view);

  /// Adds a source, which may go at any time.
  void add(MarkSource& source, Layer layer);
  void remove(MarkSource& source);
  /// The part that is visible, by whole lines as far as they are not endless.
  richtext::Extent visible() const;

 private:
  struct Source {
    MarkSource* source;
    Layer layer;
  };

  bool eventFilter(QObject* watched, QEvent* event) override;
  void ask_soon();
  void ask();

  BoxView& view_;
  std::vector<Source> sources_;  // in the order of the layers
  bool will_ask_ = false;
};

}  // namespace qel::qt
