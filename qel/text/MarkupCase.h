#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "qel/model/QELCode.h"
#include "qel/text/TextCase.h"

namespace qel {

/// `markup` with the case of `length` characters changed, from the one at `start` (zero-based) on;
/// a length of -1 means all the rest. Title case leaves the `ignored` words in lower case. The
/// markup is decoded, divided at the edges of the span and encoded again.
std::u16string change_case(std::u16string_view markup, CaseChange change, std::ptrdiff_t start,
                           std::ptrdiff_t length, const WordSet& ignored, Way way);

}  // namespace qel
