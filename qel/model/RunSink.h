#pragma once

#include <string_view>

#include "qel/model/StyleCodes.h"

namespace qel {

/// Receives a text as markup can say it, in order: from the reader of one format, for the writer of
/// another. Escaped codes come as the characters that they stand for.
class RunSink {
 public:
  virtual ~RunSink() = default;
  /// Characters without breaks, at least one, valid during the call only. A run of one state may
  /// come in several parts, but a surrogate pair stays whole.
  virtual void text(std::u16string_view text, const style_codes::CodeState& state) = 0;
  virtual void line_break(const style_codes::CodeState& state) = 0;
  /// The text ends.
  virtual void finish() = 0;
};

}  // namespace qel
