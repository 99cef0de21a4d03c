#include "qel/text/ParagraphWriter.h"

#include <algorithm>
#include <cstddef>

#include "qel/text/TextAndFormatting.h"

namespace qel {
namespace {

// As parts of the ascent of the canvas's font; a height is that of the bar's top above the base
// line.
constexpr float underline_height = -0.1F;
constexpr float strike_through_height = 0.32F;
constexpr float bar_thickness = 0.08F;

platform::FontExtent extent_of(const ParagraphLine& line, Typesetter& typesetter) {
  platform::FontExtent extent = typesetter.extent({});
  for (const ParagraphPiece& piece : line.pieces) {
    const platform::FontExtent of_piece = typesetter.extent(piece.state);
    extent.ascent = std::max(extent.ascent, of_piece.ascent);
    extent.descent = std::max(extent.descent, of_piece.descent);
    extent.leading = std::max(extent.leading, of_piece.leading);
  }
  return extent;
}

float height_of(const platform::FontExtent& extent) {
  return extent.ascent + extent.descent + extent.leading;
}

}  // namespace

float line_height(const ParagraphLine& line, Typesetter& typesetter) {
  return height_of(extent_of(line, typesetter));
}

void ParagraphWriter::set_colors(const QELIndexColors& colors, bool only_default,
                                 std::int16_t label) {
  for (std::size_t i = 0; i < colors_.size(); ++i) {
    colors_[i] = colors.get_Color(only_default ? std::int16_t{0} : static_cast<std::int16_t>(i));
  }
  label_.reset();
  if (label >= 1 && label <= 9) label_ = colors.get_LabelColor(label);
}

float ParagraphWriter::write(const std::vector<ParagraphLine>& lines, float top) {
  std::vector<float> tops = {top};
  for (const ParagraphLine& line : lines)
    tops.push_back(tops.back() + line_height(line, typesetter_));
  if (label_) {
    canvas_.fill_rectangle({margins_.left, top, margins_.width, tops.back() - top}, *label_);
  }
  for (std::size_t i = 0; i < lines.size(); ++i) write(lines[i], tops[i]);
  return tops.back();
}

void ParagraphWriter::write(const ParagraphLine& line, float top) {
  const float ascent = extent_of(line, typesetter_).ascent;
  const float base_line = top + ascent;
  const float letters = typesetter_.extent({}).ascent;
  draw_bars(line, style_codes::underline_bit, base_line, underline_height * letters);
  float x = beginning_of(line);
  for (const ParagraphPiece& piece : line.pieces) x = draw(piece, x, base_line);
  draw_bars(line, style_codes::strike_through_bit, base_line, strike_through_height * letters);
}

void ParagraphWriter::draw_bars(const ParagraphLine& line, style_codes::AttributeBit attribute,
                                float base_line, float height) {
  const float thickness = bar_thickness * typesetter_.extent({}).ascent;
  platform::CanvasRectangle bar = {beginning_of(line), base_line - height, 0, thickness};
  Color color = 0;
  const auto finish = [&] {
    if (bar.width > 0) canvas_.fill_rectangle(bar, color);
    bar.left += bar.width;
    bar.width = 0;
  };
  for (const ParagraphPiece& piece : line.pieces) {
    const bool has_bar = (piece.state.attributes & attribute) != 0;
    if (!has_bar || color_of(piece) != color) finish();
    if (has_bar) {
      color = color_of(piece);
      bar.width += piece.width;
    } else {
      bar.left += piece.width;
    }
  }
  finish();
}

float ParagraphWriter::beginning_of(const ParagraphLine& line) const {
  const float left = margins_.left - line.blanks_before;
  switch (margins_.align) {
    case alRight:
      return left + std::max(line.indent, margins_.width - line.width);
    case alCenter:
      // Without the indent: it would move the axis of the later lines.
      return left + std::max(0.0F, margins_.width - line.width) / 2;
    default:
      return left + line.indent;
  }
}

float ParagraphWriter::draw(const ParagraphPiece& piece, float x, float base_line) {
  if (piece.text == u"\t") return x + piece.width;
  platform::CanvasText drawn;
  drawn.y = base_line - typesetter_.rise(piece.state);
  drawn.color = color_of(piece);
  drawn.right_to_left = piece.level % 2 != 0;
  typesetter_.for_each_part(piece.text, piece.state,
                            [&](std::u16string_view text, const platform::TextFont& font) {
                              drawn.text = text;
                              drawn.font = font;
                              drawn.x = x;
                              drawn.width = canvas_.text_width(text, font);
                              canvas_.draw_text(drawn);
                              x += drawn.width;
                            });
  return x;
}

Color ParagraphWriter::color_of(const ParagraphPiece& piece) const {
  const auto index = static_cast<std::size_t>(piece.state.color);
  return index < colors_.size() ? colors_[index] : colors_.front();
}

}  // namespace qel
