#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "qel/platform/Canvas.h"

namespace qel::headless {

/// Draws into an SVG document, and measures with the advance widths of the default fonts, whatever
/// fonts the system has. Its unit is the point.
///
/// Exact are the widths of Arial, Times New Roman, Courier New (in regular, bold, italic and both)
/// and Symbol, also under the names of fonts that are as wide. Other well-known fonts with serifs
/// or of fixed width count as Times New Roman or Courier New, and every other font as Arial. The
/// case of names does not matter. Text states the width that was measured, so that a viewer with
/// another font fits it into its place; it names its own font first, unless that name is longer
/// than 64 code units.
///
/// The widths of other scripts and of pictographs are guesses. Such text is drawn as wide as the
/// viewer's fonts are, in an element of its own if the rest of the text is exact; text that reads
/// from right to left is one element. No element ends between a letter and its marks, within an
/// emoji joined from several, or before a blank.
///
/// Kerning and ligatures are neither measured nor drawn: a text is as wide as its characters, and
/// emoji joined to one are as wide as the first of them.
/// Characters of the font Symbol are written as the Unicode characters that they stand for, in a
/// font with serifs. A TAB is a blank. Characters that XML forbids are drawn as
/// U+FFFD.
class SvgCanvas : public platform::Canvas {
 public:
  /// A page `width` points wide, or as wide as what is drawn, and as high as what is drawn, with
  /// margins of `margin` points around that. Without a background the page is transparent.
  explicit SvgCanvas(float width, float margin = 0, std::optional<Color> background = {});

  /// The width of a text is the sum of the widths of its characters, joined emoji counting as one.
  float text_width(std::u16string_view text, const platform::TextFont& font) const override;
  platform::FontExtent font_extent(const platform::TextFont& font) const override;

  /// Text that is only blanks or has no size is not drawn. Texts are drawn where they are put; the
  /// viewer orders what is within one.
  void draw_text(const platform::CanvasText& text) override;
  /// Rectangles without width or height are not drawn.
  void fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) override;

  /// How far down anything was drawn, without margins: to the descenders of the lowest text or the
  /// edge of the lowest rectangle.
  float height() const { return height_; }

  /// The whole document with all that was drawn so far, in UTF-8.
  std::string svg() const;

 private:
  void draw_part(const platform::CanvasText& text, bool is_known);

  float width_;
  float margin_;
  std::optional<Color> background_;
  float height_ = 0;
  float right_ = 0;
  std::string elements_;
};

}  // namespace qel::headless
