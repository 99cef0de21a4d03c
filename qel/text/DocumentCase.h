#pragma once

#include <cstdint>

#include "qel/base/Color.h"
#include "qel/richtext/Document.h"

namespace qel {

/// The changes of case that an editor offers.
enum class CaseChange : std::uint8_t { lower, upper, swap, title, first_to_lower, first_to_upper };

/// Changes the letters of a formatted text and nothing else of it, as the members of `TextCase` do
/// with markup: title case spares its usual words, text in the colour `hidden` has a changed case
/// only where all letters change, and what looks like a code stays.
void change_case(richtext::Document& document, CaseChange change, Color hidden);

}  // namespace qel
