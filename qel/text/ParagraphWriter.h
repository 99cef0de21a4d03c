#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "qel/base/Color.h"
#include "qel/model/StyleCodes.h"
#include "qel/platform/Canvas.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/text/Paragraph.h"
#include "qel/text/Typesetter.h"

namespace qel {

/// Height of a line, never less than that of a line without text.
float line_height(const ParagraphLine& line, Typesetter& typesetter);

/// Where the lines lie horizontally.
struct ParagraphMargins {
  float left = 0;
  float width = 0;
  std::int16_t align = 0;  ///< see `TextAlignment`
};

/// Draws the lines of a paragraph.
class ParagraphWriter {
 public:
  ParagraphWriter(platform::Canvas& canvas, Typesetter& typesetter, const ParagraphMargins& margins)
      : canvas_(canvas), typesetter_(typesetter), margins_(margins) {}

  /// Sets the text colours, or only the first of them for all text, and the label behind the lines
  /// if there is one with this number.
  void set_colors(const QELIndexColors& colors, bool only_default, std::int16_t label);

  /// Draws the lines one below the other and returns where the next one would go.
  float write(const std::vector<ParagraphLine>& lines, float top);

 private:
  void write(const ParagraphLine& line, float top);
  float beginning_of(const ParagraphLine& line) const;
  float draw(const ParagraphPiece& piece, float x, float base_line);
  /// Draws a bar along the pieces of a line that have the attribute, at this height above the base
  /// line. The bar does not break where the font or its size changes.
  void draw_bars(const ParagraphLine& line, style_codes::AttributeBit attribute, float base_line,
                 float height);
  Color color_of(const ParagraphPiece& piece) const;

  platform::Canvas& canvas_;
  Typesetter& typesetter_;
  ParagraphMargins margins_;
  std::array<Color, 10> colors_ = {};
  std::optional<Color> label_;
};

}  // namespace qel
