#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "qel/model/StyleCodes.h"
#include "qel/text/Typesetter.h"

namespace qel {

/// How a paragraph reads its markup.
struct ParagraphReading {
  bool reveal_codes = false;  ///< show the markup itself
  bool with_hidden = true;    ///< show text in colour 2
  Way way = Way::stated;
};

/// Where the lines of a paragraph go, in canvas units. Lines after the first begin `indent` further
/// to the right.
struct ParagraphShape {
  float width = 0;
  float indent = 0;
  bool wraps = true;
};

/// A part of a line in one style and one direction, or a whole line in one style, whose letters
/// the canvas puts into order. A tab is a piece of its own.
struct ParagraphPiece {
  std::u16string_view text;
  style_codes::CodeState state;
  float width = 0;
  std::uint8_t level = 0;  ///< odd where it reads from right to left
};

/// One line as it is drawn.
struct ParagraphLine {
  std::vector<ParagraphPiece> pieces;  ///< from left to right
  float width = 0;                     ///< without the blanks at the end
  float blanks_before = 0;             ///< the width of those blanks, where they stand at the left
  float indent = 0;                    ///< how much further to the right it may begin
  bool begins_paragraph = false;       ///< whether a line code or break, or nothing, is before it
};

/// The text of a paragraph as a reader sees it, broken into lines. Unlike the lines of
/// `MarkupLines`, these keep the styles that began on an earlier line. Line codes and line breaks
/// begin a new paragraph within the text.
class Paragraph {
 public:
  Paragraph(std::u16string_view markup, const ParagraphReading& reading);

  /// The lines, which refer to this object. A paragraph without text has none.
  std::vector<ParagraphLine> lines(const ParagraphShape& shape, Typesetter& typesetter) const;

 private:
  friend class ParagraphRest;

  struct Run {
    std::size_t begin = 0;  // in text_
    style_codes::CodeState state;
  };

  class Levels;

  /// Adds a text, broken at its line breaks.
  void add(std::u16string_view text, const style_codes::CodeState& state);
  void add_break();
  ParagraphLine line(std::size_t begin, std::size_t end, const Levels& levels,
                     const LineStart& start, Typesetter& typesetter) const;
  /// Calls `visit(text, state, level)` with each part of a line, in the order of the text.
  template <class Visit>
  void for_each_piece_of_line(std::size_t begin, std::size_t end, const Levels& levels,
                              Visit visit) const;
  /// Calls `visit(text, state)` with each part of the text between the positions.
  template <class Visit>
  void for_each_piece(std::size_t begin, std::size_t end, Visit visit) const;

  std::u16string text_;
  std::vector<Run> runs_;
  std::vector<std::size_t> breaks_;  // positions in text_ at which a line has to begin
};

}  // namespace qel
