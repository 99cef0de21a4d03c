#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "qel/model/Segment.h"

namespace qel {

/// A word of a decoded text: its characters and the segments that they lie in. A segment may reach
/// beyond the word at either end, unless the text was divided into words when it was set.
class Word {
 public:
  /// `segments` follow each other; the first stands at the one-based position `first_index`.
  Word(std::u16string text, std::vector<std::shared_ptr<qel::Segment>> segments,
       std::int32_t first_index)
      : text_(std::move(text)), segments_(std::move(segments)), first_index_(first_index) {}

  const std::u16string& get_Text() const { return text_; }
  /// How many segments the word lies in.
  std::int32_t SegmentCount() const { return static_cast<std::int32_t>(segments_.size()); }
  /// The `Index`-th of them, from 1; none outside 1 to `SegmentCount`.
  std::shared_ptr<qel::Segment> Segment(std::int32_t Index) const;
  /// Where the `Index`-th of them stood among the text's segments when the words were found, from
  /// 1; 0 outside 1 to `SegmentCount`.
  std::int32_t SegmentIndex(std::int32_t Index) const;

 private:
  std::u16string text_;
  std::vector<std::shared_ptr<qel::Segment>> segments_;
  std::int32_t first_index_;
};

}  // namespace qel
