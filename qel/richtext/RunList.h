#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qel::richtext {

/// A value for each position of a text, kept as runs of equal values. Neighbouring runs differ, so
/// memory and time depend on the number of changes, not of characters.
class RunList {
 public:
  using Value = std::uint32_t;

  struct Run {
    std::size_t start;
    std::size_t end;
    Value value;
  };

  /// Number of positions.
  std::size_t size() const { return runs_.empty() ? 0 : runs_.back().end; }
  std::size_t run_count() const { return runs_.size(); }
  /// The `index`-th run, from 0.
  Run run(std::size_t index) const;
  /// Index of the run that holds `position`, which must be below `size`.
  std::size_t find(std::size_t position) const;
  Value at(std::size_t position) const { return runs_[find(position)].value; }
  /// Value of the last position; the list must not be empty.
  Value back() const { return runs_.back().value; }

  /// Adds `length` positions with `value` at the end.
  void append(std::size_t length, Value value);
  /// Adds the part of `source` from `start` to `end`.
  void append_part(const RunList& source, std::size_t start, std::size_t end);
  /// Replaces `erased` positions from `position` on with those of `inserted`.
  void replace(std::size_t position, std::size_t erased, const RunList& inserted);
  /// Gives each position from `start` up to `end` the value `change(value)`, called once per run.
  template <class Change>
  void transform(std::size_t start, std::size_t end, Change change);

  void clear() { runs_.clear(); }

  /// Whether the invariants hold: no run empty, ends ascending, neighbours different.
  bool check() const;

 private:
  struct Entry {
    std::uint32_t end;  // half the size of a size_t: there may be millions
    Value value;
  };

  std::vector<Entry> runs_;
};

inline RunList::Run RunList::run(std::size_t index) const {
  return {index == 0 ? 0 : runs_[index - 1].end, runs_[index].end, runs_[index].value};
}

inline void RunList::append(std::size_t length, Value value) {
  if (length == 0) return;
  const std::size_t end = size() + length;
  if (!runs_.empty() && runs_.back().value == value) {
    runs_.back().end = static_cast<std::uint32_t>(end);
  } else {
    runs_.push_back({static_cast<std::uint32_t>(end), value});
  }
}

template <class Change>
void RunList::transform(std::size_t start, std::size_t end, Change change) {
  if (start >= end) return;
  RunList changed;
  for (std::size_t index = find(start); index < runs_.size(); ++index) {
    const Run old = run(index);
    if (old.start >= end) break;
    const std::size_t from = old.start < start ? start : old.start;
    const std::size_t to = old.end > end ? end : old.end;
    changed.append(to - from, change(old.value));
  }
  replace(start, end - start, changed);
}

}  // namespace qel::richtext
