#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/model/SegmentCollection.h"
#include "qel/model/StyleCodes.h"

namespace qel {

/// Reads the runs of a markup text, one after the other.
class MarkupScanner {
 public:
  /// `text` has to outlive the scanner, with its escaped codes protected.
  explicit MarkupScanner(std::u16string_view text) : text_(text) {}

  /// Moves to the next run; false, and no run, after the last.
  bool next();

  /// The characters of the run, at least one, and the state that the codes before it set.
  std::u16string_view run() const { return run_; }
  style_codes::CodeState state() const;
  /// How many line codes stand between the previous run and this one; after the last run, how many
  /// follow it.
  std::int32_t line_codes_before() const { return line_codes_; }

 private:
  void apply(char16_t letter, char16_t digit);

  std::u16string_view text_;
  std::size_t at_ = 0;
  std::u16string_view run_;
  std::int32_t line_codes_ = 0;
  // Flags of fonts and colours accumulate until "/f0" or "/y0" clears them; the highest one counts.
  // Bit k stands for index k; bit 0 is never set.
  unsigned attributes_ = 0;
  unsigned fonts_ = 0;
  unsigned colors_ = 0;
};

/// Appends the runs of `text`, a markup text whose escaped codes are protected, to `segments`.
/// Returns the number of line codes after the last run.
std::int32_t parse_markup(std::u16string text, SegmentCollection& segments);

}  // namespace qel
