#include "qel/control/MarkupPositions.h"

#include "qel/rtf/RTFParser.h"

namespace qel {
namespace {

constexpr std::size_t code_length = 3;

}  // namespace

void MarkupPositions::pass_codes() {
  if (literal_left_ > 0) return;
  for (;;) {
    const std::u16string_view rest = markup_.substr(at_);
    const std::u16string_view code = rest.substr(0, code_length);
    const bool is_code = RTFParser::IsQELCode(code) || (way_ == Way::lossless && IsQELCode(code) &&
                                                        line_break_length(code, way_) == 0);
    if (is_code) {
      at_ += code_length;
    } else if (way_ == Way::lossless && rest.starts_with(u'\0')) {
      ++at_;  // a box has none
    } else {
      return;
    }
  }
}

void MarkupPositions::pass_literal() {
  --literal_left_;
  ++at_;
}

void MarkupPositions::pass_character() {
  if (way_ == Way::lossless) {
    const std::u16string_view rest = markup_.substr(at_);
    if (const std::size_t length = line_break_length(rest, way_)) {
      if (is_in_break_) at_ += length;
      is_in_break_ = !is_in_break_;
      return;
    }
    if (begins_with_escaped_code(rest)) {
      ++at_;
      literal_left_ = code_length;
      return pass_literal();
    }
  }
  ++at_;
}

void MarkupPositions::pass_characters(std::int32_t count) {
  for (; count > 0 && at_ < markup_.size(); --count) {
    if (literal_left_ > 0) {
      pass_literal();
    } else {
      pass_codes();
      if (at_ < markup_.size()) pass_character();
    }
  }
}

}  // namespace qel
