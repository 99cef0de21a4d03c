#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "qel/platform/Canvas.h"

namespace qel::headless {

/// A text that was drawn: what `platform::CanvasText` said, with the text itself.
struct DrawnText {
  std::u16string text;
  float x = 0;
  float y = 0;
  float width = 0;
  Color color = 0;
  platform::TextFont font;
  bool right_to_left = false;

  friend bool operator==(const DrawnText&, const DrawnText&) = default;
};

/// A rectangle that was filled.
struct DrawnRectangle {
  float left = 0;
  float top = 0;
  float width = 0;
  float height = 0;
  Color color = 0;

  friend bool operator==(const DrawnRectangle&, const DrawnRectangle&) = default;
};

/// A canvas whose fonts all have the same widths, on every system, and which remembers what was
/// drawn: for layouts that can be calculated by hand. Its unit is the point. Each character is half
/// as wide as the font's size, six tenths when bold. A surrogate pair is one character, a
/// lone surrogate another.
class FixedCanvas : public platform::Canvas {
 public:
  float text_width(std::u16string_view text, const platform::TextFont& font) const override;
  /// Ascent 0.9, descent 0.3, leading 0 times the size.
  platform::FontExtent font_extent(const platform::TextFont& font) const override;

  void draw_text(const platform::CanvasText& text) override;
  void fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) override;

  /// What was drawn since the last `clear`, in order.
  const std::vector<DrawnText>& texts() const { return texts_; }
  const std::vector<DrawnRectangle>& rectangles() const { return rectangles_; }
  void clear();

 private:
  std::vector<DrawnText> texts_;
  std::vector<DrawnRectangle> rectangles_;
};

}  // namespace qel::headless
