#pragma once

#include "qel/base/Color.h"
#include "qel/richtext/Document.h"
#include "qel/text/TextCase.h"

namespace qel {

/// Changes the case of letters in a formatted text and nothing else, as the members of `TextCase`
/// do in markup: title case leaves the usual words in lower case, text in the colour `hidden`
/// changes only where all letters change, and whatever looks like a code stays.
void change_case(richtext::Document& document, CaseChange change, Color hidden);

}  // namespace qel
