#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qel/model/StyleDecoder.h"
#include "qel/model/TextAttribute.h"
#include "qel/model/cReplaceData.h"
#include "qel/text/TextAndFormatting.h"
#include "qel/text/TextCase.h"

namespace qel {

/// All that can be done with a piece of markup, in one object: string functions that count only
/// visible characters, toggles of attributes, changes of case, words and segments, measuring and
/// drawing.
///
/// It owns one decoder, one case converter and one layout engine, and passes most calls on to them
/// (their headers say what each member does). The text is whatever the decoder was last given: the
/// string functions use the decoder too, so load the text again after them before asking for its
/// segments. Positions are those of the plain text and begin at 1, unless stated otherwise.
class QELText {
 public:
  /// The layout engine begins with Arial at 10 points, black, at the left, wrapped.
  QELText();
  // Copies would share the text.
  QELText(const QELText&) = delete;
  QELText& operator=(const QELText&) = delete;

  /// Whether all that markup can say survives (see `StyleDecoder::get_Lossless`): in this object's
  /// decoder, and in what it changes and draws. Line codes do not count as characters then, and
  /// stay where they are; those at a cut are in the part behind it, except those at the end of the
  /// text. The parts into which a text was cut, put together, are the text. False at first.
  bool get_Lossless() const { return layout_.get_Lossless(); }
  void put_Lossless(bool Value);

  // Objects.

  /// A new style record, and a new decoder, independent of this object.
  static std::shared_ptr<iStyle> NewiStyleObject() { return std::make_shared<iStyle>(); }
  static std::shared_ptr<StyleDecoder> NewStyleDecoderObject();
  /// This object's own decoder: changing it changes the text here.
  std::shared_ptr<StyleDecoder> get_StyleDecoderObj();

  // Strings. Each loads the text into the decoder. Escaped codes count as the four characters that
  // plain text has for them (three when lossless). A cut through one ("~/b1") separates these
  // characters, and all of them stay text. MarkupStrings.h has the same for texts of any length.

  /// Position of the first match in the plain text; 0 when there is none, and always in an empty
  /// text. An empty search text is found at 1. `Compare` is 1 to ignore case; any other value,
  /// usually -1 or 0, compares exactly.
  std::int16_t InString(std::u16string_view Text, std::u16string_view SearchText,
                        std::int16_t Compare = -1);
  /// Position of the last exact match that lies within the first `Start` characters; -1, or more
  /// than there are, means all of them.
  std::int16_t InStringRev(std::u16string_view Text, std::u16string_view SearchText,
                           std::int16_t Start = -1);
  /// The same as `TextAndFormatting::fmtLen`: unlike the others, it counts "/k1", "/k0" and "/nl"
  /// as text and only the tilde of an escaped code, lossless too, and it loads nothing.
  std::int16_t LenStr(std::u16string_view Text) const { return TextAndFormatting::fmtLen(Text); }
  /// The text without codes.
  std::u16string PlainText(std::u16string_view Text);

  /// Markup of the first or last `Length` characters, or of the whole text when there are fewer.
  /// `Length` is set to the value that was used, from 0 to the length of the markup.
  std::u16string LeftStr(std::u16string_view Text, std::int16_t& Length);
  std::u16string RightStr(std::u16string_view Text, std::int16_t& Length);
  /// Markup of `Length` characters from `Start` on, or of all the rest for -1. Empty for a start
  /// below 1 and any other length below 1.
  std::u16string MidStr(std::u16string_view Text, std::int16_t Start, std::int16_t Length = -1);

