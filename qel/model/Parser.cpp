#include "qel/model/Parser.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "qel/base/Scan.h"
#include "qel/model/QELCode.h"
#include "qel/model/StyleCodes.h"

namespace qel {
namespace {

constexpr std::size_t code_length = 3;

// The flags of what codes have set: the attributes, and from these bits on the indexes of colours
// and fonts, of which bit 0 is never set.
constexpr unsigned color_flags = 8;
constexpr unsigned font_flags = 18;
constexpr std::uint32_t index_mask = 0x3FF;

/// What a code makes of the flags.
struct CodeAction {
  std::uint32_t kept = ~std::uint32_t{0};
  std::uint32_t set = 0;
};

/// The actions of all codes by letter and digit. Which code comes next cannot be foretold, so there
/// is no branch to choose among them.
class CodeActions {
 public:
  constexpr CodeActions() {
    // "t" is a code but changes nothing. Raised and lowered text has two letters each.
    for (const char letter : {'b', 'i', 'u', 'c', 'k', 's', 'p'}) {
      put_toggle(letter, style_codes::attribute_bit(static_cast<char16_t>(letter)));
    }
    put_toggle('r', style_codes::superscript_bit);
    put_toggle('l', style_codes::subscript_bit);
    put_indexes('y', color_flags);
    put_indexes('f', font_flags);
  }

  const CodeAction& find(unsigned letter, unsigned digit) const {
    return actions_[(letter & letter_mask) << digit_bits | (digit & digit_mask)];
  }

 private:
  static constexpr unsigned letter_mask = 0x1F;
  static constexpr unsigned digit_bits = 4;
  static constexpr unsigned digit_mask = 0xF;

  constexpr CodeAction& at(char letter, unsigned digit) {
    return actions_[(static_cast<unsigned>(letter) & letter_mask) << digit_bits | digit];
  }
  constexpr void put_toggle(char letter, unsigned bit) {
    at(letter, 0) = {~std::uint32_t{bit}, 0};
    at(letter, 1) = {~std::uint32_t{0}, bit};
  }
  constexpr void put_indexes(char letter, unsigned flags) {
    at(letter, 0) = {~(index_mask << flags), 0};
    for (unsigned index = 1; index < 10; ++index) at(letter, index).set = 1U << (flags + index);
  }

  std::array<CodeAction, std::size_t{(letter_mask + 1) << digit_bits}> actions_ = {};
};

constexpr CodeActions code_actions;

/// The highest index, 0 where there is none.
constexpr std::int16_t highest(std::uint32_t flags) {
  return static_cast<std::int16_t>(std::bit_width((flags & index_mask) | 1U) - 1);
}

/// The characters and the segments of one decoded text. Every segment that is handed out keeps all
/// of it alive; in return a segment needs no allocation of its own.
class DecodedText {
 public:
  explicit DecodedText(std::u16string text) : text_(std::move(text)) {}

  std::u16string_view text() const { return text_; }

  /// Moves `next`, a later part of the text, to the end of `first`, and returns both in one.
  std::u16string_view join(std::u16string_view first, std::u16string_view next) {
    const auto begin = static_cast<std::size_t>(first.data() - text_.data());
    std::copy(next.begin(), next.end(),
              text_.begin() + static_cast<std::ptrdiff_t>(begin + first.size()));
    return std::u16string_view(text_).substr(begin, first.size() + next.size());
  }

  Segment* new_segment(std::size_t characters_left) {
    if (used_ == block_size_) add_block(characters_left);
    return &blocks_.back()[used_++];
  }

 private:
  void add_block(std::size_t characters_left) {
    constexpr std::size_t usual_run = 16;
    constexpr std::size_t largest_block = 512;
    block_size_ = std::min(characters_left / usual_run + 1, largest_block);
    blocks_.push_back(std::make_unique<Segment[]>(block_size_));
    used_ = 0;
  }

