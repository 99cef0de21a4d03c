#pragma once

#include <QObject>
#include <cstdint>

#include "qel/platform/RichEdit.h"
#include "qt/widget/FormatActions.h"

namespace qel::qt {

/// Takes the format of a selection, and gives it to what the user selects next.
class FormatPainter : public QObject {
  Q_OBJECT

 public:
  enum class State : std::uint8_t { off, once, until_escape };

  /// Works in the box of the actions, which must outlive this.
  explicit FormatPainter(FormatActions& actions) : actions_(actions) {}

  State state() const { return state_; }
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
  State state_ = State::off;
  richtext::FormatChange format_;
  platform::Range taken_from_;
};

}  // namespace qel::qt
