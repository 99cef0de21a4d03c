#pragma once

#include <algorithm>
#include <cstddef>

#include "qel/richtext/Document.h"

namespace qel::box {

/// A selection: from the anchor, which stays, to the caret, which moves. Positions are in UTF-16
/// code units.
struct Selection {
  std::size_t anchor = 0;
  std::size_t caret = 0;

  std::size_t start() const { return std::min(anchor, caret); }
  std::size_t end() const { return std::max(anchor, caret); }
  bool is_empty() const { return anchor == caret; }
  richtext::Extent extent() const { return {start(), end()}; }

  friend bool operator==(const Selection&, const Selection&) = default;
};

}  // namespace qel::box
