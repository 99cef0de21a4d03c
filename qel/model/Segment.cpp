#include "qel/model/Segment.h"

#include <cstddef>
#include <utility>

namespace qel {

Segment::Segment(std::u16string_view text, const iStyle& style) {
  put_Text(text);
  get_Style().copy_record(style);
}

void Segment::put_Text(std::u16string_view text) {
  // The old text is released last: `text` may be a part of it.
  auto own_text = std::make_unique<const std::u16string>(text);
  text_ = *own_text;
  own_text_ = std::move(own_text);
}

iStyle& Segment::get_Style() {
  if (!style_) style_ = std::make_unique<iStyle>(style_codes::style_of(decoded_state_));
  return *style_;
}

style_codes::CodeState Segment::code_state() const {
  return style_ ? style_codes::state_of(*style_) : decoded_state_;
}

std::shared_ptr<Segment> Segment::split_off(std::size_t count) {
  auto rest = with_text(text_.substr(count));
  keep_first(count);
  return rest;
}

std::shared_ptr<Segment> Segment::with_text(std::u16string_view text) {
  auto segment = std::make_shared<Segment>();
  segment->put_Text(text);
  segment->decoded_state_ = decoded_state_;
  if (style_) segment->get_Style().copy_record(*style_);
  return segment;
}

void Segment::set_decoded(std::u16string_view text, const style_codes::CodeState& state,
                          std::int32_t line_codes_before) {
  text_ = text;
  decoded_state_ = state;
  line_codes_before_ = line_codes_before;
}

}  // namespace qel
