#pragma once

#include <string_view>

#include "qel/richtext/Document.h"

namespace qel::windows {

/// A part of one document that has to become a part of another; around it they are equal.
struct Change {
  richtext::Extent before;
  richtext::Extent after;

  bool is_empty() const { return before.length() == 0 && after.length() == 0; }
};

/// What differs between two documents. What differs as text is part of the formats that differ, and
/// of the alignments, in which the end of a document counts as a position.
struct Difference {
  Change text;
  Change formats;
  Change alignments;
};

/// Takes as long as it takes to compare them. A change cuts no break and no pair in two.
Difference difference(const richtext::Document& before, const richtext::Document& after);

/// The same between two texts. It cuts no pair in two.
Change text_change(std::u16string_view before, std::u16string_view after);

}  // namespace qel::windows
