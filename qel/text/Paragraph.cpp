#include "qel/text/Paragraph.h"

#include <algorithm>
#include <utility>

#include "qel/base/Bidi.h"
#include "qel/base/Scan.h"
#include "qel/base/Utf16.h"
#include "qel/model/Parser.h"
#include "qel/model/QELCode.h"
#include "qel/model/ReservedColors.h"
#include "qel/text/LineBreaker.h"

namespace qel {

using style_codes::CodeState;

Paragraph::Paragraph(std::u16string_view markup, const ParagraphReading& reading) {
  if (reading.reveal_codes) {
    add(markup, {});
    return;
  }
  const bool is_lossless = reading.way == Way::lossless;
  std::u16string text(markup);
  if (!is_lossless) text = protect_escaped_codes(text);
  MarkupScanner scanner(text, reading.way);
  for (auto item = scanner.next(); item != MarkupScanner::Item::end; item = scanner.next()) {
    if (item == MarkupScanner::Item::line_break) {
      add_break();
    } else if (reading.with_hidden || scanner.state().color != hidden_color) {
      add(is_lossless ? std::u16string(scanner.text()) : shown_text(scanner.text()),
          scanner.state());
    }
  }
}

void Paragraph::add(std::u16string_view text, const CodeState& state) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = find_any<u'\r', u'\n'>(text, at);
    if (end > at) runs_.push_back({text_.size(), state});
    text_.append(text.substr(at, end - at));
    if (end == text.size()) break;
    add_break();
    const bool is_crlf = text[end] == u'\r' && end + 1 < text.size() && text[end + 1] == u'\n';
    at = end + (is_crlf ? 2 : 1);
  }
}

void Paragraph::add_break() { breaks_.push_back(text_.size()); }

template <class Visit>
void Paragraph::for_each_piece(std::size_t begin, std::size_t end, Visit visit) const {
  if (begin == end) return;
  auto run = std::upper_bound(
      runs_.begin(), runs_.end(), begin,
      [](std::size_t position, const Run& candidate) { return position < candidate.begin; });
  for (--run; begin < end; ++run) {
    const auto next = run + 1;
    const std::size_t piece_end = next == runs_.end() ? end : std::min(end, next->begin);
    visit(std::u16string_view(text_).substr(begin, piece_end - begin), run->state);
    begin = piece_end;
  }
}

/// The rest of one paragraph within the text.
class ParagraphRest {
 public:
  ParagraphRest(const Paragraph& paragraph, std::size_t begin, std::size_t end, float available,
                const LineStart& start, Typesetter& typesetter)
      : paragraph_(paragraph),
        begin_(begin),
        end_(end),
        available_(available),
        start_(start),
        typesetter_(typesetter) {}

  bool has(std::size_t count) const { return count <= end_ - begin_; }
  bool is_blank(std::size_t k) const { return paragraph_.text_[begin_ + k - 1] == u' '; }
  bool may_end_after(std::size_t k) const {
    return k == end_ - begin_ || !is_pair_at(paragraph_.text_, begin_ + k - 1);
  }
  bool fits(std::size_t count) const {
    float width = 0;
    paragraph_.for_each_piece(begin_, begin_ + count,
                              [&](std::u16string_view text, const CodeState& state) {
                                width = typesetter_.end_of_text(text, state, width, start_);
                              });
    return !(width > available_);
  }
  bool fits() const { return fits(end_ - begin_); }

 private:
  const Paragraph& paragraph_;
  std::size_t begin_;
  std::size_t end_;
  float available_;
  LineStart start_;
  Typesetter& typesetter_;
};

/// Which way the text of one paragraph within the text reads. Most have no text from right to left,
/// and no levels.
class Paragraph::Levels {
 public:
  Levels(std::u16string_view text, std::size_t begin, std::size_t end) : begin_(begin) {
    text = text.substr(begin, end - begin);
    if (has_right_to_left(text)) levels_ = bidi_levels(text);
  }

  bool has_right_to_left_text() const { return !levels_.units.empty(); }
  std::uint8_t of_paragraph() const { return levels_.paragraph; }
  std::uint8_t operator[](std::size_t at) const { return levels_.units[at - begin_]; }

 private:
  std::size_t begin_;
  BidiLevels levels_;
};

