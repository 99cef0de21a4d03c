#include "qel/control/FormatBrush.h"

namespace qel {

void FormatBrush::begin(const platform::RichEdit& box, State state) {
  static_cast<richtext::FormatFields&>(format_) = box.format();
  // Users do not choose sizes.
  format_.size.reset();
  taken_from_ = box.selection();
  state_ = state;
}

bool FormatBrush::paint(platform::RichEdit& box) {
  const platform::Range selection = box.selection();
  if (!is_on() || selection.length == 0 || selection == taken_from_) return false;
  taken_from_ = selection;
  box.change_format(format_);
  return true;
}

}  // namespace qel
