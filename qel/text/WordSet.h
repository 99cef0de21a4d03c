#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace qel {

/// A set of words. A word that is not in it is hardly ever compared with one that is.
class WordSet {
 public:
  void insert(std::u16string_view word) {
    if (!contains(word)) rows_[number(word)].emplace_back(word);
  }

  bool contains(std::u16string_view word) const {
    const auto& row = rows_[number(word)];
    return std::any_of(row.begin(), row.end(), [word](const std::u16string& listed) {
      // As bytes, which is many times as fast.
      return listed.size() == word.size() &&
             std::memcmp(listed.data(), word.data(), word.size() * sizeof(char16_t)) == 0;
    });
  }

 private:
  static constexpr std::size_t row_count = 64;

  static std::size_t number(std::u16string_view word) {
    if (word.empty()) return 0;
    return (word.front() * std::size_t{7} + word.back() * std::size_t{3} + word.size()) % row_count;
  }

  std::array<std::vector<std::u16string>, row_count> rows_;
};

}  // namespace qel
