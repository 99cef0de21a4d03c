#include "qel/box/UndoHistory.h"

#include <utility>

namespace qel::box {

using richtext::Document;
using richtext::Extent;

namespace {

constexpr std::u16string_view blanks = u" \t\r\n\u00A0\u3000";

bool is_blank(char16_t unit) { return blanks.find(unit) != std::u16string_view::npos; }

bool is_all_blank(std::u16string_view text) {
  return text.find_first_not_of(blanks) == std::u16string_view::npos;
}

/// Whether a word ends where two texts meet. Blanks belong to the word before them.
bool ends_word(std::u16string_view before, std::u16string_view text) {
  return !before.empty() && !text.empty() && is_blank(before.back()) && !is_blank(text.front());
}

}  // namespace

void UndoHistory::record(const Document& document, const Change& change, std::u16string_view put,
                         Caret before, Kind kind) {
  undone_.clear();
  const auto now = clock_();
  // Composed text that replaces a selection comes when it is finished.
  const bool is_begun = is_open_ && done_.back().kind == Kind::typing && done_.back().length == 0;
  constexpr std::chrono::seconds pause(2);
  if (now - last_ > pause && !is_begun) end_step();
  last_ = now;
  if (joins(document, change, put, kind)) {
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

/// Whether a change continues where the last step of its kind stopped, within the word.
bool UndoHistory::joins(const Document& document, const Change& change, std::u16string_view put,
                        Kind kind) const {
  if (!is_open_ || done_.empty() || done_.back().kind != kind) return false;
  const Step& last = done_.back();
  const Extent extent = change.extent;
  const std::u16string_view text = document.text();
  const std::u16string_view erased = last.content.text();
  const std::u16string_view erases = text.substr(extent.start, extent.length());
  // Blanks at the beginning of a step belong to the first word.
  const auto goes_on = [](std::u16string_view step, std::u16string_view next) {
    return is_all_blank(step) || !ends_word(step, next);
  };
  switch (kind) {
    case Kind::typing:
      return extent.length() == 0 && extent.start == last.start + last.length &&
             goes_on(text.substr(last.start, last.length), put);
    case Kind::erasing_back:
      return extent.end == last.start && !ends_word(erases, erased);
    case Kind::erasing_ahead:
      return extent.start == last.start && goes_on(erased, erases);
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
