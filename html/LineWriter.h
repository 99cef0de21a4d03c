#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "qel/richtext/Alignment.h"
#include "qel/richtext/DocumentSink.h"

namespace qel::html {

/// Makes lines of what a browser lays out: collapses white space, and keeps breaks, tabs between
/// cells and marks of lists back until there is text behind them.
class LineWriter {
 public:
  using FormatId = richtext::DocumentSink::FormatId;

  /// What text needs to know of the element that it is in.
  struct TextStyle {
    FormatId format = 0;
    richtext::Alignment alignment = richtext::Alignment::left;
    bool keeps_blanks = false;
    bool keeps_lines = false;
    bool has_marked_blanks = false;  ///< no-break spaces stand for blanks
  };

  explicit LineWriter(richtext::DocumentSink& sink) : sink_(sink) {}
  LineWriter(const LineWriter&) = delete;
  LineWriter& operator=(const LineWriter&) = delete;

  void text(std::u16string_view text, const TextStyle& style);
  /// A "br" element, or a line break that is kept.
  void line_break(const TextStyle& style);
  /// A block begins or ends: what follows is on another line. That of a break right before is
  /// that line.
  void block_edge();

  /// Puts a mark before the text of the item that comes next.
  void begin_item(std::u16string mark, FormatId format);
  /// A mark for which no text has come is dropped.
  void end_item() { mark_.clear(); }

  /// Returns what `end_row` needs: a cell may hold rows of its own.
  bool begin_row();
  void begin_cell(bool is_first);
  void end_row(bool outer_row_has_content);

  void finish();

 private:
  enum class Break : std::uint8_t { none, line, block };

  void add(char16_t character, const TextStyle& style);
  void write_run(FormatId format);
  /// What was kept back for the text of this format.
  void write_pending(FormatId format);

  richtext::DocumentSink& sink_;
  std::u16string run_;  // text of one format on one line
  Break break_ = Break::none;
  FormatId break_format_ = 0;
  richtext::Alignment break_alignment_ = richtext::Alignment::left;
  std::size_t tabs_ = 0;
  std::u16string mark_;
  FormatId mark_format_ = 0;
  std::optional<FormatId> blank_;  // collapsed white space before the next character
  bool is_line_open_ = false;      // whether a block could not begin here
  bool row_has_content_ = false;
  FormatId format_ = 0;  // of the last text
  richtext::Alignment alignment_ = richtext::Alignment::left;
};

}  // namespace qel::html
