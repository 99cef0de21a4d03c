#include <algorithm>
#include <deque>
#include <utility>

#include "qel/base/Scan.h"
#include "qel/base/Search.h"
#include "qel/model/QELCode.h"
#include "qel/model/RunWriter.h"
#include "qel/text/DecodedStrings.h"

namespace qel::decoded {
namespace {

using style_codes::CodeState;

constexpr std::size_t npos = std::u16string_view::npos;

/// Where a text is cut: at the first `most` delimiters.
class Cuts {
 public:
  Cuts(std::u16string_view plain, std::u16string_view delimiter, std::size_t most)
      : plain_(plain), delimiter_(delimiter), left_(most) {
    find_end();
  }

  std::size_t begin() const { return begin_; }  ///< where the current piece begins
  std::size_t end() const { return end_; }      ///< and ends; `npos` where the rest is one piece
  bool has_piece() const { return begin_ < plain_.size(); }

  void next() {
    begin_ = end_ + delimiter_.size();
    --left_;
    find_end();
  }

 private:
  void find_end() { end_ = left_ == 0 ? npos : find_text(plain_, delimiter_, begin_); }

  std::u16string_view plain_;
  std::u16string_view delimiter_;
  std::size_t left_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
};

/// Writes the markup of the pieces of a text, one after the other.
class PieceWriter {
 public:
  explicit PieceWriter(Way way) : options_{.way = way}, writer_(markup_, options_) {}

  void add(const Run& run) { writer_.add(run); }

  std::u16string take(std::int32_t line_codes_at_end, bool is_cut) {
    writer_.finish(line_codes_at_end, is_cut);
    std::u16string piece = options_.way == Way::stated ? restore_escaped_codes(markup_) : markup_;
    markup_.clear();
    return piece;
  }

 private:
  OutputOptions options_;
  std::u16string markup_;
  RunWriter writer_;
};

/// The fonts that the runs behind the first cut have left once they have been encoded and decoded
/// again, as the rule does there: where a colour is on, a font that goes on from the run before is
/// lost.
class FontsLeft {
 public:
  explicit FontsLeft(Way way) : way_(way) {}

  CodeState state(CodeState state) {
    if (way_ == Way::lossless) return state;
    const std::int16_t font = state.font;
    state.font = font != last_ ? font : state.color != 0 ? std::int16_t{0} : left_;
    last_ = font;
    left_ = state.font;
    return state;
  }

 private:
  Way way_;
  std::int16_t last_ = 0;
  std::int16_t left_ = 0;
};

/// The part of a segment's text, escaped codes as plain text has them, with what cuts make of its
/// ends.
Run part_of(std::u16string_view text, std::size_t from, std::size_t to) {
  Run run = {text.substr(from, to - from), {}};
  run.origin.begins_with_code = from > 0 && begins_with_escaped_code(text.substr(from - 1));
  run.origin.ends_with_tilde = begins_with_escaped_code(text.substr(to - 1));
  return run;
}

/// Cuts the decoder's text in one walk along its segments.
class Splitter {
 public:
  explicit Splitter(const SegmentCollection& segments)
      : segments_(segments), writer_(segments.way()), fonts_(segments.way()) {}

  /// Appends the pieces. Returns whether anything is left after the last cut; it is the last piece
  /// then.
  bool append_pieces(Cuts cuts, std::vector<std::u16string>& pieces) {
    const bool has_first = pieces.empty();
    std::size_t position = 0;
    for (const auto& segment : segments_) {
      line_codes_ += segment->line_codes_before();
      line_codes_at_ = position;
      const std::u16string_view text = plain_text(*segment);
      const std::size_t end = position + text.size();
      const CodeState whole = segment->code_state();
      CodeState left = whole;
      bool is_encoded_again = false;
      while (cuts.begin() < end) {
        // What comes behind the first cut is encoded, decoded and cut again if there is another.
        const bool is_behind =
            !has_first || pieces.size() > 1 || (pieces.size() == 1 && cuts.end() != npos);
        if (is_behind && !std::exchange(is_encoded_again, true)) left = fonts_.state(whole);
        const std::size_t from = std::max(cuts.begin(), position);
        const std::size_t to = std::min(std::max(cuts.end(), from), end);
        if (to > from) {
          Run run = part_of(text, from - position, to - position);
          run.state = left;
          run.origin.is_markup = segment->origin().is_markup;
          run.line_codes_before = std::exchange(line_codes_, 0);
          writer_.add(run);
        }
        // Line codes before the delimiter, which come with the next segment, are of this piece.
        if (cuts.end() >= end) break;
        pieces.push_back(writer_.take(take_line_codes(cuts.end()), true));
        cuts.next();
      }
      position = end;
    }
    line_codes_ += segments_.line_codes_at_end();
    const bool is_left = cuts.has_piece() || (segments_.way() == Way::lossless && line_codes_ > 0);
    if (is_left) pieces.push_back(writer_.take(line_codes_, false));
    return is_left;
  }

 private:
  /// With the escaped codes themselves: a cut may go through the middle of one.
  std::u16string_view plain_text(const Segment& segment) {
    const std::u16string_view text = segment.text();
    const bool may_have_placeholders =
        segments_.way() == Way::stated && find_any<u'<'>(text, 0) != text.size();
    if (!may_have_placeholders) return text;
    return restored_.emplace_back(restore_escaped_codes(segment.get_Text()));
  }

  /// Those up to the beginning of the delimiter; the others go to the next piece.
  std::int32_t take_line_codes(std::size_t end) {
    return line_codes_at_ <= end ? std::exchange(line_codes_, 0) : 0;
  }

  const SegmentCollection& segments_;
  PieceWriter writer_;
  FontsLeft fonts_;
  std::deque<std::u16string> restored_;
  std::int32_t line_codes_ = 0;  // that no piece has yet
  std::size_t line_codes_at_ = 0;
};

/// Whether characters of a piece may meet a code once the piece is encoded.
bool may_meet_codes(const SegmentCollection& segments) {
  if (segments.way() == Way::lossless) return false;
  return std::any_of(segments.begin(), segments.end(), [](const auto& segment) {
    const std::u16string_view text = segment->text();
    return text.substr(std::max<std::size_t>(text.size(), 2) - 2).find_first_of(u"/~") != npos;
  });
}

}  // namespace

std::vector<std::u16string> split(StyleDecoder& decoder, std::u16string_view text,
                                  std::u16string_view delimiter) {
  if (text.empty()) return {};
  const auto is_in = [&](const std::u16string& plain) {
    return !delimiter.empty() && find_text(plain, delimiter) != npos;
  };
  decoder.put_QELText(text);
  std::u16string plain = decoder.get_Text();
  if (!is_in(plain)) return {std::u16string(text)};
  std::vector<std::u16string> pieces;
  const auto cut = [&](std::size_t most) {
    const bool has_rest =
        Splitter(*decoder.get_Segments()).append_pieces(Cuts(plain, delimiter, most), pieces);
    decoder.put_QELText(has_rest ? std::u16string_view(pieces.back()) : std::u16string_view());
  };
  if (may_meet_codes(*decoder.get_Segments())) {
    // The rest is decoded again, as the rule does after each piece. Once is enough.
    cut(1);
    plain = decoder.get_Text();
    if (!is_in(plain)) return pieces;
    pieces.pop_back();
  }
  const auto cuts = std::count(plain.begin(), plain.end(), delimiter.front());
  pieces.reserve(pieces.size() + static_cast<std::size_t>(cuts) + 1);
  cut(npos);
  return pieces;
}

}  // namespace qel::decoded
