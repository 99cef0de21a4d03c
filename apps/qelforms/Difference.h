#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qel::forms {

/// A piece of two texts that are compared.
struct Difference {
  enum class Kind {
    same,     ///< in both
    removed,  ///< only in the first
    added,    ///< only in the second
  };

  Kind kind = Kind::same;
  std::u16string text;

  friend bool operator==(const Difference&, const Difference&) = default;
};

/// What it takes to get from one text to the other, by words. The pieces that are not `added` make
/// up the first text, those that are not `removed` the second; what was removed stands before what
/// was added in its place. Takes time and memory about linear in the texts: where these have little
/// in common, what is the same in long stretches may be told as removed and added.
std::vector<Difference> word_differences(std::u16string_view first, std::u16string_view second);

}  // namespace qel::forms
