#pragma once

#include <cstddef>
#include <cstdint>

#include "qel/richtext/Document.h"

namespace qel::box {

/// What has become of a box's content, as its view is told. Outside of the extent, and of the
/// alignments of the paragraphs that it touches, everything is as it was. An extent cuts neither a
/// break nor a surrogate pair.
struct Change {
  enum class Kind : std::uint8_t {
    everything,  ///< another document
    content,     ///< text, with its formats, and the alignments of the paragraphs around it
    formats,     ///< of the same text
    alignments,  ///< of the paragraphs, the last of which ends with the extent
  };

  Kind kind = Kind::everything;
  richtext::Extent extent;  ///< as the content was
  std::size_t length = 0;   ///< of what now stands there

  richtext::Extent after() const { return {extent.start, extent.start + length}; }
};

}  // namespace qel::box
