#include "LineWriter.h"

#include <utility>

namespace qel::html {
namespace {

constexpr char16_t no_break_space = u'\u00A0';

constexpr bool is_white_space(char16_t c) {
  return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r' || c == u'\f';
}

constexpr bool is_control(char16_t c) { return c < u' ' || (c >= 0x7F && c < 0xA0); }

}  // namespace

void LineWriter::text(std::u16string_view text, const TextStyle& style) {
  for (const char16_t c : text) {
    const bool is_kept_blank = style.keeps_blanks && (c == u' ' || c == u'\t');
    if (c == u'\n' && style.keeps_lines) {
      write_run(style.format);
      line_break(style);
    } else if (c == no_break_space && style.has_marked_blanks) {
      add(u' ', style);
    } else if (is_kept_blank || (c != u' ' && !is_control(c))) {
      add(c, style);
    } else if (is_white_space(c) && is_line_open_ && !blank_) {
      blank_ = style.format;
    }
  }
  write_run(style.format);
}

void LineWriter::add(char16_t character, const TextStyle& style) {
  if (run_.empty()) {
    write_pending(style.format);
    alignment_ = style.alignment;
  } else if (blank_) {
    run_.push_back(u' ');
  }
  blank_.reset();
  run_.push_back(character);
  is_line_open_ = true;
}

void LineWriter::write_run(FormatId format) {
  if (run_.empty()) return;
  sink_.text(run_, format);
  run_.clear();
  format_ = format;
}

void LineWriter::write_pending(FormatId format) {
  if (std::exchange(break_, Break::none) != Break::none) {
    sink_.paragraph_break(break_format_, break_alignment_);
  }
  if (tabs_ > 0) sink_.text(std::u16string(std::exchange(tabs_, 0), u'\t'), format);
  if (!mark_.empty()) sink_.text(std::exchange(mark_, {}), mark_format_);
  if (blank_) sink_.text(u" ", *blank_);
  row_has_content_ = true;
}

void LineWriter::line_break(const TextStyle& style) {
  blank_.reset();
  write_pending(style.format);
  break_ = Break::line;
  break_format_ = style.format;
  break_alignment_ = style.alignment;
  is_line_open_ = false;
}

void LineWriter::block_edge() {
  blank_.reset();
  if (break_ == Break::line) {
    break_ = Break::block;
  } else if (is_line_open_) {
    break_ = Break::block;
    break_format_ = format_;
    break_alignment_ = alignment_;
  }
  is_line_open_ = false;
}

void LineWriter::begin_item(std::u16string mark, FormatId format) {
  mark_ = std::move(mark);
  mark_format_ = format;
}

bool LineWriter::begin_row() {
  tabs_ = 0;
  return std::exchange(row_has_content_, false);
}

void LineWriter::begin_cell(bool is_first) {
  if (is_first) return;
  blank_.reset();
  ++tabs_;
  is_line_open_ = false;
  // The break after a block that ends the cell before is not the row's.
  if (row_has_content_) break_ = Break::none;
}

void LineWriter::end_row(bool outer_row_has_content) {
  tabs_ = 0;
  is_line_open_ = is_line_open_ || (row_has_content_ && break_ == Break::none);
  row_has_content_ = row_has_content_ || outer_row_has_content;
}

void LineWriter::finish() {
  const bool ends_with_break = break_ == Break::line;
  if (ends_with_break) sink_.paragraph_break(break_format_, break_alignment_);
  sink_.finish(ends_with_break ? richtext::Alignment::left : alignment_);
}

}  // namespace qel::html
