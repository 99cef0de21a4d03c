#include "qel/model/SegmentCollection.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

#include "qel/base/Error.h"

namespace qel {

std::shared_ptr<Segment> SegmentCollection::Add(std::u16string_view text, const iStyle& style) {
  ++count_;
  // Removing from an empty collection leaves a negative count, which has no slot.
  if (count_ < 0) return nullptr;
  try {
    auto segment = std::make_shared<Segment>(text, style);
    slots_.resize(static_cast<std::size_t>(count_) + 1);
    slots_.back() = segment;
    return segment;
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

std::int32_t SegmentCollection::IndexOf(const std::shared_ptr<Segment>& FindSegment) const {
  const auto found = std::find(begin(), end(), FindSegment);
  return found == end() ? 0 : static_cast<std::int32_t>(found - slots_.begin());
}

std::shared_ptr<Segment> SegmentCollection::InsertBefore(std::u16string_view text,
                                                         const iStyle& style, std::int32_t Index) {
  if (Index < 1 || Index > count_) return nullptr;
  auto segment = std::make_shared<Segment>(text, style);
  insert(segment, Index);
  return segment;
}

std::shared_ptr<Segment> SegmentCollection::InsertAfter(std::u16string_view text,
                                                        const iStyle& style, std::int32_t Index) {
  if (Index < 1 || Index > count_) return nullptr;
  auto segment = std::make_shared<Segment>(text, style);
  insert(segment, Index + 1);
  return segment;
}

void SegmentCollection::Clear() {
  slots_.clear();
  slots_.resize(1);
  count_ = 0;
  line_codes_at_end_ = 0;
}

std::shared_ptr<Segment> SegmentCollection::Item(std::int32_t Index) const {
  if (Index < 1 || Index > count_) return nullptr;
  return slots_[static_cast<std::size_t>(Index)];
}

void SegmentCollection::Remove(std::int32_t Index) {
  const auto out_of_range = [] {
    return Error(Error::subscript_out_of_range, "SegmentCollection",
                 "Remove: subscript out of range");
  };
  if (Index <= count_ - 1) {
    if (Index < 0) throw out_of_range();
    std::move(slots_.begin() + Index + 1, slots_.end(), slots_.begin() + Index);
  }
  --count_;
  if (count_ < 0) throw out_of_range();
  slots_.resize(static_cast<std::size_t>(count_) + 1);
}

void SegmentCollection::swap_segments(SegmentCollection& other) noexcept {
  slots_.swap(other.slots_);
  std::swap(count_, other.count_);
}

void SegmentCollection::append(std::shared_ptr<Segment> segment) {
  slots_.push_back(std::move(segment));
  ++count_;
}

void SegmentCollection::insert(std::shared_ptr<Segment> segment, std::int32_t Index) {
  slots_.insert(slots_.begin() + Index, std::move(segment));
  ++count_;
}

void SegmentCollection::keep_first(std::int32_t count) {
  slots_.resize(static_cast<std::size_t>(count) + 1);
  count_ = count;
}

void SegmentCollection::remove_first(std::int32_t count) {
  slots_.erase(slots_.begin() + 1, slots_.begin() + 1 + count);
  count_ -= count;
}

}  // namespace qel
