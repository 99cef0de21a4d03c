#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "qel/model/SegmentCollection.h"

namespace qel {

/// Appends the runs of `text`, a markup text whose escaped codes are protected, to `segments`.
/// The segments share `text`. Returns the number of line codes after the last run.
std::int32_t parse_markup(const std::shared_ptr<const std::u16string>& text,
                          SegmentCollection& segments);

}  // namespace qel
