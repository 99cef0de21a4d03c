#pragma once

#include <cstddef>
#include <cstdint>

#include "qel/model/SegmentCollection.h"

/// Cutting segments so that a span of text becomes a whole number of segments. Positions count
/// visible characters; both halves of a cut keep the style.
namespace qel::division {

/// Cuts so that segment boundaries lie `start` and `start + length` characters into the text.
/// A boundary beyond the text or before it cuts nothing.
void divide(SegmentCollection& segments, std::ptrdiff_t start, std::ptrdiff_t length);

/// One-based positions of the segments of a span; `first` is 0 when no segment begins at its start.
struct Span {
  std::int32_t first = 0;
  std::int32_t last = 0;
};

/// The segments of a span, which have been divided at its edges. Where no segment ends at the end
/// of the span, `last` is `first`.
Span find_span(const SegmentCollection& segments, std::ptrdiff_t start, std::ptrdiff_t length);

/// How finely `divide_words` cuts.
enum class Pieces {
  words = 1,        ///< between words and blanks
  numbers = 2,      ///< around numbers within words too
  punctuation = 3,  ///< around punctuation too
};

/// Cuts every segment between pieces; the text and the styles stay the same.
void divide_words(SegmentCollection& segments, Pieces pieces);

}  // namespace qel::division
