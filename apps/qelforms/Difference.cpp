#include "Difference.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <unordered_map>
#include <utility>

#include "SearchWords.h"

namespace qel::forms {
namespace {

/// A word, or one character between words.
using Tokens = std::vector<std::u16string_view>;

struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;

  std::size_t size() const { return end - begin; }
};

/// A token of the first text and the same one of the second.
using Pair = std::pair<std::size_t, std::size_t>;

/// Finds which tokens two texts share, in order. Small differences are found as a shortest way from
/// one to the other; large ones are parted at the tokens that both have once.
class Matcher {
 public:
  Matcher(const Tokens& first, const Tokens& second) {
    number(first, first_);
    number(second, second_);
    match({0, first_.size()}, {0, second_.size()}, 0);
  }

  const std::vector<Pair>& pairs() const { return pairs_; }

 private:
  void number(const Tokens& tokens, std::vector<std::size_t>& numbers) {
    for (const std::u16string_view token : tokens) {
      numbers.push_back(numbers_.try_emplace(token, numbers_.size()).first->second);
    }
  }

  void match(Span a, Span b, int depth) {
    while (a.size() > 0 && b.size() > 0 && first_[a.begin] == second_[b.begin]) {
      pairs_.emplace_back(a.begin++, b.begin++);
    }
    std::size_t tail = 0;
    while (a.size() > 0 && b.size() > 0 && first_[a.end - 1] == second_[b.end - 1]) {
      --a.end;
      --b.end;
      ++tail;
    }
    constexpr int deepest = 32;
    if (a.size() > 0 && b.size() > 0 && !match_shortest(a, b) && depth < deepest) {
      match_between_anchors(a, b, depth);
    }
    for (std::size_t i = 0; i < tail; ++i) pairs_.emplace_back(a.end + i, b.end + i);
  }

  /// The furthest positions in `a` that a number of steps reaches, by diagonal.
  using Reach = std::vector<std::ptrdiff_t>;

  /// The shortest way by the algorithm of Myers; false when it takes too many steps.
  bool match_shortest(Span a, Span b) {
    constexpr std::size_t most_work = 4'000'000;
    const std::size_t size = a.size() + b.size();
    const std::size_t most = std::min(size, std::clamp<std::size_t>(most_work / size, 16, 512));
    const auto offset = static_cast<std::ptrdiff_t>(most) + 1;
    const auto at = [offset](Reach& reach, std::ptrdiff_t k) -> std::ptrdiff_t& {
      return reach[static_cast<std::size_t>(k + offset)];
    };
    const auto n = static_cast<std::ptrdiff_t>(a.size());
    const auto m = static_cast<std::ptrdiff_t>(b.size());
    std::vector<Reach> steps;
    Reach reach(2 * most + 3, 0);
    for (std::ptrdiff_t d = 0; d <= static_cast<std::ptrdiff_t>(most); ++d) {
      steps.push_back(reach);
      for (std::ptrdiff_t k = -d; k <= d; k += 2) {
        const bool is_down = k == -d || (k != d && at(reach, k - 1) < at(reach, k + 1));
        std::ptrdiff_t x = is_down ? at(reach, k + 1) : at(reach, k - 1) + 1;
        while (x < n && x - k < m && same(a, x, b, x - k)) ++x;
        at(reach, k) = x;
        if (x < n || x - k < m) continue;
        trace(a, b, steps, n, m);
        return true;
      }
    }
    return false;
  }

  bool same(Span a, std::ptrdiff_t x, Span b, std::ptrdiff_t y) const {
    return first_[a.begin + static_cast<std::size_t>(x)] ==
           second_[b.begin + static_cast<std::size_t>(y)];
  }

  void trace(Span a, Span b, const std::vector<Reach>& steps, std::ptrdiff_t x, std::ptrdiff_t y) {
    const std::size_t known = pairs_.size();
    for (auto d = static_cast<std::ptrdiff_t>(steps.size()) - 1; d >= 0; --d) {
      const Reach& reach = steps[static_cast<std::size_t>(d)];
      const auto offset = static_cast<std::ptrdiff_t>(reach.size() / 2);
      const auto at = [&](std::ptrdiff_t k) { return reach[static_cast<std::size_t>(k + offset)]; };
      const std::ptrdiff_t k = x - y;
      const bool is_down = k == -d || (k != d && at(k - 1) < at(k + 1));
      const std::ptrdiff_t from_k = is_down ? k + 1 : k - 1;
      const std::ptrdiff_t from_x = d == 0 ? 0 : at(from_k);
      const std::ptrdiff_t from_y = d == 0 ? 0 : from_x - from_k;
      while (x > from_x && y > from_y) {
        --x;
        --y;
        pairs_.emplace_back(a.begin + static_cast<std::size_t>(x),
                            b.begin + static_cast<std::size_t>(y));
      }
      x = from_x;
      y = from_y;
    }
    std::reverse(pairs_.begin() + static_cast<std::ptrdiff_t>(known), pairs_.end());
  }

  void match_between_anchors(Span a, Span b, int depth) {
    // Rows of tokens are seldom in a text twice, and seldom survive where it is written anew.
    constexpr std::size_t row = 8;
    std::vector<Pair> anchored = anchors(a, b, row);
    if (anchored.empty()) anchored = anchors(a, b, 1);
    for (const auto& [x, y] : anchored) {
      match({a.begin, x}, {b.begin, y}, depth + 1);
      pairs_.emplace_back(x, y);
      a.begin = x + 1;
      b.begin = y + 1;
    }
    // Without anchors, the same would be tried again.
    if (!anchored.empty()) match(a, b, depth + 1);
  }

