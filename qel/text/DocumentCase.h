#pragma once

#include "qel/base/Color.h"
#include "qel/richtext/Document.h"
#include "qel/text/TextCase.h"

namespace qel {

/// Changes the letters of a formatted text and nothing else of it, as the members of `TextCase` do
/// with markup: title case spares its usual words, text in the colour `hidden` has a changed case
/// only where all letters change, and what looks like a code stays.
void change_case(richtext::Document& document, CaseChange change, Color hidden);

}  // namespace qel
