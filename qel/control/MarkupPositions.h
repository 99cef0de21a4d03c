#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "qel/model/QELCode.h"

namespace qel {

/// Walks along the markup of a box and finds where the characters of the box stand in it.
class MarkupPositions {
 public:
  /// `markup` has to outlive this object.
  MarkupPositions(std::u16string_view markup, Way way) : markup_(markup), way_(way) {}

  std::size_t at() const { return at_; }
  void pass_codes();
  /// Passes characters of the box, and the codes before each of them. A line break counts as two.
  void pass_characters(std::int32_t count);

 private:
  void pass_character();
  void pass_literal();

  std::u16string_view markup_;
  Way way_;
  std::size_t at_ = 0;
  std::size_t literal_left_ = 0;  // characters of a code that is text
  bool is_in_break_ = false;      // one half of a line break has been passed
};

}  // namespace qel
