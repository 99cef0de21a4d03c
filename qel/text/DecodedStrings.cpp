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
#include "qel/model/LosslessMarkup.h"
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
  if (length == -1) return decoder.get_QELText();
  const auto first = decoder.get_Segments()->Item(1);
  const bool begins_with_half = first && first->origin().begins_with_code;
  // The rule encodes and decodes in between, which would forget that the half of a code is text.
  std::u16string part = begins_with_half ? keep_first(decoder, length, LineCodesAtCut::dropped)
                                         : left(decoder, decoder.get_QELText(), length);
  // A text of nothing but line codes has no characters to cut between.
  if (length == 0) part.clear();
  return part;
}

namespace {

struct Stuffed {
  std::u16string markup;
  bool ends_with_half = false;    ///< what comes before was cut behind the tilde of an escaped code
  bool begins_with_half = false;  ///< and so was what comes behind
};

Stuffed stuffed(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
                std::ptrdiff_t length, std::u16string_view replacement) {
  Stuffed made;
  SegmentCollection& segments = *decoder.get_Segments();
  decoder.put_QELText(text);
  const std::ptrdiff_t whole = plain_length(segments);
  made.markup = keep_first(decoder, start, LineCodesAtCut::kept);
  const auto last = segments.Item(segments.Count());
  made.ends_with_half = last && last->origin().ends_with_tilde;
  decoder.put_QELText(text);
  const std::ptrdiff_t end = std::clamp<std::ptrdiff_t>(start + length, 0, whole);
  const bool is_insertion = end <= start;
  cut_before(decoder, end, is_insertion ? LineCodesAtCut::dropped : LineCodesAtCut::kept);
  const auto first = segments.Item(1);
  made.begins_with_half = first && first->origin().begins_with_code;
  const std::u16string behind = decoder.get_QELText();
  const bool lossless = decoder.get_Lossless();
  if (lossless || made.ends_with_half) {
    keep_apart(made.markup, replacement.empty() ? behind : replacement);
  }
  made.markup.append(replacement);
  if (lossless && !replacement.empty()) keep_apart(made.markup, behind);
  made.markup.append(behind);
  return made;
}

}  // namespace

std::u16string stuff(StyleDecoder& decoder, std::u16string_view text, std::ptrdiff_t start,
                     std::ptrdiff_t length, std::u16string_view replacement) {
  return stuffed(decoder, text, start, length, replacement).markup;
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

/// Marks the halves of cut codes again once the text has been decoded: what comes before ends at
/// `end`, and what comes behind has `behind` characters.
void mark_halves(SegmentCollection& segments, const Stuffed& stuffed_in, std::ptrdiff_t end,
                 std::ptrdiff_t behind) {
  if (stuffed_in.ends_with_half) {
    const auto last = segments.Item(segment_ending_at(segments, end));
    if (last) last->put_origin({false, true, true});
  }
  if (!stuffed_in.begins_with_half) return;
  // The slash that a code of no effect keeps apart.
  const std::int32_t slash = segment_ending_at(segments, plain_length(segments) - behind + 1);
  const auto rest = segments.Item(slash + 1);
  if (slash == 0 || !rest) return;
  rest->put_characters(u"/" + rest->get_Text());
  rest->put_origin({true, false, true});
  segments.Remove(slash);
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
  const Stuffed stuffed_in = stuffed(decoder, text, start, length, made);
  const std::ptrdiff_t behind = plain_length(*decoder.get_Segments());
  decoder.put_QELText(stuffed_in.markup);
  if (decoder.get_Lossless()) return;
  mark_halves(*decoder.get_Segments(), stuffed_in, start, behind);
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
