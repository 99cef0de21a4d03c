#pragma once

#include <QFont>
#include <string_view>

#include "qel/platform/Canvas.h"

class QPainter;

namespace qel::qt {

/// Draws with a painter: on a widget, an image, a printer or a page of a PDF file. Its unit is the
/// point on any device; a transformation of the painter applies to everything that is drawn.
///
/// Fonts are the system's, or its substitutes for them. Text in font Symbol is drawn as the
/// characters that it stands for. A TAB is a blank. Kerning and ligatures are neither
/// measured nor drawn, except in scripts whose letters join.
class PainterCanvas : public platform::Canvas {
 public:
  /// The painter must be active and outlive the canvas.
  explicit PainterCanvas(QPainter& painter);

  float text_width(std::u16string_view text, const platform::TextFont& font) const override;
  platform::FontExtent font_extent(const platform::TextFont& font) const override;
  void draw_text(const platform::CanvasText& text) override;
  void fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) override;

 private:
  QPainter& painter_;
  double across_;  // units of the painter in a point
  double down_;
};

}  // namespace qel::qt