  /// The markup with `Length` characters from `Start` on replaced. The replacement is markup too
  /// and is inserted as it is. With a style, the codes that switch the style on come before it;
  /// nothing switches them off but the replacement itself. `Style` may be null; it is reset to its
  /// initial state.
  std::u16string Stuff(std::u16string_view Text, std::int16_t Start, std::int16_t Length,
                       std::u16string_view Replacement, iStyle* Style = nullptr);
  /// The same with the replacement enclosed in the codes of a style, and the whole encoded again.
  /// The record says which parts of the style to take from the text, that is from the first segment
  /// that begins at or after `Start` (plain if there is none, or if `Length` is below 1): all of it
  /// when `Ignored` of a style or `DontChangeStyle` of replacement data is set; else the font where
  /// `DontChangeFont` is set, and the colour where `DontChangeColor` is.
  std::u16string StuffWithStyleData(std::u16string_view Text, std::int16_t Start,
                                    std::int16_t Length, std::u16string_view Replacement,
                                    const iStyle& Style);
  std::u16string StuffWithStyleData(std::u16string_view Text, std::int16_t Start,
                                    std::int16_t Length, std::u16string_view Replacement,
                                    const cReplaceData& Style);

  /// The markup between the delimiters, which are searched for in the plain text. A delimiter at
  /// the very end adds no element; an empty text has none. An empty delimiter is never found.
  std::vector<std::u16string> Split(std::u16string_view Text, std::u16string_view Delimiter);
  /// Whether both texts have the same characters in the same styles. The third argument is ignored.
  bool Compare(std::u16string_view Text1, std::u16string_view Text2, std::int16_t Unused = 0);

  /// Toggles an attribute (see `TextAttribute`) of `Length` characters after the first `Start`, or
  /// of the whole text when `Length` is below 1. An attribute that the first segment of the span
  /// has is cleared in all of the span, any other is set. In a span that reaches beyond the text,
  /// only the first segment changes, except for changes of case. Nothing happens without a text,
  /// for any other attribute, or if the span does not begin within the text.
  void ToggleTextAttribute(std::int32_t Attribute, std::int16_t Start, std::int16_t Length);

  // The decoder's members.

  std::u16string get_QELText() { return decoder().get_QELText(); }
  void put_QELText(std::u16string_view Text) { decoder().put_QELText(Text); }
  void SetQELText(std::u16string_view Text, std::int32_t Options) {
    decoder().SetQELText(Text, Options);
  }
  std::u16string get_QELTextv6() { return decoder().get_QELTextv6(); }
  std::u16string GetQELText(std::int32_t Flags, bool RemoveLeadingAndTrailingSpaces,
                            bool RemoveDoubleSpaces) {
    return decoder().GetQELText(Flags, RemoveLeadingAndTrailingSpaces, RemoveDoubleSpaces);
  }
  std::u16string GetQELTextv6(std::int32_t Flags, bool RemoveLeadingAndTrailingSpaces,
                              bool RemoveDoubleSpaces) {
    return decoder().GetQELTextv6(Flags, RemoveLeadingAndTrailingSpaces, RemoveDoubleSpaces);
  }
  void SetCustomCodes(std::u16string_view Codes) { decoder().SetCustomCodes(Codes); }
  std::u16string get_TextCustom() { return decoder().get_TextCustom(); }
  static bool IsQELCode(std::u16string_view Text, std::int32_t Flags = sfAll) {
    return StyleDecoder::IsQELCode(Text, Flags);
  }

  std::shared_ptr<SegmentCollection> get_Segments() { return decoder().get_Segments(); }
  std::u16string SegmentText(std::int32_t Index) { return decoder().SegmentText(Index); }
  std::shared_ptr<iStyle> SegmentStyle(std::int32_t Index) { return decoder().SegmentStyle(Index); }
  void ApplyStyleToText(std::int16_t SelStart, std::int16_t SelLength, const iStyle& Style) {
    decoder().ApplyStyleToText(SelStart, SelLength, Style);
  }
  void DivideSegmentsGivenSelStartAndLength(std::int16_t SelStart, std::int16_t SelLength) {
    decoder().DivideSegmentsGivenSelStartAndLength(SelStart, SelLength);
  }
  std::shared_ptr<Segment> GetSegmentGivenStartAndLength(std::int16_t SelStart,
                                                         std::int16_t SelLength) {
    return decoder().GetSegmentGivenStartAndLength(SelStart, SelLength);
  }
  std::int16_t GetSegmentIndexGivenStartAndLength(std::int16_t SelStart, std::int16_t SelLength,
                                                  std::int16_t& LastIndex) {
    return decoder().GetSegmentIndexGivenStartAndLength(SelStart, SelLength, LastIndex);
  }