  std::u16string text_;
  std::vector<std::unique_ptr<Segment[]>> blocks_;
  std::size_t block_size_ = 0;
  std::size_t used_ = 0;
};

}  // namespace

template <class Char>
[[gnu::always_inline]] inline std::size_t BasicMarkupScanner<Char>::find_special(
    std::size_t from) const {
  return way_ == Way::stated ? find_any<u'/'>(markup_, from)
                             : find_any<u'/', u'~', u'\r', u'\n'>(markup_, from);
}

template <class Char>
auto BasicMarkupScanner<Char>::special_at(std::size_t at) const -> Special {
  const Char first = markup_[at];
  if (first == '/') {
    if (is_cut(at)) return Special::cut;
    if (markup_.size() - at < code_length) return Special::none;
    const auto letter = static_cast<char16_t>(markup_[at + 1]);
    const auto digit = static_cast<char16_t>(markup_[at + 2]);
    const unsigned kind = code_letters::kind(letter, digit);
    if ((kind & code_kinds_) != 0) return Special::code;
    return letter == 'n' && digit == 'l' ? Special::line_break : Special::none;
  }
  if (way_ == Way::stated || (first != '~' && first != '\r' && first != '\n')) return Special::none;
  if (is_cut(at)) return Special::cut;
  if (first != '~') return Special::line_break;
  return begins_with_escaped_code(markup_.substr(at)) ? Special::escaped_code : Special::none;
}

template <class Char>
void BasicMarkupScanner<Char>::go_on(View markup, bool is_last) {
  markup_ = markup;
  is_last_ = is_last;
  at_ = 0;
}

template <class Char>
bool BasicMarkupScanner<Char>::is_cut(std::size_t at) const {
  constexpr std::size_t longest = 4;
  return !is_last_ && markup_.size() - at < longest;
}

template <class Char>
auto BasicMarkupScanner<Char>::next() -> Item {
  goes_on_ = std::exchange(is_literal_, false);
  // A slash behind its tilde is text.
  if (goes_on_) return give_text(at_, at_ + 1);
  for (; at_ < markup_.size(); at_ += code_length) {
    switch (special_at(at_)) {
      case Special::none:
        return give_text(at_, at_ + 1);
      case Special::code:
        apply(markup_[at_ + 1], markup_[at_ + 2]);
        break;
      case Special::line_break:
        at_ += line_break_length(markup_.substr(at_), way_);
        return Item::line_break;
      case Special::escaped_code:
        return give_text(at_ + 1, at_ + 2);
      case Special::cut:
        return Item::end;
    }
  }
  return Item::end;
}

/// The text from `begin` on, in which nothing before `from` is anything else.
template <class Char>
auto BasicMarkupScanner<Char>::give_text(std::size_t begin, std::size_t from) -> Item {
  std::size_t end = find_special(from);
  Special special = Special::none;
  for (; end < markup_.size(); end = find_special(end + 1)) {
    special = special_at(end);
    if (special != Special::none) break;
  }
  // Two characters of a text tell what it would be behind the one before.
  const bool is_enough = is_last_ || end - begin > 1;
  const bool may_go_on = end == markup_.size() || special == Special::cut;
  if (may_go_on && !is_enough) return Item::end;
  text_ = markup_.substr(begin, end - begin);
  is_literal_ = special == Special::escaped_code;
  at_ = is_literal_ ? end + 1 : end;
  return Item::text;
}

template <class Char>
void BasicMarkupScanner<Char>::apply(Char letter, Char digit) {
  const CodeAction& action =
      code_actions.find(static_cast<unsigned>(letter), static_cast<unsigned>(digit));
  flags_ = (flags_ & action.kept) | action.set;
  state_.attributes = static_cast<std::uint8_t>(flags_);
  state_.color = highest(flags_ >> color_flags);
  state_.font = highest(flags_ >> font_flags);
}

template <class Char>
void read_runs(BasicMarkupScanner<Char>& scanner, BasicRunSink<Char>& sink) {
  using Item = typename BasicMarkupScanner<Char>::Item;
  for (Item item = scanner.next(); item != Item::end; item = scanner.next()) {
    if (item == Item::text) {
      sink.text(scanner.text(), scanner.state());
    } else {
      sink.line_break(scanner.state());
    }
  }
}

template class BasicMarkupScanner<char>;
template class BasicMarkupScanner<char16_t>;
template void read_runs(BasicMarkupScanner<char>&, BasicRunSink<char>&);
template void read_runs(BasicMarkupScanner<char16_t>&, BasicRunSink<char16_t>&);

void parse_markup(std::u16string markup, SegmentCollection& segments, Way way) {
  const auto decoded = std::make_shared<DecodedText>(std::move(markup));
  MarkupScanner scanner(decoded->text(), way);
  std::int32_t line_breaks = 0;
  Segment* last = nullptr;
  for (auto item = scanner.next(); item != MarkupScanner::Item::end; item = scanner.next()) {
    const std::u16string_view text = scanner.text();
    if (item == MarkupScanner::Item::line_break) {
      ++line_breaks;
    } else if (scanner.goes_on()) {
      last->set_decoded(decoded->join(last->text(), text), scanner.state(),
                        last->line_codes_before());
    } else {
      const auto read = static_cast<std::size_t>(text.data() - decoded->text().data());
      last = decoded->new_segment(decoded->text().size() - read);
      last->set_decoded(text, scanner.state(), std::exchange(line_breaks, 0));
      segments.append({decoded, last});
    }
  }
  segments.put_line_codes_at_end(line_breaks);
}

}  // namespace qel
