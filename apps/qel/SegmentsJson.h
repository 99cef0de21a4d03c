#pragma once

#include <functional>
#include <string_view>

#include "qel/model/SegmentCollection.h"

namespace qel::command {

/// Writes the runs of a text as a JSON array with one object a line. Without `line_codes` no run
/// has any before it.
void write_segments(const SegmentCollection& segments, bool line_codes,
                    const std::function<void(std::string_view)>& sink);

}  // namespace qel::command
