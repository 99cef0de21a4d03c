#pragma once

#include <functional>
#include <string>
#include <vector>

#include "qel/platform/Canvas.h"

namespace qel::forms {

/// Lays out what is drawn, line by line, on pages of the same height: a line that does not fit on
/// the rest of a page begins the next. What is drawn at the same height belongs to one line.
class Pages : public platform::Canvas {
 public:
  /// Measures with `page` and draws on it; `turn` begins the next page. Both have to outlive this
  /// object.
  Pages(platform::Canvas& page, float height, std::function<void()> turn);

  float text_width(std::u16string_view text, const platform::TextFont& font) const override;
  platform::FontExtent font_extent(const platform::TextFont& font) const override;
  void draw_text(const platform::CanvasText& text) override;
  void fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) override;

  /// Must be called when everything is drawn.
  void finish();

 private:
  /// The vertical extent of something.
  struct Band {
    float top = 0;
    float bottom = 0;
  };

  /// Draws something, moved up by `up`.
  using Part = std::function<void(platform::Canvas& page, float up)>;

  void add(Band band, Part part);

  platform::Canvas& page_;
  float height_;
  std::function<void()> turn_;
  float top_ = 0;  // of this page, in the coordinates of what is drawn
  Band line_;
  std::vector<Part> parts_;  // of the line
};

}  // namespace qel::forms
