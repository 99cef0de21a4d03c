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
class DecodedText : public std::enable_shared_from_this<DecodedText> {
 public:
  explicit DecodedText(std::u16string text) : text_(std::move(text)) {}

  std::u16string_view text() const { return text_; }

  std::shared_ptr<Segment> new_segment(std::size_t characters_left) {
    if (used_ == block_size_) add_block(characters_left);
    return {shared_from_this(), &blocks_.back()[used_++]};
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

bool MarkupScanner::next() {
  line_codes_ = 0;
  std::size_t begin = at_;
  for (std::size_t slash = find_any<u'/'>(text_, begin); slash < text_.size();) {
    const std::u16string_view code = text_.substr(slash, 3);
    if (!IsQELCode(code, sfAll)) {
      slash = find_any<u'/'>(text_, slash + 1);
      continue;
    }
    if (slash > begin) {
      at_ = slash;
      run_ = text_.substr(begin, slash - begin);
      return true;
    }
    if (code == u"/nl") {
      ++line_codes_;
    } else {
      apply(code[1], code[2]);
    }
    begin = slash + 3;
    slash = find_any<u'/'>(text_, begin);
  }
  at_ = text_.size();
  run_ = text_.substr(begin);
  return !run_.empty();
}

void MarkupScanner::apply(char16_t letter, char16_t digit) {
  const unsigned index = static_cast<unsigned>(digit - u'0');
  if (letter == u'f') {
    select(fonts_, index);
  } else if (letter == u'y') {
    select(colors_, index);
  } else if (index == 1) {
    attributes_ |= bit_of(letter);
  } else {
    attributes_ &= ~bit_of(letter);
  }
}

style_codes::CodeState MarkupScanner::state() const {
  return {static_cast<std::uint8_t>(attributes_), highest(fonts_), highest(colors_)};
}

std::int32_t parse_markup(std::u16string text, SegmentCollection& segments) {
  const auto decoded = std::make_shared<DecodedText>(std::move(text));
  MarkupScanner scanner(decoded->text());
  while (scanner.next()) {
    const auto read = static_cast<std::size_t>(scanner.run().data() - decoded->text().data());
    auto segment = decoded->new_segment(decoded->text().size() - read);
    segment->set_decoded(scanner.run(), scanner.state(), scanner.line_codes_before());
    segments.append(std::move(segment));
  }
  return scanner.line_codes_before();
}

}  // namespace qel
