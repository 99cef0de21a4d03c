#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace qel {

/// How many characters of a text go on the next line: all of them if they fit; else as many whole
/// words as fit, without the blank after the last; else as many characters as fit, but at least
/// one, so that every line makes progress.
///
/// The rule is to back off from the end of the text word by word. Where a line may end, longer
/// beginnings of the text are at least as wide as shorter ones. So the place is searched for from
/// the front, by measuring beginnings of doubling length and then halving: the cost depends on the
/// line, not on the text.
///
/// `Text` answers questions about beginnings of the text:
///   bool has(k)                whether there are at least `k` characters
///   bool is_blank(k)           whether the k-th (one-based) is a blank
///   bool may_end_after(k)      whether a line may end after the k-th
///   bool fits(k), fits()       whether the first `k`, or all, fit on the line
template <class Text>
class LineBreaker {
 public:
  /// `usual` is a guess at the result: the length of the line before.
  static std::size_t length_of_line(Text& text, std::size_t usual) {
    std::size_t fitting = 0;
    std::size_t bound = end_at_or_after(text, std::max<std::size_t>(usual + usual / 4, 16));
    while (text.has(bound) && text.fits(bound)) {
      fitting = bound;
      bound = end_at_or_after(text, 2 * bound);
    }
    if (!text.has(bound)) {
      if (text.fits()) return bound - 1;
      --bound;
    }
    return shortened(text, fitting, bound);
  }

 private:
  /// The first count from `count` on after which a line may end, or one more than there are.
  static std::size_t end_at_or_after(Text& text, std::size_t count) {
    while (text.has(count) && !text.may_end_after(count)) ++count;
    while (count > 1 && !text.has(count) && !text.has(count - 1)) --count;
    return count;
  }

  /// The first `fitting` fit, the first `bound` do not.
  static std::size_t shortened(Text& text, std::size_t fitting, std::size_t bound) {
    const std::vector<std::size_t> words = word_ends(text, bound);
    const auto misfit = std::partition_point(words.begin(), words.end(), [&](std::size_t end) {
      return end <= fitting || text.fits(end);
    });
    if (misfit != words.begin()) return *(misfit - 1);
    return fitting_characters(text, fitting, words.empty() ? bound : words.front());
  }

  /// The counts before blanks, except a blank at the very beginning.
  static std::vector<std::size_t> word_ends(Text& text, std::size_t bound) {
    std::vector<std::size_t> ends;
    for (std::size_t k = 2; k <= bound; ++k) {
      if (text.is_blank(k)) ends.push_back(k - 1);
    }
    return ends;
  }

  static std::size_t fitting_characters(Text& text, std::size_t fitting, std::size_t bound) {
    std::vector<std::size_t> ends;
    for (std::size_t k = fitting + 1; k < bound; ++k) {
      if (text.may_end_after(k)) ends.push_back(k);
    }
    ends.push_back(bound);
    const auto misfit = std::partition_point(ends.begin(), ends.end(),
                                             [&](std::size_t end) { return text.fits(end); });
    if (misfit != ends.begin()) return *(misfit - 1);
    return fitting > 0 ? fitting : ends.front();
  }
};

}  // namespace qel
