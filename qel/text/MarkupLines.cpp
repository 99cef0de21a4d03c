#include "qel/text/MarkupLines.h"

#include <algorithm>
#include <vector>

#include "qel/base/Utf16.h"
#include "qel/model/QELCode.h"
#include "qel/text/LineBreaker.h"
#include "qel/text/VisibleCharacters.h"

namespace qel {
namespace {

/// What is left of a paragraph, read only as far as its next line asks.
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
  bool may_end_after(std::size_t k) const {
    return !character(k).is_half && character(k).token_left == 0;
  }
  bool fits(std::size_t count) const { return fits(beginning(count)); }
  bool fits() const { return fits(text_); }

  std::size_t least() const { return character(1).is_half ? 2 : 1; }

  /// A part of what is shown as something else (a code that is none of ours, an escaped code) can
  /// be wider than all of it, and too wide by itself.
  std::size_t fitting_below(std::size_t misfit) const {
    std::vector<std::size_t> parts;
    for (std::size_t k = 1; k < misfit; ++k) {
      if (character(k).token_left > 0) parts.push_back(k);
    }
    const auto fits_part = [this](std::size_t k) { return fits(k); };
    auto wide = std::partition_point(parts.begin(), parts.end(), fits_part);
    // Parts differ in width, so one shortly before may be too wide as well.
    constexpr std::ptrdiff_t near = 64;
    wide = std::find_if_not(wide - std::min(near, wide - parts.begin()), wide, fits_part);
    if (wide != parts.end()) misfit = *wide;
    const std::size_t count = misfit - 1;
    return count > 0 && character(count).is_half ? count - 1 : count;
  }

 private:
  struct Character {
    std::size_t end;         // in the text
    bool is_half;            // the first of a pair
    std::size_t token_left;  // how much follows of what is shown as something else
  };

  const Character& character(std::size_t k) const { return characters_[k - 1]; }
  bool fits(std::u16string_view markup) const { return !(measure_(markup) > available_); }

  bool read_character() {
    while (visible::has_code_at(text_, at_)) at_ += 3;
    if (at_ >= text_.size()) return false;
    token_left_ = token_left_ > 0 ? token_left_ - 1 : token_length() - 1;
    characters_.push_back({at_ + 1, is_pair_at(text_, at_), token_left_});
    ++at_;
    return true;
  }

  /// Of the token that begins here; 1 for a character.
  std::size_t token_length() const {
    const std::u16string_view rest = text_.substr(at_);
    if (rest.front() == u'/' && IsQELCode(rest.substr(0, 3))) return 3;
    const bool is_escape = rest.front() == u'~' && rest.size() >= 4 &&
                           !visible::is_code(rest.substr(1, 3)) && rest[2] != u'n' &&
                           IsQELCode(rest.substr(1, 3));
    return is_escape || begins_with_placeholder(rest) ? 4 : 1;
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
  std::u16string_view left = visible::mid(rest_.substr(line.size()), 1, 0);
  left.remove_prefix(std::min(left.find_first_not_of(u' '), left.size()));
  rest_ = left;
  return line;
}

}  // namespace qel
