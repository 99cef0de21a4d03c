#include "qel/control/MarkupPositions.h"

#include <algorithm>

#include "qel/rtf/RTFParser.h"

namespace qel {
namespace {

constexpr std::size_t code_length = 3;
constexpr std::u16string_view line_code = u"/nl";

/// The length of the line break at the beginning of lossless markup; 0 where there is none.
std::size_t break_length(std::u16string_view markup) {
  if (markup.starts_with(line_code)) return line_code.size();
  if (markup.starts_with(u"\r\n")) return 2;
  return markup.starts_with(u'\r') || markup.starts_with(u'\n') ? 1 : 0;
}

}  // namespace

void MarkupPositions::pass_codes() {
  if (literal_left_ > 0) return;
  for (;;) {
    const std::u16string_view rest = markup_.substr(at_);
    const std::u16string_view code = rest.substr(0, code_length);
    if (RTFParser::IsQELCode(code)) {
      at_ += code_length;
    } else if (way_ == Way::lossless && IsQELCode(code) && code != line_code) {
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
    if (const std::size_t length = break_length(rest)) {
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
