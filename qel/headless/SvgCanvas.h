#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "qel/platform/Canvas.h"

namespace qel::headless {

/// Draws into an SVG document, and measures with the advance widths of the default fonts on every
/// system, whatever fonts it has. Its unit is the point.
///
/// Measured as they are: Arial, Times New Roman, Courier New (in regular, bold, italic and both)
/// and Symbol, under these names and those of fonts as wide as they are. Other fonts with serifs or
/// of one width that are widely known count as Times New Roman or Courier New; every other font,
/// so every unknown one, counts as Arial. Names are compared whatever their case. Each text carries
/// the width it was measured with, so a viewer that has another font fits it into its place; it
/// names its own font first, unless that name is longer than 64 code units.
///
/// Kerning and ligatures are neither measured nor drawn: a text is as wide as its characters.
/// Characters of font Symbol are written as the Unicode characters that they mean, in a font with
/// serifs. A TAB is a gap of four blanks. Characters that XML forbids are drawn as U+FFFD.
class SvgCanvas : public platform::Canvas {
 public:
  /// A page on which `width` points from the left, more if more is drawn on, and as much height as
  /// is drawn on lie within margins of `margin` points. Without a background the page is
  /// transparent.
  explicit SvgCanvas(float width, float margin = 0, std::optional<Color> background = {});

  /// Additive: the width of a text is the sum of those of its characters.
  float text_width(std::u16string_view text, const platform::TextFont& font) const override;
  platform::FontExtent font_extent(const platform::TextFont& font) const override;

  /// Blanks alone and text of no size are not drawn. Runs are drawn where they are put: a text in
  /// which letters run from right to left is right within itself only.
  void draw_text(const platform::CanvasText& text) override;
  /// Rectangles without width or height are not drawn.
  void fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) override;

  /// How far down was drawn on, without margins: to the descenders of the lowest text, to the edge
  /// of the lowest rectangle.
  float height() const { return height_; }

  /// The whole document with all that was drawn so far, in UTF-8.
  std::string svg() const;

 private:
  void draw_part(const platform::CanvasText& text);

  float width_;
  float margin_;
  std::optional<Color> background_;
  float height_ = 0;
  float right_ = 0;
  std::string elements_;
};

}  // namespace qel::headless
