#include "qel/text/DecodedStrings.h"

#include <algorithm>
#include <array>
#include <deque>
#include <iterator>
#include <optional>
#include <utility>

#include "qel/base/CaseMapping.h"
#include "qel/base/Records.h"
#include "qel/base/Scan.h"
#include "qel/base/Search.h"
#include "qel/model/Division.h"
#include "qel/model/LosslessMarkup.h"
#include "qel/model/QELCode.h"
#include "qel/model/RunWriter.h"
#include "qel/model/StyleCodes.h"
#include "qel/model/TextAttribute.h"
#include "qel/text/MarkupCase.h"

namespace qel::decoded {
namespace {

using style_codes::CodeState;

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

enum class LineCodesAtCut : std::uint8_t { kept, dropped };

/// Drops what the decoder holds behind the first `length` characters. Returns whether that was
/// anything.
bool cut_behind(StyleDecoder& decoder, std::ptrdiff_t length, LineCodesAtCut line_codes) {
  SegmentCollection& segments = *decoder.get_Segments();
  division::divide(segments, 0, length);
  const std::int32_t last = segment_ending_at(segments, length);
  if (last <= 0 || last == segments.Count()) return false;
  const std::int32_t at_cut = segments.Item(last + 1)->line_codes_before();
  segments.keep_first(last);
  segments.put_line_codes_at_end(line_codes == LineCodesAtCut::kept ? at_cut : 0);
  return true;
}

/// Drops the first `length` characters.
void cut_before(StyleDecoder& decoder, std::ptrdiff_t length, LineCodesAtCut line_codes) {
  SegmentCollection& segments = *decoder.get_Segments();
  division::divide(segments, 0, length);
  segments.remove_first(segment_ending_at(segments, length));
  if (line_codes == LineCodesAtCut::kept) return;
  if (const auto first = segments.Item(1)) {
    first->put_line_codes_before(0);
  } else {
    segments.put_line_codes_at_end(0);
  }
}

/// The markup of the first `length` characters that the decoder holds, which it keeps.
std::u16string keep_first(StyleDecoder& decoder, std::ptrdiff_t length, LineCodesAtCut line_codes) {
  return cut_behind(decoder, std::max<std::ptrdiff_t>(length, 0), line_codes)
             ? decoder.markup_of_part()
             : decoder.get_QELText();
}

/// The markup of the last `length` characters that the decoder holds, which it keeps.
std::u16string keep_last(StyleDecoder& decoder, std::ptrdiff_t length) {
  const std::ptrdiff_t cut = plain_length(*decoder.get_Segments()) - length;
  cut_before(decoder, cut, length > 0 ? LineCodesAtCut::kept : LineCodesAtCut::dropped);
  return decoder.get_QELText();
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
  decoder.put_QELText(text);
  return keep_first(decoder, length, LineCodesAtCut::dropped);
}

std::u16string right(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t length) {
  decoder.put_QELText(text);
  return keep_last(decoder, std::max<std::ptrdiff_t>(length, 0));
}

std::u16string mid(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
                   std::ptrdiff_t length) {
  decoder.put_QELText(text);
  const std::ptrdiff_t whole = plain_length(*decoder.get_Segments());
  if (start > 0) keep_last(decoder, std::max<std::ptrdiff_t>(whole - start, 0));
  const std::u16string rest = decoder.get_QELText();
  if (length == -1) return rest;
  std::u16string part = left(decoder, rest, length);
  // A text of nothing but line codes has no characters to cut between.
  return length == 0 ? std::u16string() : part;
}

namespace {

/// The parts of a text put together again.
std::u16string joined(const StyleDecoder& decoder, std::u16string before, std::u16string_view made,
                      std::u16string_view behind) {
  if (decoder.get_Lossless()) keep_apart(before, made.empty() ? behind : made);
  before.append(made);
  if (decoder.get_Lossless() && !made.empty()) keep_apart(before, behind);
  return before.append(behind);
}

}  // namespace

std::u16string stuff(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
                     std::ptrdiff_t length, std::u16string_view replacement) {
  decoder.put_QELText(text);
  const std::ptrdiff_t whole = plain_length(*decoder.get_Segments());
  std::u16string before = keep_first(decoder, start, LineCodesAtCut::kept);
  decoder.put_QELText(text);
  const std::ptrdiff_t end = std::clamp<std::ptrdiff_t>(start + length, 0, whole);
  const bool is_insertion = end <= start;
  cut_before(decoder, end, is_insertion ? LineCodesAtCut::dropped : LineCodesAtCut::kept);
  return joined(decoder, std::move(before), replacement, decoder.get_QELText());
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

/// The text enclosed in the codes of the style: bold is innermost. Small capitals are left out
/// unless lossless.
std::u16string wrapped(std::u16string_view text, const iStyle& style, bool lossless) {
  const std::array<std::pair<bool, char16_t>, 7> toggles = {{{style.Bold, u'b'},
                                                             {style.Italic, u'i'},
                                                             {style.Underline, u'u'},
                                                             {style.StrikeThru, u'k'},
                                                             {style.Superscript, u'p'},
                                                             {style.Subscript, u's'},
                                                             {style.SmallCaps && lossless, u'c'}}};
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
  on.append(text);
  if (lossless) keep_apart(on, off);
  return on.append(off);
}

/// `given` is a copy: it may come from a segment that is about to go.
template <class Style>
void replace_styled(StyleDecoder& decoder, const std::u16string& text, std::ptrdiff_t start,
                    std::ptrdiff_t length, const std::u16string& replacement, const Style given) {
  iStyle own;
  if (length > 0) {
    decoder.put_QELText(text);
    own = style_from(decoder, start);
  }
  const std::u16string made =
      wrapped(replacement, applied_style(given, own), decoder.get_Lossless());
  decoder.put_QELText(stuff(decoder, text, start, length, made));
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
  explicit PieceWriter(Way way) { options_.way = way; }

  void add(const Run& run) {
    if (!writer_) writer_.emplace(markup_, options_);
    writer_->add(run);
  }

  std::u16string take(std::int32_t line_codes_at_end, bool is_cut) {
    if (!writer_) writer_.emplace(markup_, options_);
    writer_->finish(line_codes_at_end, is_cut);
    writer_.reset();
    std::u16string markup = std::exchange(markup_, {});
    return options_.way == Way::stated ? restore_escaped_codes(std::move(markup)) : markup;
  }

 private:
  OutputOptions options_;
  std::u16string markup_;
  std::optional<RunWriter> writer_;
};

/// The part of a segment's text, escaped codes as plain text has them, with what cuts make of its
/// ends.
Run part_of(std::u16string_view text, std::size_t from, std::size_t to, const CodeState& state) {
  Run run = {text.substr(from, to - from), state};
  run.origin.begins_with_code = from > 0 && begins_with_escaped_code(text.substr(from - 1));
  run.origin.ends_with_tilde = begins_with_escaped_code(text.substr(to - 1));
  return run;
}

/// Appends the pieces of the decoder's text in one walk along its segments. Returns whether
/// anything is left after the last cut; it is the last piece then.
bool append_pieces(StyleDecoder& decoder, Cuts cuts, std::vector<std::u16string>& pieces) {
  const SegmentCollection& segments = *decoder.get_Segments();
  PieceWriter writer(segments.way());
  std::deque<std::u16string> restored;
  std::size_t position = 0;
  std::int32_t line_codes = 0;
  std::size_t line_codes_at = 0;
  for (const auto& segment : segments) {
    line_codes += segment->line_codes_before();
    line_codes_at = position;
    std::u16string_view text = segment->text();
    const bool may_have_placeholders =
        segments.way() == Way::stated && find_any<u'<'>(text, 0) != text.size();
    // A cut may go through the middle of an escaped code.
    if (may_have_placeholders) {
      text = restored.emplace_back(restore_escaped_codes(segment->get_Text()));
    }
    const std::size_t segment_end = position + text.size();
    while (cuts.begin() < segment_end) {
      const std::size_t from = std::max(cuts.begin(), position);
      const std::size_t to = std::min(std::max(cuts.end(), from), segment_end);
      if (to > from) {
        Run run = part_of(text, from - position, to - position, segment->code_state());
        run.origin.is_markup = segment->origin().is_markup;
        run.line_codes_before = std::exchange(line_codes, 0);
        writer.add(run);
      }
      // Line codes before the delimiter, which come with the next segment, are still of this piece.
      if (cuts.end() >= segment_end) break;
      // Those behind the beginning of the delimiter go to the next piece.
      const bool are_before = line_codes_at <= cuts.end();
      pieces.push_back(writer.take(are_before ? std::exchange(line_codes, 0) : 0, true));
      cuts.next();
    }
    position = segment_end;
  }
  line_codes += segments.line_codes_at_end();
  const bool is_left = cuts.has_piece() || (segments.way() == Way::lossless && line_codes > 0);
  if (is_left) pieces.push_back(writer.take(line_codes, false));
  return is_left;
}

/// Whether a piece of the text may differ once it is encoded and decoded again: in a font that is
/// lost, or in characters that meet a code.
bool changes_when_encoded(const SegmentCollection& segments) {
  if (segments.way() == Way::lossless) return false;
  CodeState last;
  return std::any_of(segments.begin(), segments.end(), [&](const auto& segment) {
    const CodeState state = segment->code_state();
    const std::u16string_view text = segment->text();
    const std::u16string_view end = text.substr(std::max<std::size_t>(text.size(), 2) - 2);
    const bool may_meet = end.find_first_of(u"/~") != npos;
    const bool loses_font = state.color != 0 && state.font != 0 && state.font == last.font;
    last = state;
    return may_meet || loses_font;
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
  const auto cut_all = [&] {
    const bool has_end = append_pieces(decoder, Cuts(plain, delimiter, npos), pieces);
    decoder.put_QELText(has_end ? std::u16string_view(pieces.back()) : std::u16string_view());
  };
  if (!changes_when_encoded(*decoder.get_Segments())) {
    cut_all();
    return pieces;
  }
  const bool has_rest = append_pieces(decoder, Cuts(plain, delimiter, 1), pieces);
  // The rest is decoded again, as the rule does after each piece. Once is enough: decoding and
  // encoding again changes no style.
  decoder.put_QELText(has_rest ? std::u16string_view(pieces.back()) : std::u16string_view());
  plain = decoder.get_Text();
  if (!is_in(plain)) return pieces;
  pieces.pop_back();
  cut_all();
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
                                         is_selection ? length : -1, ignored, segments.way()));
    return;
  }
  const bool on = !has_attribute(segments.Item(span.first)->get_Style(), attribute);
  for (std::int32_t i = span.first; i <= span.last; ++i) {
    set_attribute(segments.Item(i)->get_Style(), attribute, on);
  }
}

}  // namespace qel::decoded
