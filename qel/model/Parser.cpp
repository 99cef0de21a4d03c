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

/// What the codes read so far say of the text that follows. Font and colour flags accumulate until
/// "/f0" or "/y0" clears them; the highest one counts.
class State {
 public:
  void apply(char16_t letter, char16_t digit) {
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

  style_codes::CodeState current() const {
    return {static_cast<std::uint8_t>(attributes_), highest(fonts_), highest(colors_)};
  }

 private:
  /// Bit k stands for index k; bit 0 is never set.
  static void select(unsigned& flags, unsigned index) {
    flags = index == 0 ? 0 : flags | (1U << index);
  }

  static std::int16_t highest(unsigned flags) {
    return flags == 0 ? std::int16_t{0} : static_cast<std::int16_t>(std::bit_width(flags) - 1);
  }

  /// 0 for "t", which is a code but changes nothing.
  static unsigned bit_of(char16_t letter) {
    return style_codes::attribute_bit(letter) & ~unsigned{style_codes::unicode_bit};
  }

  unsigned attributes_ = 0;
  unsigned fonts_ = 0;
  unsigned colors_ = 0;
};

/// The characters and the segments of one decoded text. Every segment that is handed out keeps all
/// of it alive; in return a segment costs no allocation of its own.
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

std::int32_t parse_markup(std::u16string text, SegmentCollection& segments) {
  const auto decoded = std::make_shared<DecodedText>(std::move(text));
  const std::u16string_view rest = decoded->text();
  State state;
  std::int32_t line_codes = 0;
  std::size_t run = 0;
  const auto close_run = [&](std::size_t end) {
    if (end == run) return;
    auto segment = decoded->new_segment(rest.size() - run);
    segment->set_decoded(rest.substr(run, end - run), state.current(), line_codes);
    line_codes = 0;
    segments.append(std::move(segment));
  };
  for (std::size_t slash = find_any<u'/'>(rest, 0); slash < rest.size();) {
    const std::u16string_view code = rest.substr(slash, 3);
    if (!IsQELCode(code, sfAll)) {
      slash = find_any<u'/'>(rest, slash + 1);
      continue;
    }
    close_run(slash);
    if (code == u"/nl") {
      ++line_codes;
    } else {
      state.apply(code[1], code[2]);
    }
    run = slash + 3;
    slash = find_any<u'/'>(rest, run);
  }
  close_run(rest.size());
  return line_codes;
}

}  // namespace qel