  std::int32_t get_WordCount() { return decoder().get_WordCount(); }
  std::u16string WordText(std::int32_t Index) { return decoder().WordText(Index); }
  std::int32_t WordSegmentCount(std::int32_t Index) { return decoder().WordSegmentCount(Index); }
  std::shared_ptr<Segment> WordSegment(std::int32_t Index, std::int32_t SegmentNumber) {
    return decoder().WordSegment(Index, SegmentNumber);
  }
  std::int32_t WordSegmentIndex(std::int32_t Index, std::int32_t SegmentNumber) {
    return decoder().WordSegmentIndex(Index, SegmentNumber);
  }

  std::u16string TrimStr(std::u16string_view Text) { return decoder().TrimStr(Text); }
  std::u16string LTrimStr(std::u16string_view Text) { return decoder().LTrimStr(Text); }
  std::u16string RTrimStr(std::u16string_view Text) { return decoder().RTrimStr(Text); }
  std::u16string RemoveLeadingPunctuation(std::u16string_view Text) {
    return decoder().RemoveLeadingPunctuation(Text);
  }
  std::u16string RemoveTrailingPunctuation(std::u16string_view Text) {
    return decoder().RemoveTrailingPunctuation(Text);
  }

  // The layout engine's members.

  void SetFonts(const QELIndexFonts& Fonts) { layout_.SetFonts(Fonts); }
  void SetColors(const QELIndexColors& Colors) { layout_.SetColors(Colors); }
  void SetFontAndColors(const QELIndexFonts& Fonts, const QELIndexColors& Colors) {
    layout_.SetFontAndColors(Fonts, Colors);
  }
  std::shared_ptr<QELIndexFonts> get_Fonts() const { return layout_.get_Fonts(); }
  std::shared_ptr<QELIndexColors> get_Colors() const { return layout_.get_Colors(); }
  std::int16_t get_Align() const { return layout_.get_Align(); }
  void put_Align(std::int16_t Value) { layout_.put_Align(Value); }
  Color get_IgnoredColor() const { return layout_.get_IgnoredColor(); }
  void put_IgnoredColor(Color Value) { layout_.put_IgnoredColor(Value); }
  Color get_HiddenColor() const { return layout_.get_HiddenColor(); }
  void put_HiddenColor(Color Value) { layout_.put_HiddenColor(Value); }
  Color get_NoteColor() const { return layout_.get_NoteColor(); }
  void put_NoteColor(Color Value) { layout_.put_NoteColor(Value); }
  bool get_IgnoreColors() const { return layout_.get_IgnoreColors(); }
  void put_IgnoreColors(bool Value) { layout_.put_IgnoreColors(Value); }
  /// `DefaultFont` and `FontName` are one property.
  std::u16string get_DefaultFont() const { return layout_.get_DefaultFont(); }
  void put_DefaultFont(std::u16string_view Value) { layout_.put_DefaultFont(Value); }
  std::u16string get_FontName() const { return layout_.get_DefaultFont(); }
  void put_FontName(std::u16string_view Value) { layout_.put_DefaultFont(Value); }
  /// `FontSize` writes `DefaultFontSize` and cannot be read.
  float get_DefaultFontSize() const { return layout_.get_DefaultFontSize(); }
  void put_DefaultFontSize(float Value) { layout_.put_DefaultFontSize(Value); }
  void put_FontSize(float Value) { layout_.put_DefaultFontSize(Value); }
  bool get_WordWrap() const { return layout_.get_WordWrap(); }
  void put_WordWrap(bool Value) { layout_.put_WordWrap(Value); }
  bool get_RevealCodes() const { return layout_.get_RevealCodes(); }
  void put_RevealCodes(bool Value) { layout_.put_RevealCodes(Value); }
  Color get_ForeColor() const { return layout_.get_ForeColor(); }
  void put_ForeColor(Color Value) { layout_.put_ForeColor(Value); }
  /// The layout engine's `LabelID`.
  std::int16_t get_Labeled() const { return layout_.get_LabelID(); }
  void put_Labeled(std::int16_t Value) { layout_.put_LabelID(Value); }
  bool get_ShowHiddenText() const { return layout_.get_ShowHiddenText(); }
  void put_ShowHiddenText(bool Value) { layout_.put_ShowHiddenText(Value); }

