#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "qel/model/SegmentCollection.h"
#include "qel/model/Word.h"

namespace qel {

/// The words of a decoded text in order. Positions are one-based.
class WordCollection {
 public:
  WordCollection() = default;
  /// The words of the segments: the maximal runs of characters that are not blank, even across
  /// segments. Blanks are white space other than no-break spaces. In the lossless way a line code
  /// ends a word, too.
  explicit WordCollection(const SegmentCollection& segments);

  std::int32_t Count() const { return static_cast<std::int32_t>(words_.size()); }
  /// The word at `Index`; none outside 1 to `Count`.
  std::shared_ptr<Word> Item(std::int32_t Index) const;

  auto begin() const { return words_.begin(); }
  auto end() const { return words_.end(); }

 private:
  std::vector<std::shared_ptr<Word>> words_;
};

/// White space that ends a word.
bool is_word_blank(char16_t character);

}  // namespace qel
