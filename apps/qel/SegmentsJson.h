#pragma once

#include <functional>
#include <string_view>

#include "qel/model/SegmentCollection.h"

namespace qel::command {

/// Writes the runs of a text as a JSON array with one object per line. Line codes behind the last
/// run stand before an empty one. Without `line_codes`, their numbers are 0.
void write_segments(const SegmentCollection& segments, bool line_codes,
                    const std::function<void(std::string_view)>& sink);

}  // namespace qel::command
