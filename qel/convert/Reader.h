#pragma once

#include <cstddef>
#include <string_view>

#include "qel/convert/Report.h"

namespace qel::convert {

/// Reads a format that comes in parts, in UTF-16 or UTF-8, cut anywhere but within a character.
template <class Char>
class BasicReader {
 public:
  virtual ~BasicReader() = default;
  /// Reads on and returns how many units were read: what may go on behind the end is left, and
  /// comes again in front of the next part. The last part is read to its end, or until nothing
  /// that follows counts.
  virtual std::size_t read(std::basic_string_view<Char> part, bool is_last) = 0;
  /// The input ends. To be called after the last part.
  virtual void finish() = 0;
  /// Whether nothing that may follow counts.
  virtual bool is_closed() const { return false; }
  /// Says what has been dropped. To be called at the end.
  virtual void report(Report& /*report*/) const {}
};

using Reader = BasicReader<char16_t>;

}  // namespace qel::convert
