#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "qel/model/StyleCodes.h"

namespace qel {

struct OutputForm;

/// One run on its way to the output.
struct Run {
  std::u16string_view text;
  style_codes::CodeState state;
  std::int32_t line_codes_before = 0;
};

/// Whether the form wants any visible characters taken away.
bool trims(const OutputForm& form);

/// Takes away the visible characters that the form does not want. Every run stays, if only as an
/// empty one, so that its codes do. `storage` holds the texts that are no longer parts of the old.
void trim(std::vector<Run>& runs, const OutputForm& form, std::deque<std::u16string>& storage);

}  // namespace qel
