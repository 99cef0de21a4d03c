#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

namespace qel {

/// A set of words. Most words that are not in it are rejected by their length and first letter.
class WordSet {
 public:
  void insert(std::u16string_view word) {
    words_.emplace(word);
    longest_ = std::max(longest_, word.size());
    first_letters_ |= first_letter(word);
  }

  bool contains(std::u16string_view word) const {
    return word.size() <= longest_ && (first_letters_ & first_letter(word)) != 0 &&
           words_.find(word) != words_.end();
  }

 private:
  static std::uint64_t first_letter(std::u16string_view word) {
    constexpr unsigned bits = 64;
    return std::uint64_t{1} << (word.empty() ? 0U : word.front() % bits);
  }

  std::set<std::u16string, std::less<>> words_;
  std::size_t longest_ = 0;
  std::uint64_t first_letters_ = 0;
};

}  // namespace qel
