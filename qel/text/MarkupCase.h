#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "qel/text/TextCase.h"

namespace qel {

/// `markup` with the case of `length` characters changed, from the one at `start` (zero-based) on;
/// -1 stands for all the rest. Title case spares the `ignored` words. The result was decoded,
/// divided along the span and encoded.
std::u16string change_case(std::u16string_view markup, CaseChange change, std::ptrdiff_t start,
                           std::ptrdiff_t length, const WordSet& ignored = {});

}  // namespace qel
