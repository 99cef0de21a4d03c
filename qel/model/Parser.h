#pragma once

#include <cstdint>
#include <string>

#include "qel/model/SegmentCollection.h"

namespace qel {

/// Appends the runs of `text`, a markup text whose escaped codes are protected, to `segments`.
/// Returns the number of line codes after the last run.
std::int32_t parse_markup(std::u16string text, SegmentCollection& segments);

}  // namespace qel
