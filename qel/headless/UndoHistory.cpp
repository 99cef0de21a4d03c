#include "qel/headless/UndoHistory.h"

#include <utility>

namespace qel::headless {

using richtext::Document;
using richtext::Extent;

void UndoHistory::record(const Document& document, Extent extent, std::size_t inserted,
                         Extent before, Extent after, Kind kind) {
  undone_.clear();
  if (joins(extent, kind)) {
    join(document, extent, inserted);
    done_.back().after = after;
  } else {
    done_.push_back({document.part(extent), extent.start, inserted, before, after, kind});
  }
  kept_ += extent.length();
  is_open_ = kind != Kind::other;
  forget_oldest();
}

/// Whether a change goes on where the last step of its kind stopped.
bool UndoHistory::joins(Extent extent, Kind kind) const {
  if (!is_open_ || done_.empty() || done_.back().kind != kind) return false;
  const Step& last = done_.back();
  const std::size_t end = last.start + last.length;
  switch (kind) {
    case Kind::typing:
      return extent.length() == 0 && extent.start == end;
    case Kind::erasing_back:
      return extent.end == last.start;
    case Kind::erasing_ahead:
      return extent.start == last.start;
    case Kind::other:
      break;
  }
  return false;
}

void UndoHistory::join(const Document& document, Extent extent, std::size_t inserted) {
  Step& step = done_.back();
  step.length += inserted;
  if (extent.length() == 0) return;
  Document erased = document.part(extent);
  if (extent.start < step.start) {
    step.start = extent.start;
    step.content.restore({0, 0}, std::move(erased));
  } else {
    const std::size_t end = step.content.size();
    step.content.restore({end, end}, std::move(erased));
  }
}

void UndoHistory::forget_oldest() {
  constexpr std::size_t limit = std::size_t{1} << 24;
  while (kept_ > limit && done_.size() > 1) {
    kept_ -= done_.front().content.size();
    done_.pop_front();
  }
}

void UndoHistory::clear() {
  done_.clear();
  undone_.clear();
  kept_ = 0;
  end_step();
}

void UndoHistory::exchange(Document& document, Step& step) {
  const Extent extent = {step.start, step.start + step.length};
  Document current = document.part(extent);
  step.length = step.content.size();
  document.restore(extent, std::move(step.content));
  step.content = std::move(current);
}

std::optional<Extent> UndoHistory::undo(Document& document) {
  if (done_.empty()) return {};
  Step step = std::move(done_.back());
  done_.pop_back();
  kept_ -= step.content.size();
  exchange(document, step);
  end_step();
  undone_.push_back(std::move(step));
  return undone_.back().before;
}

std::optional<Extent> UndoHistory::redo(Document& document) {
  if (undone_.empty()) return {};
  Step step = std::move(undone_.back());
  undone_.pop_back();
  exchange(document, step);
  kept_ += step.content.size();
  done_.push_back(std::move(step));
  return done_.back().after;
}

}  // namespace qel::headless
