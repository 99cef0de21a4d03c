#include "qel/model/Segment.h"

#include <cstddef>
#include <utility>

namespace qel {
Segment::Segment(std::u16string_view text, const iStyle& style) {
  put_Text(text);
  style_.copy_record(style);
}

Segment::Segment(std::shared_ptr<const std::u16string> buffer, std::u16string_view slice)
    : buffer_(std::move(buffer)), text_(slice) {}

void Segment::put_Text(std::u16string_view text) {
  buffer_ = std::make_shared<const std::u16string>(text);
  text_ = *buffer_;
}

std::shared_ptr<Segment> Segment::split_off(std::int32_t count) {
  const auto kept = static_cast<std::size_t>(count);
  auto rest = std::make_shared<Segment>(buffer_, text_.substr(kept));
  rest->style_.copy_record(style_);
  text_ = text_.substr(0, kept);
  return rest;
}

}  // namespace qel
