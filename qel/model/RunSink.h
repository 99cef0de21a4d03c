#pragma once

#include <string_view>

#include "qel/model/StyleCodes.h"

namespace qel {

/// Receives a text as markup can say it, in order: from the reader of one format, for the writer of
/// another. Escaped codes come as the characters that they stand for. Texts are in UTF-16 or UTF-8.
template <class Char>
class BasicRunSink {
 public:
  virtual ~BasicRunSink() = default;
  /// Characters without breaks, at least one, valid during the call only. A run of one state may
  /// come in several parts, but a surrogate pair or a sequence of valid UTF-8 stays whole.
  virtual void text(std::basic_string_view<Char> text, const style_codes::CodeState& state) = 0;
  virtual void line_break(const style_codes::CodeState& state) = 0;
  /// The text ends.
  virtual void finish() = 0;
};

using RunSink = BasicRunSink<char16_t>;

}  // namespace qel
