#pragma once

#include <string>
#include <string_view>

#include "qel/base/Color.h"

namespace qel::platform {

/// A font as a canvas selects it.
struct TextFont {
  std::u16string name = u"Arial";
  float size = 8;  ///< in points
  bool bold = false;
  bool italic = false;

  friend bool operator==(const TextFont&, const TextFont&) = default;
};

/// The vertical extent of a font, in canvas units.
struct FontExtent {
  float ascent = 0;   ///< of the tallest letters, above the base line
  float descent = 0;  ///< below the base line, positive
  float leading = 0;  ///< extra space that the font wants between two lines
};

/// A rectangle in canvas units; y grows downwards.
struct CanvasRectangle {
  float left = 0;
  float top = 0;
  float width = 0;
  float height = 0;
};

/// Text in one font and colour, to be drawn with its base line from (`x`, `y`) to the right.
/// Letters of both directions within it are the canvas's to put into order. It has no line breaks;
/// a tab in it is a blank, as stops are the layout's.
struct CanvasText {
  std::u16string_view text;
  float x = 0;
  float y = 0;
  float width = 0;  ///< its `text_width`
  TextFont font = {};
  Color color = 0;
  bool right_to_left = false;  ///< where it begins; `x` is its left end in any case
};

/// What formatted text is measured and drawn on: a window, a printer, a file. Each has its own unit
/// of length.
class Canvas {
 public:
  Canvas() = default;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  virtual ~Canvas() = default;

  /// The canvas's font, in which text without a font of its own is measured.
  const std::u16string& get_FontName() const { return font_name_; }
  void put_FontName(std::u16string_view Value) { font_name_ = Value; }
  /// Its size in points.
  float get_FontSize() const { return font_size_; }
  void put_FontSize(float Value) { font_size_ = Value; }

  /// The advance width of `text`, which has no line breaks. Text is at least as wide as any text
  /// that it begins with.
  virtual float text_width(std::u16string_view text, const TextFont& font) const = 0;
  virtual FontExtent font_extent(const TextFont& font) const = 0;

  virtual void draw_text(const CanvasText& text) = 0;
  virtual void fill_rectangle(const CanvasRectangle& rectangle, Color color) = 0;

 private:
  std::u16string font_name_ = u"Arial";
  float font_size_ = 8;
};

}  // namespace qel::platform
