#pragma once

#include <cstdint>

namespace qel::richtext {

/// How much of a document a reader has dropped. What it was asked to keep does not count.
struct DroppedParts {
  std::uint64_t pictures = 0;
  std::uint64_t objects = 0;  ///< what shows one is text, or counts as a picture, too
  std::uint64_t cells = 0;    ///< of tables; their text is kept, each with a tab behind it
  std::uint64_t rows = 0;     ///< of tables; they become lines
  std::uint64_t notes = 0;    ///< footnotes, endnotes and annotations
  std::uint64_t headers = 0;  ///< headers and footers that are not empty
  std::uint64_t links = 0;    ///< whose address is not their text, which is kept
  std::uint64_t hidden = 0;   ///< characters of hidden text
  std::uint64_t deleted = 0;  ///< characters of text that is marked as deleted
  /// Characters that the declared code page does not have. They were read in code page 1252.
  std::uint64_t unknown = 0;

  friend bool operator==(const DroppedParts&, const DroppedParts&) = default;
};

}  // namespace qel::richtext
