#include "qel/model/Segment.h"

#include <cstddef>
#include <utility>

#include "qel/model/QELCode.h"

namespace qel {

Segment::Segment(std::u16string_view text, const iStyle& style) {
  put_Text(text);
  get_Style().copy_record(style);
}

void Segment::put_Text(std::u16string_view text) {
  put_characters(std::u16string(text));
  origin_ = {};
}

void Segment::put_characters(std::u16string text) {
  auto own_text = std::make_unique<const std::u16string>(std::move(text));
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
  const bool cuts_code =
      text_.ends_with(u'~') &&
      begins_with_escaped_code(std::u16string(u"~").append(rest->text().substr(0, 3)));
  if (count == 0) rest->line_codes_before_ = std::exchange(line_codes_before_, 0);
  rest->origin_.begins_with_code = cuts_code;
  rest->origin_.ends_with_tilde = std::exchange(origin_.ends_with_tilde, cuts_code);
  return rest;
}

std::shared_ptr<Segment> Segment::with_text(std::u16string_view text) {
  auto segment = std::make_shared<Segment>();
  segment->put_Text(text);
  segment->decoded_state_ = decoded_state_;
  segment->origin_.is_markup = origin_.is_markup;
  if (style_) segment->get_Style().copy_record(*style_);
  return segment;
}

void Segment::set_decoded(std::u16string_view text, const style_codes::CodeState& state,
                          std::int32_t line_codes_before) {
  text_ = text;
  decoded_state_ = state;
  line_codes_before_ = line_codes_before;
  origin_.is_markup = true;
}

}  // namespace qel
