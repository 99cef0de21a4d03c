#include "qel/model/Parser.h"

#include <algorithm>
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

/// Bit k of the flags stands for index k.
void select(unsigned& flags, unsigned index) { flags = index == 0 ? 0 : flags | (1U << index); }

std::int16_t highest(unsigned flags) {
  return flags == 0 ? std::int16_t{0} : static_cast<std::int16_t>(std::bit_width(flags) - 1);
}

/// 0 for "t", which is a code but changes nothing.
unsigned bit_of(char16_t letter) {
  return style_codes::attribute_bit(letter) & ~unsigned{style_codes::unicode_bit};
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

std::size_t MarkupScanner::find_special(std::size_t from) const {
  return way_ == Way::stated ? find_any<u'/'>(markup_, from)
                             : find_any<u'/', u'~', u'\r', u'\n'>(markup_, from);
}

MarkupScanner::Special MarkupScanner::special_at(std::size_t at) const {
  if (markup_[at] == u'~') {
    return begins_with_escaped_code(markup_.substr(at)) ? Special::escaped_code : Special::none;
  }
  if (markup_[at] != u'/') return Special::line_break;
  if (markup_.size() - at < code_length) return Special::none;
  const char16_t letter = markup_[at + 1];
  const char16_t digit = markup_[at + 2];
  if (is_text_model_code(letter, digit)) return Special::code;
  if (letter == u'n' && digit == u'l') return Special::line_break;
  return reads_codes_of_rtf_ && is_code_of_any_reader(letter, digit) ? Special::code
                                                                     : Special::none;
}

MarkupScanner::Item MarkupScanner::give_text(std::size_t begin, std::size_t end) {
  text_ = markup_.substr(begin, end - begin);
  at_ = end;
  return Item::text;
}

void MarkupScanner::go_on(std::u16string_view markup, bool is_last) {
  markup_ = markup;
  is_last_ = is_last;
  at_ = 0;
}

bool MarkupScanner::is_cut(std::size_t at) const {
  constexpr std::size_t longest = 4;
  return !is_last_ && markup_.size() - at < longest;
}

MarkupScanner::Special MarkupScanner::next_special(std::size_t from, std::size_t& at) const {
  for (at = find_special(from); at < markup_.size() && !is_cut(at); at = find_special(at + 1)) {
    const Special special = special_at(at);
    if (special != Special::none) return special;
  }
  return Special::none;
}

/// The text before something that is not text; what that is, is remembered.
MarkupScanner::Item MarkupScanner::give_text_before(Special special, std::size_t begin,
                                                    std::size_t end) {
  const Item item = give_text(begin, end);
  is_literal_ = special == Special::escaped_code;
  if (is_literal_) {
    ++at_;
  } else {
    known_ = special;
  }
  return item;
}

MarkupScanner::Item MarkupScanner::next() {
  goes_on_ = std::exchange(is_literal_, false);
  std::size_t begin = at_;
  std::size_t at = begin;
  Special special = std::exchange(known_, Special::none);
  // A slash behind its tilde is text.
  if (special == Special::none) special = next_special(goes_on_ ? begin + 1 : begin, at);
  while (special != Special::none) {
    if (at > begin) return give_text_before(special, begin, at);
    if (special == Special::line_break) {
      at_ = at + line_break_length(markup_.substr(at), way_);
      return Item::line_break;
    }
    const bool is_escaped = special == Special::escaped_code;
    if (!is_escaped) apply(markup_[at + 1], markup_[at + 2]);
    begin = at + (is_escaped ? 1 : code_length);
    special = next_special(is_escaped ? begin + 1 : begin, at);
  }
  // Two characters of a text tell what it would be behind the one before.
  const bool is_enough = is_last_ || at - begin > 1;
  if (begin < at && is_enough) return give_text(begin, at);
  at_ = begin;
  return Item::end;
}

void MarkupScanner::apply(char16_t letter, char16_t digit) {
  if (letter == u'r') letter = u'p';
  if (letter == u'l') letter = u's';
  const unsigned index = static_cast<unsigned>(digit - u'0');
  if (letter == u'f') {
    select(fonts_, index);
    state_.font = highest(fonts_);
  } else if (letter == u'y') {
    select(colors_, index);
    state_.color = highest(colors_);
  } else {
    const unsigned bit = bit_of(letter);
    const unsigned others = state_.attributes & ~bit;
    state_.attributes = static_cast<std::uint8_t>(index == 1 ? others | bit : others);
  }
}

void read_runs(MarkupScanner& scanner, RunSink& sink) {
  for (auto item = scanner.next(); item != MarkupScanner::Item::end; item = scanner.next()) {
    if (item == MarkupScanner::Item::text) {
      sink.text(scanner.text(), scanner.state());
    } else {
      sink.line_break(scanner.state());
    }
  }
}

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
