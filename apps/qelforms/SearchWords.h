#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "Heading.h"

namespace qel::forms {

/// The words that somebody searches, and where they stand in a text. A word is letters and numbers;
/// neither case nor accents count. What is written without blanks between, such as "C++" or
/// "well-known", has to stand so. The last word is perhaps only begun, unless a blank follows it.
class SearchWords {
 public:
  explicit SearchWords(std::u16string_view text);

  bool empty() const { return phrases_.empty(); }
  /// Whether each word is in one of the two visible texts.
  bool are_in(std::u16string_view title, std::u16string_view body) const;
  /// Where the words stand in a visible text, in ascending order.
  std::vector<Part> parts_in(std::u16string_view visible) const;
  /// What the index understands: all of the words.
  const std::u16string& query() const { return query_; }

 private:
  using Phrase = std::vector<std::u16string>;
  template <class Words>
  bool stands_at(const Phrase& phrase, const Words& words, std::size_t at) const;
  template <class Words>
  bool stands_in(const Phrase& phrase, const Words& words) const;

  std::vector<Phrase> phrases_;
  bool is_last_begun_ = false;
  std::u16string query_;
};

/// Where words of a text stand, in order.
std::vector<Part> word_parts(std::u16string_view text);

/// A text and parts of it.
struct Snippet {
  std::u16string text;
  std::vector<Part> parts;
};

/// The words around the first of the parts of a visible text, on one line; empty when there is
/// none.
Snippet snippet_of(std::u16string_view visible, const std::vector<Part>& parts);

/// The text without accents, in lower case, to be sorted by.
std::u16string folded(std::u16string_view text);

/// Without blanks around it, and with one in place of several within.
std::u16string simplified(std::u16string_view text);

}  // namespace qel::forms
