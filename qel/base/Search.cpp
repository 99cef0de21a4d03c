#include "qel/base/Search.h"

#include <algorithm>
#include <cstdint>
#include <functional>

#include "qel/base/Scan.h"

namespace qel {
namespace {

constexpr std::size_t npos = std::u16string_view::npos;

/// Up to this length trying every place costs at most so many times the text.
constexpr std::size_t short_search = 32;

}  // namespace

std::size_t find_text(std::u16string_view text, std::u16string_view search, std::size_t from) {
  if (search.empty()) return from;
  if (search.size() > short_search) {
    const auto begin = text.begin() + static_cast<std::ptrdiff_t>(from);
    const auto found =
        std::search(begin, text.end(), std::boyer_moore_searcher(search.begin(), search.end()));
    return found == text.end() ? npos : static_cast<std::size_t>(found - text.begin());
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
  const auto found = std::search(text.rbegin(), text.rend(),
                                 std::boyer_moore_searcher(search.rbegin(), search.rend()));
  if (found == text.rend()) return npos;
  return static_cast<std::size_t>(text.rend() - found) - search.size();
}

}  // namespace qel
