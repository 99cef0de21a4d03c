#include "qel/base/Search.h"

#include <cstdint>
#include <iterator>
#include <vector>

#include "qel/base/Scan.h"

namespace qel {
namespace {

constexpr std::size_t npos = std::u16string_view::npos;

/// Up to this length every place is tried, which costs at most this many times the text's length.
constexpr std::size_t short_search = 32;

/// Where in the text the first occurrence ends, by the algorithm of Knuth, Morris and Pratt, which
/// never goes back in the text. `Iterator` goes forwards or backwards.
template <class Iterator>
Iterator end_of_occurrence(Iterator text, Iterator text_end, Iterator search, std::size_t size) {
  const auto at = [search](std::size_t i) { return search[static_cast<std::ptrdiff_t>(i)]; };
  // For each prefix of `search`, the length of the longest shorter prefix that it ends with.
  std::vector<std::size_t> borders(size + 1, 0);
  const auto next_length = [&](std::size_t length, char16_t character) {
    while (length > 0 && at(length) != character) length = borders[length];
    return at(length) == character ? length + 1 : 0;
  };
  for (std::size_t i = 1; i < size; ++i) borders[i + 1] = next_length(borders[i], at(i));
  std::size_t matched = 0;
  while (text != text_end && matched < size) matched = next_length(matched, *text++);
  return matched == size ? text : Iterator();
}

}  // namespace

std::size_t find_text(std::u16string_view text, std::u16string_view search, std::size_t from) {
  if (search.empty()) return from;
  if (search.size() > short_search) {
    const auto end = end_of_occurrence(text.data() + from, text.data() + text.size(), search.data(),
                                       search.size());
    return end == nullptr ? npos : static_cast<std::size_t>(end - text.data()) - search.size();
  }
  const std::uint16_t first = search.front();
  for (std::size_t at = from;; ++at) {
    at = find_first(text, at, [first](auto c) { return c == first; });
    if (text.size() - at < search.size()) return npos;
    if (text.compare(at, search.size(), search) == 0) return at;
  }
}

std::size_t find_last_text(std::u16string_view text, std::u16string_view search) {
  if (search.size() <= short_search) return text.rfind(search);
  using Backwards = std::reverse_iterator<const char16_t*>;
  const auto end = end_of_occurrence(Backwards(text.data() + text.size()), Backwards(text.data()),
                                     Backwards(search.data() + search.size()), search.size());
  return end == Backwards() ? npos : static_cast<std::size_t>(end.base() - text.data());
}

}  // namespace qel
