#include "qel/text/MarkupStrings.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/base/Search.h"
#include "qel/model/Division.h"
#include "qel/model/QELCode.h"
#include "qel/model/StyleCodes.h"

namespace qel::markup {
namespace {

std::int32_t size_of(std::u16string_view text) { return static_cast<std::int32_t>(text.size()); }

/// The position of the first segment that ends `end` characters into the text; 0 when none does.
std::int32_t segment_ending_at(const SegmentCollection& segments, std::int32_t end) {
  std::int32_t index = 0;
  std::int32_t total = 0;
  for (const auto& segment : segments) {
    ++index;
    total += segment->length();
    if (total == end) return index;
  }
  return 0;
}

/// The markup of the last `length` characters that the decoder holds, which it keeps.
std::u16string keep_last(StyleDecoder& decoder, std::int32_t length) {
  SegmentCollection& segments = *decoder.get_Segments();
  const std::int32_t cut = plain_length(decoder) - length;
  division::divide(segments, 0, cut);
  segments.remove_first(segment_ending_at(segments, cut));
  return decoder.get_QELText();
}

/// Equal for characters that differ in case alone, final forms of letters included.
std::u16string folded(std::u16string_view text) { return to_lower(to_upper(text)); }

/// One-based; 0 for none. Nothing is found in an empty text.
std::size_t position_of(std::size_t found, std::u16string_view text) {
  return found == std::u16string_view::npos || text.empty() ? 0 : found + 1;
}

}  // namespace

std::size_t find(std::u16string_view plain, std::u16string_view search, bool ignores_case) {
  return position_of(
      ignores_case ? find_text(folded(plain), folded(search)) : find_text(plain, search), plain);
}

std::size_t find_last(std::u16string_view plain, std::u16string_view search, bool ignores_case) {
  if (search.empty()) return position_of(0, plain);
  return position_of(
      ignores_case ? find_last_text(folded(plain), folded(search)) : find_last_text(plain, search),
      plain);
}

std::int32_t plain_length(StyleDecoder& decoder) {
  std::int32_t length = 0;
  for (const auto& segment : *decoder.get_Segments()) length += segment->length();
  return length;
}

std::u16string left(StyleDecoder& decoder, std::u16string_view text, std::int32_t length) {
  length = std::max(length, 0);
  decoder.put_QELText(text);
  SegmentCollection& segments = *decoder.get_Segments();
  division::divide(segments, 0, length);
  const std::int32_t last = segment_ending_at(segments, length);
  if (last > 0) segments.keep_first(last);
  return decoder.get_QELText();
}

std::u16string right(StyleDecoder& decoder, std::u16string_view text, std::int32_t length) {
  decoder.put_QELText(text);
  return keep_last(decoder, std::max(length, 0));
}

Surroundings around(StyleDecoder& decoder, std::u16string_view text, std::int32_t start,
                    std::int32_t length) {
  Surroundings surroundings;
  surroundings.before = left(decoder, text, start - 1);
  decoder.put_QELText(text);
  const std::int32_t behind = plain_length(decoder) - (start + length - 1);
  surroundings.behind = keep_last(decoder, std::clamp(behind, 0, size_of(text)));
  return surroundings;
}

namespace {

/// Writes the markup of one piece of a text after the other.
class PieceWriter {
 public:
  void add(std::u16string_view text, const style_codes::CodeState& state) {
    if (last_) {
      style_codes::append_different_off(markup_, *last_, &state, style_codes::CodeSet::current);
      style_codes::append_different_on(markup_, state, *last_, style_codes::CodeSet::current);
    } else {
      style_codes::append_on(markup_, state, style_codes::CodeSet::current);
    }
    markup_.append(text);
    last_ = state;
  }

  std::u16string take() {
    if (last_) style_codes::append_off(markup_, *last_, style_codes::CodeSet::current);
    last_.reset();
    return restore_escaped_codes(std::exchange(markup_, {}));
  }

 private:
  std::u16string markup_;
  std::optional<style_codes::CodeState> last_;
};

/// Where a text is cut: at the first `most` delimiters.
class Cuts {
 public:
  Cuts(std::u16string_view plain, std::u16string_view delimiter, std::size_t most)
      : plain_(plain), delimiter_(delimiter), left_(most) {
    find_end();
  }

  std::size_t begin() const { return begin_; }  ///< of the current piece
  std::size_t end() const { return end_; }      ///< `npos` where the rest is one piece
  bool has_piece() const { return begin_ < plain_.size(); }

  void next() {
    begin_ = end_ + delimiter_.size();
    --left_;
    find_end();
  }

 private:
  void find_end() {
    end_ = left_ == 0 ? std::u16string_view::npos : find_text(plain_, delimiter_, begin_);
  }

  std::u16string_view plain_;
  std::u16string_view delimiter_;
  std::size_t left_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
};

/// Appends the pieces of the decoder's text, all in one walk along its segments. Whether there is
/// something left behind the last cut, which is the last piece then.
bool append_pieces(StyleDecoder& decoder, Cuts cuts, std::vector<std::u16string>& pieces) {
  PieceWriter writer;
  std::size_t position = 0;
  for (const auto& segment : *decoder.get_Segments()) {
    // Escaped codes as they are in the plain text: a cut may go through the middle of one.
    const std::u16string text = restore_escaped_codes(segment->get_Text());
    const std::size_t segment_end = position + text.size();
    while (cuts.begin() < segment_end) {
      const std::size_t from = std::max(cuts.begin(), position);
      const std::size_t to = std::min(std::max(cuts.end(), from), segment_end);
      if (to > from) {
        writer.add(std::u16string_view(text).substr(from - position, to - from),
                   segment->code_state());
      }
      if (cuts.end() > segment_end) break;
      pieces.push_back(writer.take());
      cuts.next();
    }
    position = segment_end;
  }
  if (cuts.has_piece()) pieces.push_back(writer.take());
  return cuts.has_piece();
}

}  // namespace

std::vector<std::u16string> split(StyleDecoder& decoder, std::u16string_view text,
                                  std::u16string_view delimiter) {
  if (text.empty()) return {};
  constexpr std::size_t all = std::u16string_view::npos;
  const auto is_in = [&](const std::u16string& plain) {
    return !delimiter.empty() && find_text(plain, delimiter) != all;
  };
  decoder.put_QELText(text);
  std::u16string plain = decoder.get_Text();
  if (!is_in(plain)) return {std::u16string(text)};
  std::vector<std::u16string> pieces;
  const bool has_rest = append_pieces(decoder, Cuts(plain, delimiter, 1), pieces);
  // What is left is decoded again, as it is for each piece: encoding may have cost it a font. Once
  // is enough, for decoding and encoding what was encoded changes no style.
  decoder.put_QELText(has_rest ? std::u16string_view(pieces.back()) : std::u16string_view());
  plain = decoder.get_Text();
  if (!is_in(plain)) return pieces;
  pieces.pop_back();
  const bool has_end = append_pieces(decoder, Cuts(plain, delimiter, all), pieces);
  decoder.put_QELText(has_end ? std::u16string_view(pieces.back()) : std::u16string_view());
  return pieces;
}

}  // namespace qel::markup
