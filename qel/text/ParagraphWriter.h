#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "qel/base/Color.h"
#include "qel/platform/Canvas.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/text/Paragraph.h"
#include "qel/text/Typesetter.h"

namespace qel {

/// Height of a line, never less than that of a line without text.
float line_height(const ParagraphLine& line, Typesetter& typesetter);

/// Where the lines go from left to right.
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

  /// The text colours, or only the first of them; and the label behind the lines, if there is one
  /// of this number.
  void set_colors(const QELIndexColors& colors, bool only_default, std::int16_t label);

  /// Draws a line below `top` and returns where the next one goes.
  float write(const ParagraphLine& line, float top);

 private:
  float beginning_of(const ParagraphLine& line) const;
  float draw(const ParagraphPiece& piece, float x, float base_line);
  Color color_of(const ParagraphPiece& piece) const;

  platform::Canvas& canvas_;
  Typesetter& typesetter_;
  ParagraphMargins margins_;
  std::array<Color, 10> colors_ = {};
  std::optional<Color> label_;
};

}  // namespace qel
