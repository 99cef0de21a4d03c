#include "windows/Difference.h"

#include <algorithm>
#include <string_view>

#include "qel/base/Utf16.h"

namespace qel::windows {

using richtext::Document;
using richtext::Extent;
using richtext::RunList;

namespace {

/// How many positions agree from the front, at most `limit`.
template <class Same>
std::size_t agreeing_front(const RunList& a, const RunList& b, std::size_t limit, Same same) {
  std::size_t at = 0;
  for (std::size_t i = 0, j = 0; at < limit;) {
    const RunList::Run run = a.run(i);
    const RunList::Run other = b.run(j);
    if (!same(run.value, other.value)) return at;
    at = std::min(run.end, other.end);
    if (run.end == at) ++i;
    if (other.end == at) ++j;
  }
  return limit;
}

/// The same from the back.
template <class Same>
std::size_t agreeing_back(const RunList& a, const RunList& b, std::size_t limit, Same same) {
  std::size_t at = 0;
  for (std::size_t i = a.run_count(), j = b.run_count(); at < limit;) {
    const RunList::Run run = a.run(i - 1);
    const RunList::Run other = b.run(j - 1);
    if (!same(run.value, other.value)) return at;
    const std::size_t to_start = a.size() - run.start;
    const std::size_t to_other_start = b.size() - other.start;
    at = std::min(to_start, to_other_start);
    if (to_start == at) --i;
    if (to_other_start == at) --j;
  }
  return limit;
}

struct Agreement {
  std::size_t front;
  std::size_t back;
};

Agreement agreement_of(std::u16string_view a, std::u16string_view b) {
  const std::size_t shorter = std::min(a.size(), b.size());
  std::size_t front = 0;
  while (front < shorter && a[front] == b[front]) ++front;
  if (front > 0 && is_high_surrogate(a[front - 1])) --front;
  std::size_t back = 0;
  while (back < shorter - front && a[a.size() - back - 1] == b[b.size() - back - 1]) ++back;
  if (back > 0 && is_low_surrogate(a[a.size() - back])) --back;
  return {front, back};
}

Change change_between(Agreement agreement, std::size_t before, std::size_t after) {
  return {{agreement.front, before - agreement.back}, {agreement.front, after - agreement.back}};
}

}  // namespace

Change text_change(std::u16string_view before, std::u16string_view after) {
  return change_between(agreement_of(before, after), before.size(), after.size());
}

Difference difference(const Document& before, const Document& after) {
  const Agreement text = agreement_of(before.text(), after.text());
  const auto same_format = [&](RunList::Value a, RunList::Value b) {
    return before.format(a) == after.format(b);
  };
  const auto same_value = [](RunList::Value a, RunList::Value b) { return a == b; };
  const Agreement formats = {agreeing_front(before.runs(), after.runs(), text.front, same_format),
                             agreeing_back(before.runs(), after.runs(), text.back, same_format)};
  const RunList& aligned = before.alignments();
  const RunList& other = after.alignments();
  const Agreement alignments = {agreeing_front(aligned, other, text.front, same_value),
                                agreeing_back(aligned, other, text.back + 1, same_value)};
  return {change_between(text, before.size(), after.size()),
          change_between(formats, before.size(), after.size()),
          change_between(alignments, aligned.size(), other.size())};
}

}  // namespace qel::windows
