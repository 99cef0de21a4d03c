#pragma once

#include <cstddef>
#include <cstdint>

#include "qel/richtext/Document.h"

namespace qel::box {

/// A change of a box's content, as reported to its view. Outside the extent, and apart from the
/// alignments of the paragraphs that it touches, nothing has changed. An extent cuts neither a
/// break nor a surrogate pair.
struct Change {
  enum class Kind : std::uint8_t {
    everything,  ///< a new document
    content,     ///< text, with its formats, and the alignments of the paragraphs around it
    formats,     ///< the formats of the same text
    alignments,  ///< those of the paragraphs; the last one ends with the extent
  };

  Kind kind = Kind::everything;
  richtext::Extent extent;  ///< in the content before the change
  std::size_t length = 0;   ///< of what has replaced the extent

  richtext::Extent after() const { return {extent.start, extent.start + length}; }
};

}  // namespace qel::box
