#include "qel/text/QELText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "qel/base/Records.h"
#include "qel/model/Division.h"
#include "qel/text/MarkupStrings.h"

namespace qel {

QELText::QELText() {
  layout_.put_Align(alLeft);
  layout_.put_DefaultFont(u"Arial");
  layout_.put_DefaultFontSize(10);
  layout_.put_WordWrap(true);
  layout_.put_ForeColor(0);
  layout_.put_RevealCodes(false);
  layout_.put_ShowHiddenText(true);
  layout_.put_IgnoreColors(false);
}

std::shared_ptr<StyleDecoder> QELText::NewStyleDecoderObject() {
  return std::make_shared<StyleDecoder>();
}

std::shared_ptr<StyleDecoder> QELText::get_StyleDecoderObj() {
  if (!decoder_) decoder_ = std::make_shared<StyleDecoder>();
  return decoder_;
}

StyleDecoder& QELText::decoder() { return *get_StyleDecoderObj(); }

TextCase& QELText::text_case() {
  if (!text_case_) text_case_ = std::make_unique<TextCase>();
  return *text_case_;
}

std::u16string QELText::PlainText(std::u16string_view Text) {
  put_QELText(Text);
  return decoder().get_Text();
}

std::int16_t QELText::InString(std::u16string_view Text, std::u16string_view SearchText,
                               std::int16_t Compare) {
  const std::u16string search(SearchText);
  const std::u16string text = PlainText(Text);
  const std::u16string wanted = PlainText(search);
  return static_cast<std::int16_t>(markup::find(text, wanted, Compare == 1));
}

std::int16_t QELText::InStringRev(std::u16string_view Text, std::u16string_view SearchText,
                                  std::int16_t Start) {
  const std::u16string search(SearchText);
  const std::u16string text = PlainText(Text);
  const std::u16string wanted = PlainText(search);
  const auto seen = static_cast<std::size_t>(std::max<std::int16_t>(Start, 0));
  const std::u16string_view searched =
      Start == -1 ? std::u16string_view(text) : std::u16string_view(text).substr(0, seen);
  return static_cast<std::int16_t>(markup::find_last(searched, wanted, false));
}

namespace {

/// Limits a length to 0 and the length of the markup.
std::int16_t limited(std::int16_t length, std::u16string_view markup) {
  if (length < 0) return 0;
  return markup.size() < static_cast<std::size_t>(length) ? static_cast<std::int16_t>(markup.size())
                                                          : length;
}

}  // namespace

std::u16string QELText::LeftStr(std::u16string_view Text, std::int16_t& Length) {
  Length = limited(Length, Text);
  return markup::left(decoder(), Text, Length);
}

std::u16string QELText::RightStr(std::u16string_view Text, std::int16_t& Length) {
  Length = limited(Length, Text);
  return markup::right(decoder(), Text, Length);
}

std::u16string QELText::MidStr(std::u16string_view Text, std::int16_t Start, std::int16_t Length) {
  if (Start < 1 || Length < -1 || Length == 0) return {};
  const auto [before, rest] = markup::around(decoder(), std::u16string(Text), 1, Start - 1);
  const std::u16string from_start = before + rest;
  return Length == -1 ? from_start : markup::left(decoder(), from_start, Length);
}

std::u16string QELText::Stuff(std::u16string_view Text, std::int16_t Start, std::int16_t Length,
                              std::u16string_view Replacement, iStyle* Style) {
  std::u16string replacement(Replacement);
  if (Style != nullptr) {
    // Before a text is loaded: the style may be that of a segment that is about to go.
    replacement.insert(0, iStyle::OnCodes(*Style));
    Style->Initialize();
  }
  const auto [before, behind] = markup::around(decoder(), std::u16string(Text), Start, Length);
  return before + replacement + behind;
}

namespace {

/// The style of the first segment that begins at `start` (one-based) or behind it.
iStyle style_from(StyleDecoder& decoder, std::int32_t start) {
  iStyle style;
  std::int32_t position = 1;
  for (const auto& segment : *decoder.get_Segments()) {
    if (position >= start) {
      style.put_All(segment->get_Style().get_All());
      break;
    }
    position += segment->length();
  }
  return style;
}

/// The style to apply where `own` is the text's.
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

/// The text within the codes of the style, small capitals aside: bold is innermost.
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

template <class Style>
std::u16string stuff_with_style(StyleDecoder& decoder, const std::u16string& text,
                                std::int32_t start, std::int32_t length,
                                const std::u16string& replacement, const Style given) {
  const auto [before, behind] = markup::around(decoder, text, start, length);
  iStyle own;
  if (length > 0) {
    decoder.put_QELText(text);
    own = style_from(decoder, start);
  }
  decoder.put_QELText(before + wrapped(replacement, applied_style(given, own)) + behind);
  return decoder.get_QELText();
}

}  // namespace

std::u16string QELText::StuffWithStyleData(std::u16string_view Text, std::int16_t Start,
                                           std::int16_t Length, std::u16string_view Replacement,
                                           const iStyle& Style) {
  return stuff_with_style(decoder(), std::u16string(Text), Start, Length,
                          std::u16string(Replacement), Style);
}

std::u16string QELText::StuffWithStyleData(std::u16string_view Text, std::int16_t Start,
                                           std::int16_t Length, std::u16string_view Replacement,
                                           const cReplaceData& Style) {
  return stuff_with_style(decoder(), std::u16string(Text), Start, Length,
                          std::u16string(Replacement), Style);
}

std::vector<std::u16string> QELText::Split(std::u16string_view Text,
                                           std::u16string_view Delimiter) {
  return markup::split(decoder(), std::u16string(Text), std::u16string(Delimiter));
}

bool QELText::Compare(std::u16string_view Text1, std::u16string_view Text2,
                      std::int16_t /*Unused*/) {
  // Encoded markup differs wherever characters or styles do: no walk along the segments is needed.
  StyleDecoder second;
  second.put_QELText(Text2);
  put_QELText(Text1);
  return get_QELText() == second.get_QELText();
}

namespace {

std::u16string with_case(const TextCase& text_case, const std::u16string& text,
                         std::int32_t attribute, std::int16_t start, std::int16_t length) {
  switch (attribute) {
    case taUpperCase:
      return text_case.UpperCase(text, start, length);
    case taLowerCase:
      return text_case.LowerCase(text, start, length);
    case taChangeCase:
      return text_case.ChangeCase(text, start, length);
    case taTitleCase:
      return text_case.TitleCase(text, start, length, true);
    case taFirstToUpper:
      return text_case.FirstToUpper(text, start, length);
    default:
      return text_case.FirstToLower(text, start, length);
  }
}

}  // namespace

void QELText::ToggleTextAttribute(std::int32_t Attribute, std::int16_t Start, std::int16_t Length) {
  const SegmentCollection& segments = *decoder().get_Segments();
  if (segments.Count() <= 0 || Attribute < taPlain || Attribute > taFirstToLower) return;
  division::Span span = {1, segments.Count()};
  const bool is_selection = Length >= 1;
  if (is_selection) {
    decoder().DivideSegmentsGivenSelStartAndLength(Start, Length);
    span = division::find_span(segments, Start, Length);
    if (span.first <= 0) return;
  }
  if (Attribute >= taUpperCase && Attribute <= taFirstToLower) {
    const bool title_case_of_all = Attribute == taTitleCase && !is_selection;
    const auto all_from = title_case_of_all ? std::int16_t{1} : std::int16_t{0};
    put_QELText(with_case(text_case(), get_QELText(), Attribute, is_selection ? Start : all_from,
                          is_selection ? Length : std::int16_t{-1}));
    return;
  }
  const bool on = !has_attribute(segments.Item(span.first)->get_Style(), Attribute);
  for (std::int32_t i = span.first; i <= span.last; ++i) {
    set_attribute(segments.Item(i)->get_Style(), Attribute, on);
  }
}

}  // namespace qel
