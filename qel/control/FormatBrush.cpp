#include "qel/control/FormatBrush.h"

namespace qel {

void FormatBrush::begin(const platform::RichEdit& box, State state) {
  static_cast<richtext::FormatFields&>(format_) = box.format();
  // Users do not choose sizes.
  format_.size.reset();
  taken_from_ = box.selection();
  state_ = state;
}

void FormatBrush::paint(platform::RichEdit& box) {
  const platform::Range selection = box.selection();
  if (!is_on() || selection.length == 0 || selection == taken_from_) return;
  taken_from_ = selection;
  if (state_ == State::once) end();
  box.change_format(format_);
}

}  // namespace qel