  /// Calls `found(number, position)` for each row of tokens in the span; the number is the same for
  /// the same tokens, and hardly ever for others.
  template <class Found>
  static void each_row(const std::vector<std::size_t>& tokens, Span span, std::size_t row,
                       Found found) {
    constexpr std::size_t factor = 0x9E3779B97F4A7C15U;
    for (std::size_t i = span.begin; i + row <= span.end; ++i) {
      std::size_t number = 0;
      for (std::size_t k = 0; k < row; ++k) number = (number + tokens[i + k] + 1) * factor;
      found(number, i);
    }
  }

  /// The longest sequence, in the order of both, of rows of tokens that each has once.
  std::vector<Pair> anchors(Span a, Span b, std::size_t row) const {
    struct Places {
      std::size_t in_first = 0;
      std::size_t in_second = 0;
      std::size_t at = 0;  // in the second
    };
    std::unordered_map<std::size_t, Places> places;
    each_row(first_, a, row, [&](std::size_t number, std::size_t) { ++places[number].in_first; });
    each_row(second_, b, row, [&](std::size_t number, std::size_t at) {
      const auto place = places.find(number);
      if (place == places.end()) return;
      ++place->second.in_second;
      place->second.at = at;
    });
    std::vector<Pair> once;
    each_row(first_, a, row, [&](std::size_t number, std::size_t at) {
      const Places& place = places[number];
      if (place.in_first == 1 && place.in_second == 1 && first_[at] == second_[place.at]) {
        once.emplace_back(at, place.at);
      }
    });
    return longest_ascending(once);
  }

  static std::vector<Pair> longest_ascending(const std::vector<Pair>& pairs) {
    std::vector<std::size_t> ends;  // of the rows of each length, by the lowest end
    std::vector<std::optional<std::size_t>> before(pairs.size());
    for (std::size_t i = 0; i < pairs.size(); ++i) {
      const auto place =
          std::lower_bound(ends.begin(), ends.end(), pairs[i].second,
                           [&](std::size_t end, std::size_t y) { return pairs[end].second < y; });
      if (place != ends.begin()) before[i] = *(place - 1);
      if (place == ends.end()) {
        ends.push_back(i);
      } else {
        *place = i;
      }
    }
    std::vector<Pair> row;
    if (ends.empty()) return row;
    for (std::optional<std::size_t> i = ends.back(); i; i = before[*i]) row.push_back(pairs[*i]);
    std::reverse(row.begin(), row.end());
    return row;
  }

  std::unordered_map<std::u16string_view, std::size_t> numbers_;
  std::vector<std::size_t> first_;
  std::vector<std::size_t> second_;
  std::vector<Pair> pairs_;
};

Tokens tokens_of(std::u16string_view text) {
  Tokens tokens;
  std::size_t at = 0;
  for (const Part& word : word_parts(text)) {
    for (; at < word.start; ++at) tokens.push_back(text.substr(at, 1));
    tokens.push_back(text.substr(word.start, word.length));
    at = word.start + word.length;
  }
  for (; at < text.size(); ++at) tokens.push_back(text.substr(at, 1));
  return tokens;
}

/// Puts pieces together. Blanks alone between two changes belong to both: to tell them as the same
/// would tear the changes to shreds.
class Pieces {
 public:
  void add(Difference::Kind kind, std::u16string_view text) {
    if (text.empty()) return;
    if (kind != Difference::Kind::same) {
      if (!same_.empty() && is_shred()) {
        removed_.append(same_);
        added_.append(same_);
        same_.clear();
      }
      flush_same();
      (kind == Difference::Kind::removed ? removed_ : added_).append(text);
    } else {
      same_.append(text);
    }
  }

  std::vector<Difference> finish() {
    flush_same();
    flush_changes();
    return std::move(pieces_);
  }

 private:
  bool is_shred() const {
    return !(removed_.empty() && added_.empty()) && simplified(same_).empty();
  }

  void flush_same() {
    if (same_.empty()) return;
    flush_changes();
    pieces_.push_back({Difference::Kind::same, std::exchange(same_, {})});
  }

  void flush_changes() {
    if (!removed_.empty()) {
      pieces_.push_back({Difference::Kind::removed, std::exchange(removed_, {})});
    }
    if (!added_.empty()) pieces_.push_back({Difference::Kind::added, std::exchange(added_, {})});
  }

  std::vector<Difference> pieces_;
  std::u16string same_;  // behind the changes
  std::u16string removed_;
  std::u16string added_;
};

}  // namespace

std::vector<Difference> word_differences(std::u16string_view first, std::u16string_view second) {
  const Tokens a = tokens_of(first);
  const Tokens b = tokens_of(second);
  const Matcher matcher(a, b);
  Pieces pieces;
  std::size_t in_a = 0;
  std::size_t in_b = 0;
  const auto add_changes = [&](std::size_t x, std::size_t y) {
    for (; in_a < x; ++in_a) pieces.add(Difference::Kind::removed, a[in_a]);
    for (; in_b < y; ++in_b) pieces.add(Difference::Kind::added, b[in_b]);
  };
  for (const auto& [x, y] : matcher.pairs()) {
    add_changes(x, y);
    pieces.add(Difference::Kind::same, a[x]);
    in_a = x + 1;
    in_b = y + 1;
  }
  add_changes(a.size(), b.size());
  return pieces.finish();
}

}  // namespace qel::forms
