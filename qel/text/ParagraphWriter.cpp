#include "qel/text/ParagraphWriter.h"

#include <algorithm>
#include <cstddef>

#include "qel/model/StyleCodes.h"
#include "qel/text/TextAndFormatting.h"

namespace qel {
namespace {

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

float ParagraphWriter::write(const ParagraphLine& line, float top) {
  const platform::FontExtent extent = extent_of(line, typesetter_);
  const float height = height_of(extent);
  if (label_) canvas_.fill_rectangle({margins_.left, top, margins_.width, height}, *label_);
  float x = beginning_of(line);
  for (const ParagraphPiece& piece : line.pieces) x = draw(piece, x, top + extent.ascent);
  return top + height;
}

float ParagraphWriter::beginning_of(const ParagraphLine& line) const {
  const float room = std::max(0.0F, margins_.width - line.indent - line.width);
  const float first = margins_.left + line.indent;
  switch (margins_.align) {
    case alRight:
      return first + room;
    case alCenter:
      return first + room / 2;
    default:
      return first;
  }
}

float ParagraphWriter::draw(const ParagraphPiece& piece, float x, float base_line) {
  platform::CanvasText drawn;
  drawn.y = base_line - typesetter_.rise(piece.state);
  drawn.color = color_of(piece);
  drawn.underline = (piece.state.attributes & style_codes::underline_bit) != 0;
  drawn.strike_through = (piece.state.attributes & style_codes::strike_through_bit) != 0;
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
