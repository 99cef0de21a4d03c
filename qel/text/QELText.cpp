#include "qel/text/QELText.h"

#include <algorithm>
#include <cstddef>

#include "qel/text/DecodedStrings.h"

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

void QELText::put_Lossless(bool Value) {
  layout_.put_Lossless(Value);
  if (decoder_) decoder_->put_Lossless(Value);
}

std::shared_ptr<StyleDecoder> QELText::get_StyleDecoderObj() {
  if (!decoder_) {
    decoder_ = std::make_shared<StyleDecoder>();
    decoder_->put_Lossless(get_Lossless());
  }
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

namespace {

/// Counted as the 16-bit members do: from 1, with 0 for not found.
std::int16_t position_of(std::size_t found) {
  return static_cast<std::int16_t>(found == std::u16string_view::npos ? 0 : found + 1);
}

/// Limits a length to the range from 0 to the length of the markup.
std::int16_t limited(std::int16_t length, std::u16string_view markup) {
  if (length < 0) return 0;
  return markup.size() < static_cast<std::size_t>(length) ? static_cast<std::int16_t>(markup.size())
                                                          : length;
}

}  // namespace

std::int16_t QELText::InString(std::u16string_view Text, std::u16string_view SearchText,
                               std::int16_t Compare) {
  const std::u16string search(SearchText);
  const std::u16string text = PlainText(Text);
  const std::u16string wanted = PlainText(search);
  return position_of(decoded::find(text, wanted, Compare == 1));
}

std::int16_t QELText::InStringRev(std::u16string_view Text, std::u16string_view SearchText,
                                  std::int16_t Start) {
  const std::u16string search(SearchText);
  const std::u16string text = PlainText(Text);
  const std::u16string wanted = PlainText(search);
  const auto seen = static_cast<std::size_t>(std::max<std::int16_t>(Start, 0));
  const std::u16string_view searched =
      Start == -1 ? std::u16string_view(text) : std::u16string_view(text).substr(0, seen);
  return position_of(decoded::find_last(searched, wanted, false));
}

std::u16string QELText::LeftStr(std::u16string_view Text, std::int16_t& Length) {
  Length = limited(Length, Text);
  return decoded::left(decoder(), Text, Length);
}

std::u16string QELText::RightStr(std::u16string_view Text, std::int16_t& Length) {
  Length = limited(Length, Text);
  return decoded::right(decoder(), Text, Length);
}

std::u16string QELText::MidStr(std::u16string_view Text, std::int16_t Start, std::int16_t Length) {
  if (Start < 1 || Length < -1 || Length == 0) return {};
  return decoded::mid(decoder(), Text, Start - 1, Length);
}

std::u16string QELText::Stuff(std::u16string_view Text, std::int16_t Start, std::int16_t Length,
                              std::u16string_view Replacement, iStyle* Style) {
  std::u16string replacement(Replacement);
  if (Style != nullptr) {
    // Before a text is loaded: the style may belong to a segment that is about to go.
    replacement.insert(0, iStyle::OnCodes(*Style));
    Style->Initialize();
  }
  return decoded::stuff(decoder(), std::u16string(Text), Start - 1, Length, replacement);
}

std::u16string QELText::StuffWithStyleData(std::u16string_view Text, std::int16_t Start,
                                           std::int16_t Length, std::u16string_view Replacement,
                                           const iStyle& Style) {
  decoded::replace(decoder(), Text, Start - 1, Length, Replacement, Style);
  return get_QELText();
}

std::u16string QELText::StuffWithStyleData(std::u16string_view Text, std::int16_t Start,
                                           std::int16_t Length, std::u16string_view Replacement,
                                           const cReplaceData& Style) {
  decoded::replace(decoder(), Text, Start - 1, Length, Replacement, Style);
  return get_QELText();
}

std::vector<std::u16string> QELText::Split(std::u16string_view Text,
                                           std::u16string_view Delimiter) {
  return decoded::split(decoder(), std::u16string(Text), std::u16string(Delimiter));
}

bool QELText::Compare(std::u16string_view Text1, std::u16string_view Text2,
                      std::int16_t /*Unused*/) {
  // Encoded markup differs wherever characters or styles do, so there is no need to walk the
  // segments.
  StyleDecoder second;
  second.put_Lossless(get_Lossless());
  second.put_QELText(Text2);
  put_QELText(Text1);
  return get_QELText() == second.get_QELText();
}

void QELText::ToggleTextAttribute(std::int32_t Attribute, std::int16_t Start, std::int16_t Length) {
  decoded::toggle(decoder(), Attribute, Start, Length, text_case().ignored_words());
}

}  // namespace qel
