#include "qel/text/MarkupLines.h"

#include <algorithm>
#include <vector>

#include "qel/base/Utf16.h"
#include "qel/model/QELCode.h"
#include "qel/text/LineBreaker.h"
#include "qel/text/VisibleCharacters.h"

namespace qel {
namespace {

constexpr std::size_t escaped_length = 4;

/// The rest of a paragraph, read only as far as its next line needs.
class Rest {
 public:
  Rest(std::u16string_view text, float available, const MarkupLines::Measure& measure)
      : text_(text), available_(available), measure_(measure) {}

  /// The first `count` characters with the codes before and between them.
  std::u16string_view beginning(std::size_t count) const {
    return text_.substr(0, character(count).end);
  }

  bool has(std::size_t count) {
    while (characters_.size() < count && read_character()) continue;
    return characters_.size() >= count;
  }
  bool is_blank(std::size_t k) const { return text_[character(k).end - 1] == u' '; }
  /// Not within a code that the layout engine does not count as one, or an escaped code: a part of
  /// it could even be wider than the whole.
  bool may_end_after(std::size_t k) {
    return (!character(k).is_half && character(k).token_left == 0) || !has(k + 1);
  }
  bool fits(std::size_t count) const { return fits(beginning(count)); }
  bool fits() const { return fits(text_); }

 private:
  struct Character {
    std::size_t end;         // in the text
    bool is_half;            // the first of a pair
    std::size_t token_left;  // how much of the token is still to come
  };

  const Character& character(std::size_t k) const { return characters_[k - 1]; }
  bool fits(std::u16string_view markup) const { return !(measure_(markup) > available_); }

  bool read_character() {
    while (visible::has_code_at(text_, at_)) at_ += 3;
    if (at_ >= text_.size()) return false;
    if (token_left_ > 0) {
      --token_left_;
    } else if (begins_with_escaped_code(text_.substr(at_)) &&
               visible::has_code_at(text_, at_ + 1)) {
      // What follows the "~" is one of the engine's own codes too, and not counted.
      at_ += escaped_length;
      characters_.push_back({at_, false, 0});
      return true;
    } else {
      token_left_ = token_length() - 1;
    }
    characters_.push_back({at_ + 1, is_pair_at(text_, at_), token_left_});
    ++at_;
    return true;
  }

  /// The length of the token that begins here; 1 for a character.
  std::size_t token_length() const {
    const std::u16string_view rest = text_.substr(at_);
    if (rest.front() == u'/' && IsQELCode(rest.substr(0, 3))) return 3;
    const bool is_escaped = begins_with_placeholder(rest) || begins_with_escaped_code(rest) ||
                            visible::is_escape_code(rest.substr(0, escaped_length));
    return is_escaped ? escaped_length : 1;
  }

  std::u16string_view text_;
  float available_;
  const MarkupLines::Measure& measure_;
  std::size_t at_ = 0;
  std::size_t token_left_ = 0;
  std::vector<Character> characters_;
};

}  // namespace

std::optional<std::u16string_view> MarkupLines::next() {
  Rest rest(rest_, available_, measure_);
  if (!rest.has(1)) return std::nullopt;
  available_ = available_later_;
  usual_ = LineBreaker<Rest>::length_of_line(rest, usual_);
  const bool takes_all = !rest.has(usual_ + 1) && rest.fits();
  const std::u16string_view line = takes_all ? rest_ : rest.beginning(usual_);
  std::u16string_view left = visible::mid(rest_.substr(line.size()), 0);
  left.remove_prefix(std::min(left.find_first_not_of(u' '), left.size()));
  rest_ = left;
  return line;
}

}  // namespace qel
