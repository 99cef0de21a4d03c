#include "qel/richtext/RunList.h"

#include <algorithm>

namespace qel::richtext {

std::size_t RunList::find(std::size_t position) const {
  const auto found =
      std::upper_bound(runs_.begin(), runs_.end(), position,
                       [](std::size_t wanted, const Entry& entry) { return wanted < entry.end; });
  return static_cast<std::size_t>(found - runs_.begin());
}

void RunList::append_part(const RunList& source, std::size_t start, std::size_t end) {
  if (start >= end) return;
  for (std::size_t index = source.find(start); index < source.runs_.size(); ++index) {
    const Run run = source.run(index);
    if (run.start >= end) break;
    append(std::min(run.end, end) - std::max(run.start, start), run.value);
  }
}

void RunList::replace(std::size_t position, std::size_t erased, const RunList& inserted) {
  // Rebuilds only the runs that the change touches, and a neighbour on each side that may join
  // them; the runs after those just move.
  const std::size_t old_size = size();
  const std::size_t change_end = position + erased;
  std::size_t first = position < old_size ? find(position) : runs_.size();
  if (first > 0) --first;
  std::size_t last = change_end < old_size ? find(change_end) + 1 : runs_.size();
  last = std::min(last + 1, runs_.size());

  const std::size_t base = first == 0 ? 0 : runs_[first - 1].end;
  const std::size_t tail_end = last == 0 ? 0 : runs_[last - 1].end;
  RunList middle;
  middle.append_part(*this, base, position);
  middle.append_part(inserted, 0, inserted.size());
  middle.append_part(*this, change_end, tail_end);
  for (Entry& entry : middle.runs_) entry.end += static_cast<std::uint32_t>(base);

  const auto shift =
      static_cast<std::ptrdiff_t>(inserted.size()) - static_cast<std::ptrdiff_t>(erased);
  for (std::size_t index = last; index < runs_.size(); ++index) {
    runs_[index].end =
        static_cast<std::uint32_t>(static_cast<std::ptrdiff_t>(runs_[index].end) + shift);
  }
  const auto at = runs_.erase(runs_.begin() + static_cast<std::ptrdiff_t>(first),
                              runs_.begin() + static_cast<std::ptrdiff_t>(last));
  runs_.insert(at, middle.runs_.begin(), middle.runs_.end());
}

bool RunList::check() const {
  const auto out_of_order = [](const Entry& left, const Entry& right) {
    return left.end >= right.end || left.value == right.value;
  };
  return (runs_.empty() || runs_.front().end > 0) &&
         std::adjacent_find(runs_.begin(), runs_.end(), out_of_order) == runs_.end();
}

}  // namespace qel::richtext
