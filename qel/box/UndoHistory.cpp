#include "qel/box/UndoHistory.h"

#include <utility>

namespace qel::box {

using richtext::Document;
using richtext::Extent;

void UndoHistory::record(const Document& document, const Change& change, Caret before, Kind kind) {
  undone_.clear();
  if (joins(change, kind)) {
    join(document, change);
    kept_ += change.extent.length();
  } else {
    done_.push_back({document.part(change.extent),
                     change.extent.start,
                     change.length,
                     change.kind,
                     std::move(before),
                     {},
                     kind});
    kept_ += done_.back().cost();
  }
  is_open_ = kind != Kind::other;
  forget_oldest();
}

/// Whether a change continues where the last step of its kind stopped.
bool UndoHistory::joins(const Change& change, Kind kind) const {
  if (!is_open_ || done_.empty() || done_.back().kind != kind) return false;
  const Step& last = done_.back();
  switch (kind) {
    case Kind::typing:
      return change.extent.length() == 0 && change.extent.start == last.start + last.length;
    case Kind::erasing_back:
      return change.extent.end == last.start;
    case Kind::erasing_ahead:
      return change.extent.start == last.start;
    case Kind::other:
      break;
  }
  return false;
}

void UndoHistory::join(const Document& document, const Change& change) {
  Step& step = done_.back();
  step.length += change.length;
  if (change.extent.length() == 0) return;
  Document erased = document.part(change.extent);
  if (change.extent.start < step.start) {
    step.start = change.extent.start;
    step.content.restore({0, 0}, std::move(erased));
  } else {
    const std::size_t end = step.content.size();
    step.content.restore({end, end}, std::move(erased));
  }
}

void UndoHistory::forget_oldest() {
  constexpr std::size_t limit = std::size_t{1} << 24;
  while (kept_ > limit && done_.size() > 1) {
    kept_ -= done_.front().cost();
    done_.pop_front();
  }
}

void UndoHistory::clear() {
  done_.clear();
  undone_.clear();
  kept_ = 0;
  end_step();
}

Change UndoHistory::exchange(Document& document, Step& step) {
  const Extent extent = {step.start, step.start + step.length};
  Document current = document.part(extent);
  step.length = step.content.size();
  document.restore(extent, std::move(step.content));
  step.content = std::move(current);
  return {step.changed, extent, step.length};
}

std::optional<UndoHistory::Taken> UndoHistory::undo(Document& document) {
  if (done_.empty()) return {};
  Step step = std::move(done_.back());
  done_.pop_back();
  kept_ -= step.cost();
  const Change change = exchange(document, step);
  end_step();
  undone_.push_back(std::move(step));
  return Taken{change, undone_.back().before};
}

std::optional<UndoHistory::Taken> UndoHistory::redo(Document& document) {
  if (undone_.empty()) return {};
  Step step = std::move(undone_.back());
  undone_.pop_back();
  const Change change = exchange(document, step);
  kept_ += step.cost();
  done_.push_back(std::move(step));
  return Taken{change, done_.back().after};
}

}  // namespace qel::box
