#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "qel/model/QELCode.h"
#include "qel/model/Segment.h"

namespace qel {

/// The ordered list of the segments of a text. Positions are one-based. Segments handed out are
/// shared with the caller; where there is none, the pointer is empty.
class SegmentCollection {
 public:
  SegmentCollection() = default;
  // Copies would share their segments.
  SegmentCollection(const SegmentCollection&) = delete;
  SegmentCollection& operator=(const SegmentCollection&) = delete;

  /// Appends a new segment with a copy of `style`. Returns none if memory has run out.
  std::shared_ptr<Segment> Add(std::u16string_view text, const iStyle& style);
  std::int32_t Count() const { return count_; }
  /// Position of that very object (not of an equal one), 0 when absent.
  std::int32_t IndexOf(const std::shared_ptr<Segment>& FindSegment) const;
  /// Inserts a new segment at `Index`. Returns none and changes nothing unless `Index` is 1 to
  /// `Count`.
  std::shared_ptr<Segment> InsertBefore(std::u16string_view text, const iStyle& style,
                                        std::int32_t Index);
  /// Inserts a new segment at `Index` + 1. Returns none and changes nothing unless `Index` is 1 to
  /// `Count`.
  std::shared_ptr<Segment> InsertAfter(std::u16string_view text, const iStyle& style,
                                       std::int32_t Index);
  void Clear();
  /// The segment at `Index`; none unless `Index` is 1 to `Count`.
  std::shared_ptr<Segment> Item(std::int32_t Index) const;
  /// Removes the segment at `Index`. A position of `Count` or more removes the last segment,
  /// position 0 the first. A negative position raises error 9. So does any other position in an
  /// empty collection, whose `Count` falls further below 0 with each call until it is cleared.
  void Remove(std::int32_t Index);

  /// Exchanges the segments, and nothing else.
  void swap_segments(SegmentCollection& other) noexcept;

  /// The way in which the segments were decoded. In the stated way, escaped codes are placeholders
  /// in their texts.
  Way way() const { return way_; }
  void put_way(Way way) { way_ = way; }
  /// How many line codes stood behind the last segment when it was decoded.
  std::int32_t line_codes_at_end() const { return line_codes_at_end_; }
  void put_line_codes_at_end(std::int32_t count) { line_codes_at_end_ = count; }

  /// Appends a segment as it is, shared with the caller.
  void append(std::shared_ptr<Segment> segment);
  /// Inserts a segment, shared with the caller, at `Index` (1 to `Count` + 1).
  void insert(std::shared_ptr<Segment> segment, std::int32_t Index);

  /// Removes all segments but the first `count`, or the first `count`; `count` is 0 to `Count`.
  void keep_first(std::int32_t count);
  void remove_first(std::int32_t count);

  /// The segments in order, for loops: slots 1 to `Count`.
  auto begin() const { return slots_.begin() + 1; }
  auto end() const { return slots_.end(); }

 private:
  // Slot 0 is never used, so that positions are indexes.
  std::vector<std::shared_ptr<Segment>> slots_ = std::vector<std::shared_ptr<Segment>>(1);
  std::int32_t count_ = 0;
  std::int32_t line_codes_at_end_ = 0;
  Way way_ = Way::stated;
};

}  // namespace qel
