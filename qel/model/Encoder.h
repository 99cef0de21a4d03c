#pragma once

#include <cstdint>
#include <string>

#include "qel/model/CustomCodes.h"
#include "qel/model/SegmentCollection.h"
#include "qel/model/StyleCodes.h"

namespace qel {

/// How the runs of a text are written.
struct OutputOptions {
  enum class Codes { current, v6, custom, none };

  Codes codes = Codes::current;
  const CustomCodes* custom = nullptr;  ///< the replacements of Codes::custom

  bool without_ignored = false;
  bool without_hidden = false;
  bool without_note = false;
  /// Write "/nl" (CR LF among plain text) where the decoded text had it.
  bool line_codes = false;

  /// Which visible blanks to remove, even if they lie in several runs. Codes stay.
  bool trim_left = false;
  bool trim_right = false;
  bool single_blanks = false;
  /// Remove punctuation at the ends.
  bool trim_left_punctuation = false;
  bool trim_right_punctuation = false;
};

/// The text of the segments. Between two runs, the codes that close what the next run lacks come
/// first, then those that open what it adds. Placeholders become escaped codes again.
/// `line_codes_at_end` counts the line codes after the last segment.
std::u16string encode(const SegmentCollection& segments, std::int32_t line_codes_at_end,
                      const OutputOptions& options);

}  // namespace qel
