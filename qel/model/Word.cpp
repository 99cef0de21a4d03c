#include "qel/model/Word.h"

#include <cstddef>

namespace qel {

std::shared_ptr<Segment> Word::Segment(std::int32_t Index) const {
  if (Index < 1 || Index > SegmentCount()) return nullptr;
  return segments_[static_cast<std::size_t>(Index) - 1];
}

std::int32_t Word::SegmentIndex(std::int32_t Index) const {
  return Index < 1 || Index > SegmentCount() ? 0 : first_index_ + Index - 1;
}

}  // namespace qel
