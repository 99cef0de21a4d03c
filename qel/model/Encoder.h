#pragma once

#include <cstdint>
#include <string>

#include "qel/model/CustomCodes.h"
#include "qel/model/QELCode.h"
#include "qel/model/SegmentCollection.h"
#include "qel/model/StyleCodes.h"

namespace qel {

/// How the runs of a text are written.
struct OutputOptions {
  enum class Codes { current, v6, custom, none };

  Way way = Way::stated;
  Codes codes = Codes::current;
  const CustomCodes* custom = nullptr;  ///< the replacements of Codes::custom

  bool without_ignored = false;
  bool without_hidden = false;
  bool without_note = false;
  /// Write "/nl" (CR LF among plain text) where the decoded text had it. Lossless markup has it
  /// always.
  bool line_codes = false;
  /// Lossless markup: more of the text may be put behind this part of it.
  bool is_cut = false;

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
std::u16string encode(const SegmentCollection& segments, const OutputOptions& options);

}  // namespace qel
