#include "qel/headless/FixedCanvas.h"

#include <algorithm>
#include <cstddef>

#include "qel/base/Utf16.h"

namespace qel::headless {

float FixedCanvas::text_width(std::u16string_view text, const platform::TextFont& font) const {
  std::size_t characters = 0;
  for (std::size_t at = 0; at < text.size(); ++characters) next_character(text, at);
  const float share = font.bold ? 0.6F : 0.5F;
  return static_cast<float>(characters) * share * std::max(0.0F, font.size);
}

platform::FontExtent FixedCanvas::font_extent(const platform::TextFont& font) const {
  return {0.9F * font.size, 0.3F * font.size, 0};
}

void FixedCanvas::draw_text(const platform::CanvasText& text) {
  texts_.push_back({std::u16string(text.text), text.x, text.y, text.width, text.color, text.font,
                    text.right_to_left});
}

void FixedCanvas::fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) {
  rectangles_.push_back({rectangle.left, rectangle.top, rectangle.width, rectangle.height, color});
}

void FixedCanvas::clear() {
  texts_.clear();
  rectangles_.clear();
}

}  // namespace qel::headless
