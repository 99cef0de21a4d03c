#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "qel/model/Segment.h"
#include "qel/model/StyleCodes.h"

namespace qel {

struct OutputOptions;

/// One run on its way to the output.
struct Run {
  std::u16string_view text;
  style_codes::CodeState state;
  std::int32_t line_codes_before = 0;
  Segment::Origin origin = {};
};

/// Whether the options ask for the removal of visible characters.
bool trims(const OutputOptions& options);

/// Removes the visible characters that the options do not want. Every run stays, if only as an
/// empty one, so that its codes stay. `storage` holds the texts that are no longer parts of the old
/// ones.
void trim(std::vector<Run>& runs, const OutputOptions& options,
          std::deque<std::u16string>& storage);

}  // namespace qel