template <class Visit>
void Paragraph::for_each_piece_of_line(std::size_t begin, std::size_t end, const Levels& levels,
                                       Visit visit) const {
  if (!levels.has_right_to_left_text()) {
    for_each_piece(begin, end, [&](std::u16string_view text, const CodeState& state) {
      visit(text, state, std::uint8_t{0});
    });
    return;
  }
  std::size_t blanks = end;
  while (blanks > begin && text_[blanks - 1] == u' ') --blanks;
  const auto level_at = [&](std::size_t at) {
    return at < blanks ? levels[at] : levels.of_paragraph();
  };
  for_each_piece(begin, end, [&](std::u16string_view text, const CodeState& state) {
    if (text.size() == end - begin) {  // in one style: the canvas knows best
      visit(text, state, levels.of_paragraph());
      return;
    }
    const auto offset = static_cast<std::size_t>(text.data() - text_.data());
    for (std::size_t from = 0; from < text.size();) {
      const std::uint8_t level = level_at(offset + from);
      std::size_t to = from + 1;
      while (to < text.size() && level_at(offset + to) == level) ++to;
      visit(text.substr(from, to - from), state, level);
      from = to;
    }
  });
}

namespace {

/// Calls `visit` with each tab of the text, and with each part between them.
template <class Visit>
void for_each_tab_and_part(std::u16string_view text, Visit visit) {
  while (!text.empty()) {
    const std::size_t end = std::max<std::size_t>(find_any<u'\t'>(text, 0), 1);
    visit(text.substr(0, end));
    text.remove_prefix(end);
  }
}

/// Puts pieces into the order in which they stand from left to right: rule L2 of UAX #9.
void put_into_visual_order(std::vector<ParagraphPiece>& pieces) {
  std::uint8_t highest = 0;
  for (const ParagraphPiece& piece : pieces) highest = std::max(highest, piece.level);
  for (std::uint8_t level = highest; level > 0; --level) {
    const auto is_in = [level](const ParagraphPiece& piece) { return piece.level >= level; };
    for (auto begin = pieces.begin(); begin != pieces.end();) {
      begin = std::find_if(begin, pieces.end(), is_in);
      const auto end = std::find_if_not(begin, pieces.end(), is_in);
      std::reverse(begin, end);
      begin = end;
    }
  }
}

}  // namespace

ParagraphLine Paragraph::line(std::size_t begin, std::size_t end, const Levels& levels,
                              const LineStart& start, Typesetter& typesetter) const {
  ParagraphLine line;
  line.indent = start.from_margin;
  float x = 0;
  for_each_piece_of_line(
      begin, end, levels,
      [&](std::u16string_view whole, const CodeState& state, std::uint8_t level) {
        for_each_tab_and_part(whole, [&](std::u16string_view text) {
          const bool is_tab = text == u"\t";
          const float width =
              is_tab ? typesetter.after_tab(x, start) - x : typesetter.text_width(text, state);
          line.pieces.push_back({text, state, width, level});
          x += width;
        });
      });
  bool is_end = true;
  for (auto piece = line.pieces.rbegin(); piece != line.pieces.rend(); ++piece) {
    if (!is_end) {
      line.width += piece->width;
      continue;
    }
    const std::size_t last = piece->text.find_last_not_of(u' ');
    if (last == std::u16string_view::npos) continue;
    is_end = false;
    line.width += last + 1 == piece->text.size()
                      ? piece->width
                      : typesetter.text_width(piece->text.substr(0, last + 1), piece->state);
  }
  if (levels.of_paragraph() != 0) line.blanks_before = x - line.width;
  put_into_visual_order(line.pieces);
  return line;
}

std::vector<ParagraphLine> Paragraph::lines(const ParagraphShape& shape,
                                            Typesetter& typesetter) const {
  std::vector<ParagraphLine> lines;
  std::size_t begin = 0;
  std::size_t usual = 0;
  const auto add_lines = [&](std::size_t end) {
    const Levels levels(text_, begin, end);
    float indent = 0;
    bool is_first = true;
    do {
      const LineStart start = {indent, shape.indent};
      ParagraphRest rest(*this, begin, end, shape.width - indent, start, typesetter);
      usual = shape.wraps && begin < end ? LineBreaker<ParagraphRest>::length_of_line(rest, usual)
                                         : end - begin;
      lines.push_back(line(begin, begin + usual, levels, start, typesetter));
      lines.back().begins_paragraph = is_first;
      is_first = false;
      indent = shape.indent;
      begin = std::min(text_.find_first_not_of(u' ', begin + usual), end);
    } while (begin < end);
  };
  for (const std::size_t end : breaks_) add_lines(end);
  if (begin < text_.size()) add_lines(text_.size());
  return lines;
}

}  // namespace qel
