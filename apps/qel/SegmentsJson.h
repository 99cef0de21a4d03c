#pragma once

#include <functional>
#include <string_view>

#include "qel/model/SegmentCollection.h"

namespace qel::command {

/// Writes the runs of a text as a JSON array with one object per line. Without `line_codes`, the
/// number of line codes before each run is 0.
void write_segments(const SegmentCollection& segments, bool line_codes,
                    const std::function<void(std::string_view)>& sink);

}  // namespace qel::command
