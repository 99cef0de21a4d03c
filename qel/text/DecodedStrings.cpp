#include "qel/text/DecodedStrings.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/base/Records.h"
#include "qel/base/Search.h"
#include "qel/model/Division.h"
#include "qel/model/QELCode.h"
#include "qel/model/StyleCodes.h"
#include "qel/model/TextAttribute.h"
#include "qel/text/MarkupCase.h"

namespace qel::decoded {
namespace {

constexpr std::size_t npos = std::u16string_view::npos;

/// Equal for characters that differ only in case, final forms of letters included.
std::u16string folded(std::u16string_view text) { return to_lower(to_upper(text)); }

std::ptrdiff_t plain_length(const SegmentCollection& segments) {
  std::ptrdiff_t length = 0;
  for (const auto& segment : segments) length += std::ssize(segment->text());
  return length;
}

/// The position of the first segment that ends `end` characters into the text; 0 when none does.
std::int32_t segment_ending_at(const SegmentCollection& segments, std::ptrdiff_t end) {
  std::int32_t index = 0;
  std::ptrdiff_t total = 0;
  for (const auto& segment : segments) {
    ++index;
    total += std::ssize(segment->text());
    if (total == end) return index;
  }
  return 0;
}

/// The markup of the last `length` characters that the decoder holds, which it keeps.
std::u16string keep_last(StyleDecoder& decoder, std::ptrdiff_t length) {
  SegmentCollection& segments = *decoder.get_Segments();
  const std::ptrdiff_t cut = plain_length(segments) - length;
  division::divide(segments, 0, cut);
  segments.remove_first(segment_ending_at(segments, cut));
  return decoder.get_QELText();
}

/// Decodes `text` and keeps the characters from `start` on, whose markup it returns.
std::u16string keep_from(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start) {
  decoder.put_QELText(text);
  const std::ptrdiff_t length = plain_length(*decoder.get_Segments()) - start;
  return keep_last(decoder, std::clamp<std::ptrdiff_t>(length, 0, std::ssize(text)));
}

}  // namespace

std::size_t find(std::u16string_view plain, std::u16string_view search, bool ignores_case) {
  if (plain.empty()) return npos;
  return ignores_case ? find_text(folded(plain), folded(search)) : find_text(plain, search);
}

std::size_t find_last(std::u16string_view plain, std::u16string_view search, bool ignores_case) {
  if (plain.empty()) return npos;
  if (search.empty()) return 0;
  return ignores_case ? find_last_text(folded(plain), folded(search))
                      : find_last_text(plain, search);
}

std::u16string left(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t length) {
  length = std::max<std::ptrdiff_t>(length, 0);
  decoder.put_QELText(text);
  SegmentCollection& segments = *decoder.get_Segments();
  division::divide(segments, 0, length);
  const std::int32_t last = segment_ending_at(segments, length);
  if (last > 0) segments.keep_first(last);
  return decoder.get_QELText();
}

std::u16string right(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t length) {
  decoder.put_QELText(text);
  return keep_last(decoder, std::max<std::ptrdiff_t>(length, 0));
}

std::u16string mid(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
                   std::ptrdiff_t length) {
  const std::u16string rest = keep_from(decoder, text, start);
  return length == -1 ? rest : left(decoder, rest, length);
}

Surroundings around(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
                    std::ptrdiff_t length) {
  Surroundings surroundings;
  surroundings.before = left(decoder, text, start);
  surroundings.behind = keep_from(decoder, text, start + length);
  return surroundings;
}

namespace {

/// The style of the first segment that begins at or after `start`.
iStyle style_from(StyleDecoder& decoder, std::ptrdiff_t start) {
  iStyle style;
  std::ptrdiff_t position = 0;
  for (const auto& segment : *decoder.get_Segments()) {
    if (position >= start) {
      style.put_All(segment->get_Style().get_All());
      break;
    }
    position += std::ssize(segment->text());
  }
  return style;
}

/// The style to apply to text whose own style is `own`.
iStyle applied_style(const iStyle& given, const iStyle& own) {
  return given.get_Ignored() ? own : given;
}

iStyle applied_style(const cReplaceData& given, const iStyle& own) {
  if (given.DontChangeStyle) return own;
  iStyle style;
  style.Bold = given.Bold;
  style.Italic = given.Italic;
  style.Underline = given.Underline;
  style.StrikeThru = given.StrikeOut;
  style.Superscript = given.Superscript;
  style.Subscript = given.Subscript;
  style.FontID = given.DontChangeFont ? own.FontID : given.FontID;
  style.ColorID = given.DontChangeColor ? own.ColorID : given.ColorID;
  return style;
}

/// The text enclosed in the codes of the style, except small capitals: bold is innermost.
std::u16string wrapped(std::u16string_view text, const iStyle& style) {
  const std::array<std::pair<bool, char16_t>, 6> toggles = {{{style.Bold, u'b'},
                                                             {style.Italic, u'i'},
                                                             {style.Underline, u'u'},
                                                             {style.StrikeThru, u'k'},
                                                             {style.Superscript, u'p'},
                                                             {style.Subscript, u's'}}};
  std::u16string on;
  std::u16string off;
  const auto wrap = [&](char16_t letter, std::int16_t index) {
    on.insert(0, std::u16string(u"/") + letter + records::from_integer(index));
    off.append(u"/").append(1, letter).append(u"0");
  };
  for (const auto& [is_on, letter] : toggles) {
    if (is_on) wrap(letter, 1);
  }
  if (style.FontID != 0) wrap(u'f', style.FontID);
  if (style.ColorID != 0) wrap(u'y', style.ColorID);
  return on.append(text) + off;
}

/// `given` is a copy: it may come from a segment that is about to go.
template <class Style>
void replace_styled(StyleDecoder& decoder, const std::u16string& text, std::ptrdiff_t start,
                    std::ptrdiff_t length, const std::u16string& replacement, const Style given) {
  const auto [before, behind] = around(decoder, text, start, length);
  iStyle own;
  if (length > 0) {
    decoder.put_QELText(text);
    own = style_from(decoder, start);
  }
  decoder.put_QELText(before + wrapped(replacement, applied_style(given, own)) + behind);
}

}  // namespace

void replace(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
             std::ptrdiff_t length, std::u16string_view replacement, const iStyle& given) {
  replace_styled(decoder, std::u16string(text), start, length, std::u16string(replacement), given);
}

void replace(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
             std::ptrdiff_t length, std::u16string_view replacement, const cReplaceData& given) {
  replace_styled(decoder, std::u16string(text), start, length, std::u16string(replacement), given);
}

namespace {

/// Writes the markup of the pieces of a text, one after the other.
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

/// Appends the pieces of the decoder's text in one walk along its segments. Returns whether
/// anything is left after the last cut; it is the last piece then.
bool append_pieces(StyleDecoder& decoder, Cuts cuts, std::vector<std::u16string>& pieces) {
  PieceWriter writer;
  std::size_t position = 0;
  for (const auto& segment : *decoder.get_Segments()) {
    // Escaped codes as plain text has them: a cut may go through the middle of one.
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
  const auto is_in = [&](const std::u16string& plain) {
    return !delimiter.empty() && find_text(plain, delimiter) != npos;
  };
  decoder.put_QELText(text);
  std::u16string plain = decoder.get_Text();
  if (!is_in(plain)) return {std::u16string(text)};
  std::vector<std::u16string> pieces;
  const bool has_rest = append_pieces(decoder, Cuts(plain, delimiter, 1), pieces);
  // The rest is decoded again, as the rule does after each piece: encoding may have lost a font.
  // Once is enough: decoding and encoding again changes no style.
  decoder.put_QELText(has_rest ? std::u16string_view(pieces.back()) : std::u16string_view());
  plain = decoder.get_Text();
  if (!is_in(plain)) return pieces;
  pieces.pop_back();
  const bool has_end = append_pieces(decoder, Cuts(plain, delimiter, npos), pieces);
  decoder.put_QELText(has_end ? std::u16string_view(pieces.back()) : std::u16string_view());
  return pieces;
}

namespace {

/// The change of case that an attribute stands for.
std::optional<CaseChange> case_change_of(std::int32_t attribute) {
  switch (attribute) {
    case taUpperCase:
      return CaseChange::upper;
    case taLowerCase:
      return CaseChange::lower;
    case taChangeCase:
      return CaseChange::swap;
    case taTitleCase:
      return CaseChange::title;
    case taFirstToUpper:
      return CaseChange::first_to_upper;
    case taFirstToLower:
      return CaseChange::first_to_lower;
    default:
      return {};
  }
}

}  // namespace

void toggle(StyleDecoder& decoder, std::int32_t attribute, std::ptrdiff_t start,
            std::ptrdiff_t length, const WordSet& ignored) {
  SegmentCollection& segments = *decoder.get_Segments();
  if (segments.Count() <= 0 || attribute < taPlain || attribute > taFirstToLower) return;
  division::Span span = {1, segments.Count()};
  const bool is_selection = length >= 1;
  if (is_selection) {
    decoder.divide(start, length);
    span = division::find_span(segments, start, length);
    if (span.first <= 0) return;
  }
  if (const auto change = case_change_of(attribute)) {
    decoder.put_QELText(qel::change_case(decoder.get_QELText(), *change, is_selection ? start : 0,
                                         is_selection ? length : -1, ignored));
    return;
  }
  const bool on = !has_attribute(segments.Item(span.first)->get_Style(), attribute);
  for (std::int32_t i = span.first; i <= span.last; ++i) {
    set_attribute(segments.Item(i)->get_Style(), attribute, on);
  }
}

}  // namespace qel::decoded
