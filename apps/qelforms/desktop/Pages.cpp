#include "Pages.h"

#include <algorithm>
#include <utility>

namespace qel::forms {

Pages::Pages(platform::Canvas& page, float height, std::function<void()> turn)
    : page_(page), height_(height), turn_(std::move(turn)) {}

float Pages::text_width(std::u16string_view text, const platform::TextFont& font) const {
  return page_.text_width(text, font);
}

platform::FontExtent Pages::font_extent(const platform::TextFont& font) const {
  return page_.font_extent(font);
}

void Pages::draw_text(const platform::CanvasText& text) {
  const platform::FontExtent extent = page_.font_extent(text.font);
  add({text.y - extent.ascent, text.y + extent.descent},
      [moved = text, copy = std::u16string(text.text)](platform::Canvas& page, float up) mutable {
        moved.text = copy;
        moved.y -= up;
        page.draw_text(moved);
      });
}

void Pages::fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) {
  add({rectangle.top, rectangle.top + rectangle.height},
      [moved = rectangle, color](platform::Canvas& page, float up) mutable {
        moved.top -= up;
        page.fill_rectangle(moved, color);
      });
}

/// Raised text and bars lie within their line at least by half.
void Pages::add(Band band, Part part) {
  const float common = std::min(band.bottom, line_.bottom) - std::max(band.top, line_.top);
  const float smaller = std::min(band.bottom - band.top, line_.bottom - line_.top);
  if (parts_.empty() || common < smaller / 2) {
    finish();
    line_ = band;
  }
  line_ = {std::min(line_.top, band.top), std::max(line_.bottom, band.bottom)};
  parts_.push_back(std::move(part));
}

void Pages::finish() {
  if (parts_.empty()) return;
  if (line_.bottom - top_ > height_ && line_.top > top_) {
    turn_();
    top_ = line_.top;
  }
  for (const Part& part : parts_) part(page_, top_);
  parts_.clear();
}

}  // namespace qel::forms
