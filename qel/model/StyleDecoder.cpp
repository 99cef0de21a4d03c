#include "qel/model/StyleDecoder.h"

#include <utility>

#include "qel/model/Division.h"
#include "qel/model/Encoder.h"
#include "qel/model/Parser.h"
#include "qel/model/StyleCodes.h"
#include "qel/model/TextAttribute.h"

namespace qel {
namespace {

OutputOptions options_of(const SegmentCollection& segments, OutputOptions::Codes codes,
                         std::int32_t flags, bool trim, bool single_blanks) {
  OutputOptions options;
  options.way = segments.way();
  options.codes = (flags & ofPlainText) != 0 ? OutputOptions::Codes::none : codes;
  options.without_ignored = (flags & ofWithoutIgnored) != 0;
  options.without_hidden = (flags & ofWithoutHidden) != 0;
  options.without_note = (flags & ofWithoutNote) != 0;
  options.line_codes = (flags & ofLineCodes) != 0;
  options.trim_left = trim;
  options.trim_right = trim;
  options.single_blanks = single_blanks;
  return options;
}

std::u16string spelled(const std::u16string& codes, const CustomCodes& spelling) {
  std::u16string text;
  spelling.append_translated(text, codes);
  return text;
}

std::u16string spelled(const std::u16string& codes, std::u16string_view spelling) {
  return spelling.empty() ? codes : spelled(codes, CustomCodes(spelling));
}

}  // namespace

std::u16string StyleDecoder::get_QELText() const { return GetQELText(ofMarkup, false, false); }

void StyleDecoder::put_QELText(std::u16string_view Text) {
  // Copied first: `Text` may be a view of a segment that is about to go.
  const Way way = segments_->way();
  std::u16string text = way == Way::stated ? protect_escaped_codes(Text) : std::u16string(Text);
  words_.reset();
  segments_->Clear();
  parse_markup(std::move(text), *segments_, way);
}

void StyleDecoder::put_Lossless(bool Value) {
  if (Value == get_Lossless()) return;
  const std::u16string markup = GetQELText(ofLineCodes, false, false);
  segments_->put_way(Value ? Way::lossless : Way::stated);
  put_QELText(markup);
}

std::u16string StyleDecoder::markup_of_part() const {
  OutputOptions options;
  options.way = segments_->way();
  options.is_cut = true;
  return encode(*segments_, options);
}

void StyleDecoder::SetQELText(std::u16string_view Text, std::int32_t Options) {
  put_QELText(Text);
  if (Options >= 1 && Options <= 3) {
    division::divide_words(*segments_, static_cast<division::Pieces>(Options));
  }
}

std::u16string StyleDecoder::SegmentText(std::int32_t Index) const {
  const auto segment = segments_->Item(Index);
  return segment ? segment->get_Text() : std::u16string();
}

std::shared_ptr<iStyle> StyleDecoder::SegmentStyle(std::int32_t Index) const {
  const auto segment = segments_->Item(Index);
  if (!segment) return nullptr;
  return {segment, &segment->get_Style()};
}

std::u16string StyleDecoder::GetQELText(std::int32_t Flags, bool RemoveLeadingAndTrailingSpaces,
                                        bool RemoveDoubleSpaces) const {
  return encode(*segments_, options_of(*segments_, OutputOptions::Codes::current, Flags,
                                       RemoveLeadingAndTrailingSpaces, RemoveDoubleSpaces));
}

std::u16string StyleDecoder::GetQELTextv6(std::int32_t Flags, bool RemoveLeadingAndTrailingSpaces,
                                          bool RemoveDoubleSpaces) const {
  return encode(*segments_, options_of(*segments_, OutputOptions::Codes::v6, Flags,
                                       RemoveLeadingAndTrailingSpaces, RemoveDoubleSpaces));
}

std::u16string StyleDecoder::get_QELTextv6() const { return GetQELTextv6(ofMarkup, false, false); }

std::u16string StyleDecoder::get_QELTextWithoutIgnored() const {
  return GetQELText(ofWithoutIgnored, false, false);
}

std::u16string StyleDecoder::get_Text() const { return GetQELText(ofPlainText, false, false); }

void StyleDecoder::SetCustomCodes(std::u16string_view Codes) { custom_codes_ = CustomCodes(Codes); }

std::u16string StyleDecoder::get_TextCustom() const {
  OutputOptions options;
  options.codes = OutputOptions::Codes::custom;
  options.way = segments_->way();
  options.custom = &custom_codes_;
  return encode(*segments_, options);
}

std::u16string StyleDecoder::OnCodes(const iStyle& Style, std::u16string_view Codes) const {
  return spelled(iStyle::OnCodes(Style), Codes);
}

std::u16string StyleDecoder::OffCodes(const iStyle& Style, std::u16string_view Codes) const {
  return spelled(iStyle::OffCodes(Style), Codes);
}

std::u16string StyleDecoder::CustomOffCodes(const iStyle& Style, std::u16string_view Codes) const {
  if (Codes.empty()) return spelled(iStyle::OffCodes(Style), custom_codes_);
  return OffCodes(Style, Codes);
}

void StyleDecoder::divide(std::ptrdiff_t start, std::ptrdiff_t length) {
  words_.reset();
  division::divide(*segments_, start, length);
}

std::int16_t StyleDecoder::GetSegmentIndexGivenStartAndLength(std::int16_t SelStart,
                                                              std::int16_t SelLength,
                                                              std::int16_t& LastIndex) {
  DivideSegmentsGivenSelStartAndLength(SelStart, SelLength);
  const division::Span span = division::find_span(*segments_, SelStart, SelLength);
  if (span.first != 0) LastIndex = static_cast<std::int16_t>(span.last);
  return static_cast<std::int16_t>(span.first);
}

std::shared_ptr<Segment> StyleDecoder::GetSegmentGivenStartAndLength(std::int16_t SelStart,
                                                                     std::int16_t SelLength) {
  DivideSegmentsGivenSelStartAndLength(SelStart, SelLength);
  return segments_->Item(division::find_span(*segments_, SelStart, SelLength).first);
}

namespace {

/// Divides along the span and calls `change` with the style of each segment inside it.
template <class Change>
void change_span(SegmentCollection& segments, std::int32_t start, std::int32_t length,
                 Change change) {
  division::divide(segments, start, length);
  std::int32_t position = 0;
  for (const auto& segment : segments) {
    if (position >= start && position < start + length) change(segment->get_Style());
    position += segment->length();
  }
}

}  // namespace

void StyleDecoder::ApplyStyleToText(std::int16_t SelStart, std::int16_t SelLength,
                                    const iStyle& Style) {
  words_.reset();
  change_span(*segments_, SelStart, SelLength, [&](iStyle& style) { style.copy_record(Style); });
}

void StyleDecoder::ApplyAttributeToSegmentedText(std::int16_t SelStart, std::int16_t SelLength,
                                                 std::int32_t Attribute, bool Value) {
  words_.reset();
  change_span(*segments_, SelStart, SelLength,
              [&](iStyle& style) { set_attribute(style, Attribute, Value); });
}

std::shared_ptr<WordCollection> StyleDecoder::get_Words() const {
  if (!words_) words_ = std::make_shared<WordCollection>(*segments_);
  return words_;
}

std::u16string StyleDecoder::WordText(std::int32_t Index) const {
  const auto word = get_Words()->Item(Index);
  return word ? word->get_Text() : std::u16string();
}

std::int32_t StyleDecoder::WordSegmentCount(std::int32_t Index) const {
  const auto word = get_Words()->Item(Index);
  return word ? word->SegmentCount() : 0;
}

std::shared_ptr<Segment> StyleDecoder::WordSegment(std::int32_t Index,
                                                   std::int32_t SegmentNumber) const {
  const auto word = get_Words()->Item(Index);
  return word ? word->Segment(SegmentNumber) : nullptr;
}

std::int32_t StyleDecoder::WordSegmentIndex(std::int32_t Index, std::int32_t SegmentNumber) const {
  const auto word = get_Words()->Item(Index);
  return word ? word->SegmentIndex(SegmentNumber) : 0;
}

namespace {

std::u16string trimmed(StyleDecoder& decoder, std::u16string_view text,
                       const SegmentCollection& segments, bool OutputOptions::*left,
                       bool OutputOptions::*right) {
  decoder.put_QELText(text);
  OutputOptions options;
  options.way = segments.way();
  if (left != nullptr) options.*left = true;
  if (right != nullptr) options.*right = true;
  return encode(segments, options);
}

}  // namespace

std::u16string StyleDecoder::TrimStr(std::u16string_view Text) {
  return trimmed(*this, Text, *segments_, &OutputOptions::trim_left, &OutputOptions::trim_right);
}

std::u16string StyleDecoder::LTrimStr(std::u16string_view Text) {
  return trimmed(*this, Text, *segments_, &OutputOptions::trim_left, nullptr);
}

std::u16string StyleDecoder::RTrimStr(std::u16string_view Text) {
  return trimmed(*this, Text, *segments_, nullptr, &OutputOptions::trim_right);
}

std::u16string StyleDecoder::RemoveLeadingPunctuation(std::u16string_view Text) {
  return trimmed(*this, Text, *segments_, &OutputOptions::trim_left_punctuation, nullptr);
}

std::u16string StyleDecoder::RemoveTrailingPunctuation(std::u16string_view Text) {
  return trimmed(*this, Text, *segments_, nullptr, &OutputOptions::trim_right_punctuation);
}

}  // namespace qel