  /// The canvas that later measuring and drawing use, shared with the caller.
  void SetCanvas(std::shared_ptr<platform::Canvas> Canvas) {
    layout_.put_Canvas(std::move(Canvas));
  }
  float fmtTextWidth(std::u16string_view Text) const { return layout_.fmtTextWidth(Text); }
  float TextHeight(std::u16string_view Text) const { return layout_.TextHeight(Text); }
  std::int16_t LineCount(std::u16string_view Text, float Width, float Indent) const {
    return layout_.LineCount(Text, Width, Indent);
  }
  std::u16string GetLine(std::u16string_view Text, float Width, float Indent,
                         std::int16_t LineNumber) const {
    return layout_.GetLine(Text, Width, Indent, LineNumber);
  }
  float WriteParagraph(std::u16string_view Text, float X, float Y, float Width, float Indent = 0) {
    return layout_.WriteParagraph(Text, X, Y, Width, Indent);
  }
  std::int16_t get_LinesPrinted() const { return layout_.get_LinesPrinted(); }
  static std::u16string RomanToArabic(std::u16string_view Text) {
    return TextAndFormatting::RomanToArabic(Text);
  }

  // The case converter's members.

  std::u16string get_IgnoredWordList() { return text_case().get_IgnoredWordList(); }
  void put_IgnoredWordList(std::u16string_view Value) { text_case().put_IgnoredWordList(Value); }
  std::u16string LowerCase(std::u16string_view Text, std::int16_t Start, std::int16_t Length) {
    return TextCase::LowerCase(Text, Start, Length, way());
  }
  std::u16string UpperCase(std::u16string_view Text, std::int16_t Start, std::int16_t Length) {
    return TextCase::UpperCase(Text, Start, Length, way());
  }
  std::u16string ChangeCase(std::u16string_view Text, std::int16_t Start, std::int16_t Length) {
    return TextCase::ChangeCase(Text, Start, Length, way());
  }
  std::u16string TitleCase(std::u16string_view Text, std::int16_t Start, std::int16_t Length,
                           bool NotIgnoredWords) {
    return text_case().TitleCase(Text, Start, Length, NotIgnoredWords, way());
  }
  std::u16string InitialCap(std::u16string_view Text, std::int16_t Start, std::int16_t Length) {
    return TextCase::InitialCap(Text, Start, Length, way());
  }
  /// `FirstToLower` and `FirstToUpper` of the case converter.
  std::u16string FirstLetterToLowercase(std::u16string_view Text, std::int16_t Start,
                                        std::int16_t Length) {
    return TextCase::FirstToLower(Text, Start, Length, way());
  }
  std::u16string FirstLetterToUppercase(std::u16string_view Text, std::int16_t Start,
                                        std::int16_t Length) {
    return TextCase::FirstToUpper(Text, Start, Length, way());
  }
  std::u16string AutoTitleCase(std::u16string_view Text) {
    return text_case().AutoTitleCase(Text, way());
  }
  std::u16string AutoTitleCaseRTF(std::u16string_view Text) {
    return text_case().AutoTitleCaseRTF(Text);
  }
  std::u16string AutoInitialCap(std::u16string_view Text) {
    return TextCase::AutoInitialCap(Text, way());
  }
  std::u16string AutoInitialCapRTF(std::u16string_view Text) {
    return text_case().AutoInitialCapRTF(Text);
  }
  std::u16string UpperCaseRTF(std::u16string_view Text) { return text_case().UpperCaseRTF(Text); }
  std::u16string LowerCaseRTF(std::u16string_view Text) { return text_case().LowerCaseRTF(Text); }

 private:
  StyleDecoder& decoder();
  TextCase& text_case();
  Way way() const { return get_Lossless() ? Way::lossless : Way::stated; }

  std::shared_ptr<StyleDecoder> decoder_;
  std::unique_ptr<TextCase> text_case_;
  TextAndFormatting layout_;
};

}  // namespace qel
