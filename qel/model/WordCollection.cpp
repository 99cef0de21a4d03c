#include "qel/model/WordCollection.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace qel {
namespace {

constexpr std::u16string_view blanks =
    u" \t\n\v\f\r\u0085\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2008\u2009\u200A\u2028"
    u"\u2029\u205F\u3000";

/// Puts words together from their pieces in each segment.
class WordBuilder {
 public:
  explicit WordBuilder(std::vector<std::shared_ptr<Word>>& words) : words_(words) {}

  void add_piece(std::u16string_view piece, const std::shared_ptr<Segment>& segment,
                 std::int32_t index) {
    if (segments_.empty()) first_index_ = index;
    text_.append(piece);
    segments_.push_back(segment);
  }

  void end_word() {
    if (segments_.empty()) return;
    words_.push_back(std::make_shared<Word>(std::exchange(text_, {}), std::exchange(segments_, {}),
                                            first_index_));
  }

 private:
  std::vector<std::shared_ptr<Word>>& words_;
  std::u16string text_;
  std::vector<std::shared_ptr<Segment>> segments_;
  std::int32_t first_index_ = 0;
};

}  // namespace

bool is_word_blank(char16_t character) {
  if (character > u' ' && character < 0x80) return false;
  return blanks.find(character) != std::u16string_view::npos;
}

WordCollection::WordCollection(const SegmentCollection& segments) {
  WordBuilder builder(words_);
  std::int32_t index = 0;
  for (const auto& segment : segments) {
    ++index;
    if (segments.way() == Way::lossless && segment->line_codes_before() > 0) builder.end_word();
    const std::u16string_view text = segment->text();
    for (std::size_t at = 0; at < text.size();) {
      std::size_t end = at;
      while (end < text.size() && !is_word_blank(text[end])) ++end;
      if (end > at) builder.add_piece(text.substr(at, end - at), segment, index);
      if (end < text.size()) builder.end_word();
      at = end + 1;
    }
  }
  builder.end_word();
}

std::shared_ptr<Word> WordCollection::Item(std::int32_t Index) const {
  if (Index < 1 || Index > Count()) return nullptr;
  return words_[static_cast<std::size_t>(Index) - 1];
}

}  // namespace qel
