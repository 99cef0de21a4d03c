#pragma once

#include <QObject>

#include "qel/control/FormatBrush.h"
#include "qt/widget/FormatActions.h"

namespace qel::qt {

/// Takes the format of a selection, and gives it to what the user selects next.
class FormatPainter : public QObject {
  Q_OBJECT

 public:
  using State = FormatBrush::State;

  /// Works in the box of the actions, which must outlive this.
  explicit FormatPainter(FormatActions& actions) : actions_(actions) {}

  State state() const { return brush_.state(); }
  /// Takes the format of the selection that there is now.
  void begin(State state);
  void end();

 signals:
  void state_changed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void paint();

  FormatActions& actions_;
  FormatBrush brush_;
};

}  // namespace qel::qt
