#pragma once

#include "com/automation/Adapter.h"
#include "com/automation/HostCanvas.h"
#include "qel/text/QELText.h"

namespace qel::com {

/// Represents a text object to a host.
class QELTextObject final : public Adapter<QELText, IQELText> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP NewiStyleObject(IiStyle** Result) override {
    return answer(Result, &QELText::NewiStyleObject);
  }
  STDMETHODIMP NewStyleDecoderObject(IStyleDecoder** Result) override {
    return answer(Result, &QELText::NewStyleDecoderObject);
  }
  STDMETHODIMP get_StyleDecoderObj(IStyleDecoder** Result) override {
    return answer(Result, &QELText::get_StyleDecoderObj);
  }
  STDMETHODIMP InString(BSTR Text, BSTR SearchText, SHORT Compare, SHORT* Result) override {
    return answer(Result, &QELText::InString, Text, SearchText, Compare);
  }
  STDMETHODIMP InStringRev(BSTR Text, BSTR SearchText, SHORT Start, SHORT* Result) override {
    return answer(Result, &QELText::InStringRev, Text, SearchText, Start);
  }
  STDMETHODIMP LenStr(BSTR Text, SHORT* Result) override {
    return answer(Result, &QELText::LenStr, Text);
  }
  STDMETHODIMP PlainText(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::PlainText, Text);
  }
  STDMETHODIMP LeftStr(BSTR Text, VARIANT* Length, BSTR* Result) override {
    return answer(Result, &QELText::LeftStr, Text, Length);
  }
  STDMETHODIMP RightStr(BSTR Text, VARIANT* Length, BSTR* Result) override {
    return answer(Result, &QELText::RightStr, Text, Length);
  }
  STDMETHODIMP MidStr(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &QELText::MidStr, Text, Start, Length);
  }
  STDMETHODIMP Stuff(BSTR Text, SHORT Start, SHORT Length, BSTR Replacement, IiStyle* Style,
                     BSTR* Result) override {
    return answer(Result, &QELText::Stuff, Text, Start, Length, Replacement, Style);
  }
  /// `Style` is a style record or replacement data.
  STDMETHODIMP StuffWithStyleData(BSTR Text, SHORT Start, SHORT Length, BSTR Replacement,
                                  IDispatch* Style, BSTR* Result) override {
    const auto stuff = [&](const auto& record) {
      return object().StuffWithStyleData(text_of(Text), Start, Length, text_of(Replacement),
                                         record);
    };
    return answer(Result, [&] {
      return stands_for<cReplaceData>(Style) ? stuff(*own_object<cReplaceData>(Style))
                                             : stuff(static_cast<iStyle&>(Given<iStyle>(Style)));
    });
  }
  STDMETHODIMP Split(BSTR Text, BSTR Delimiter, VARIANT* Result) override {
    return answer(Result, &QELText::Split, Text, Delimiter);
  }
  STDMETHODIMP Compare(BSTR Text1, BSTR Text2, SHORT Unused, VARIANT_BOOL* Result) override {
    return answer(Result, &QELText::Compare, Text1, Text2, Unused);
  }
  STDMETHODIMP ToggleTextAttribute(LONG Attribute, SHORT Start, SHORT Length) override {
    return call(&QELText::ToggleTextAttribute, Attribute, Start, Length);
  }
  STDMETHODIMP get_QELText(BSTR* Result) override { return answer(Result, &QELText::get_QELText); }
  STDMETHODIMP put_QELText(BSTR Text) override { return call(&QELText::put_QELText, Text); }
  STDMETHODIMP SetQELText(BSTR Text, LONG Options) override {
    return call(&QELText::SetQELText, Text, Options);
  }
  STDMETHODIMP get_QELTextv6(BSTR* Result) override {
    return answer(Result, &QELText::get_QELTextv6);
  }
  STDMETHODIMP GetQELText(LONG Flags, VARIANT_BOOL RemoveLeadingAndTrailingSpaces,
                          VARIANT_BOOL RemoveDoubleSpaces, BSTR* Result) override {
    return answer(Result, &QELText::GetQELText, Flags, RemoveLeadingAndTrailingSpaces,
                  RemoveDoubleSpaces);
  }
  STDMETHODIMP GetQELTextv6(LONG Flags, VARIANT_BOOL RemoveLeadingAndTrailingSpaces,
                            VARIANT_BOOL RemoveDoubleSpaces, BSTR* Result) override {
    return answer(Result, &QELText::GetQELTextv6, Flags, RemoveLeadingAndTrailingSpaces,
                  RemoveDoubleSpaces);
  }
  STDMETHODIMP SetCustomCodes(BSTR Codes) override { return call(&QELText::SetCustomCodes, Codes); }
  STDMETHODIMP get_TextCustom(BSTR* Result) override {
    return answer(Result, &QELText::get_TextCustom);
  }
  STDMETHODIMP IsQELCode(BSTR Text, QELCodeKind Flags, VARIANT_BOOL* Result) override {
    return answer(Result, &QELText::IsQELCode, Text, Flags);
  }
  STDMETHODIMP get_Segments(ISegmentCollection** Result) override {
    return answer(Result, &QELText::get_Segments);
  }
  STDMETHODIMP SegmentText(LONG Index, BSTR* Result) override {
    return answer(Result, &QELText::SegmentText, Index);
  }
  STDMETHODIMP SegmentStyle(LONG Index, IiStyle** Result) override {
    return answer(Result, &QELText::SegmentStyle, Index);
  }
  STDMETHODIMP ApplyStyleToText(SHORT SelStart, SHORT SelLength, IiStyle* Style) override {
    return call(&QELText::ApplyStyleToText, SelStart, SelLength, Style);
  }
  STDMETHODIMP DivideSegmentsGivenSelStartAndLength(SHORT SelStart, SHORT SelLength) override {
    return call(&QELText::DivideSegmentsGivenSelStartAndLength, SelStart, SelLength);
  }
  STDMETHODIMP GetSegmentGivenStartAndLength(SHORT SelStart, SHORT SelLength,
                                             ISegment** Result) override {
    return answer(Result, &QELText::GetSegmentGivenStartAndLength, SelStart, SelLength);
  }
  STDMETHODIMP GetSegmentIndexGivenStartAndLength(SHORT SelStart, SHORT SelLength,
                                                  VARIANT* LastIndex, SHORT* Result) override {
    return answer(Result, &QELText::GetSegmentIndexGivenStartAndLength, SelStart, SelLength,
                  LastIndex);
  }
  STDMETHODIMP get_WordCount(LONG* Result) override {
    return answer(Result, &QELText::get_WordCount);
  }
  STDMETHODIMP WordText(LONG Index, BSTR* Result) override {
    return answer(Result, &QELText::WordText, Index);
  }
  STDMETHODIMP WordSegmentCount(LONG Index, LONG* Result) override {
    return answer(Result, &QELText::WordSegmentCount, Index);
  }
  STDMETHODIMP WordSegment(LONG Index, LONG SegmentNumber, ISegment** Result) override {
    return answer(Result, &QELText::WordSegment, Index, SegmentNumber);
  }
  STDMETHODIMP WordSegmentIndex(LONG Index, LONG SegmentNumber, LONG* Result) override {
    return answer(Result, &QELText::WordSegmentIndex, Index, SegmentNumber);
  }
  STDMETHODIMP TrimStr(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::TrimStr, Text);
  }
  STDMETHODIMP LTrimStr(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::LTrimStr, Text);
  }
  STDMETHODIMP RTrimStr(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::RTrimStr, Text);
  }
  STDMETHODIMP RemoveLeadingPunctuation(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::RemoveLeadingPunctuation, Text);
  }
  STDMETHODIMP RemoveTrailingPunctuation(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::RemoveTrailingPunctuation, Text);
  }
  STDMETHODIMP SetFonts(IQELIndexFonts* Fonts) override { return call(&QELText::SetFonts, Fonts); }
  STDMETHODIMP SetColors(IQELIndexColors* Colors) override {
    return call(&QELText::SetColors, Colors);
  }
  STDMETHODIMP SetFontAndColors(IQELIndexFonts* Fonts, IQELIndexColors* Colors) override {
    return call(&QELText::SetFontAndColors, Fonts, Colors);
  }
  STDMETHODIMP get_Fonts(IQELIndexFonts** Result) override {
    return answer(Result, &QELText::get_Fonts);
  }
  STDMETHODIMP get_Colors(IQELIndexColors** Result) override {
    return answer(Result, &QELText::get_Colors);
  }
  STDMETHODIMP get_Align(SHORT* Result) override { return answer(Result, &QELText::get_Align); }
  STDMETHODIMP put_Align(SHORT Value) override { return call(&QELText::put_Align, Value); }
  STDMETHODIMP get_IgnoredColor(OLE_COLOR* Result) override {
    return answer(Result, &QELText::get_IgnoredColor);
  }
  STDMETHODIMP put_IgnoredColor(OLE_COLOR Value) override {
    return call(&QELText::put_IgnoredColor, Value);
  }
  STDMETHODIMP get_HiddenColor(OLE_COLOR* Result) override {
    return answer(Result, &QELText::get_HiddenColor);
  }
  STDMETHODIMP put_HiddenColor(OLE_COLOR Value) override {
    return call(&QELText::put_HiddenColor, Value);
  }
  STDMETHODIMP get_NoteColor(OLE_COLOR* Result) override {
    return answer(Result, &QELText::get_NoteColor);
  }
  STDMETHODIMP put_NoteColor(OLE_COLOR Value) override {
    return call(&QELText::put_NoteColor, Value);
  }
  STDMETHODIMP get_IgnoreColors(VARIANT_BOOL* Result) override {
    return answer(Result, &QELText::get_IgnoreColors);
  }
  STDMETHODIMP put_IgnoreColors(VARIANT_BOOL Value) override {
    return call(&QELText::put_IgnoreColors, Value);
  }
  STDMETHODIMP get_DefaultFont(BSTR* Result) override {
    return answer(Result, &QELText::get_DefaultFont);
  }
  STDMETHODIMP put_DefaultFont(BSTR Value) override {
    return call(&QELText::put_DefaultFont, Value);
  }
  STDMETHODIMP get_FontName(BSTR* Result) override {
    return answer(Result, &QELText::get_FontName);
  }
  STDMETHODIMP put_FontName(BSTR Value) override { return call(&QELText::put_FontName, Value); }
  STDMETHODIMP get_DefaultFontSize(FLOAT* Result) override {
    return answer(Result, &QELText::get_DefaultFontSize);
  }
  STDMETHODIMP put_DefaultFontSize(FLOAT Value) override {
    return call(&QELText::put_DefaultFontSize, Value);
  }
  STDMETHODIMP put_FontSize(FLOAT Value) override { return call(&QELText::put_FontSize, Value); }
  STDMETHODIMP SetCanvas(IDispatch* Canvas) override {
    return call([&] {
      if (Canvas != nullptr) this->require_trust();
      object().SetCanvas(canvas_on(Canvas));
    });
  }
  STDMETHODIMP get_WordWrap(VARIANT_BOOL* Result) override {
    return answer(Result, &QELText::get_WordWrap);
  }
  STDMETHODIMP put_WordWrap(VARIANT_BOOL Value) override {
    return call(&QELText::put_WordWrap, Value);
  }
  STDMETHODIMP get_RevealCodes(VARIANT_BOOL* Result) override {
    return answer(Result, &QELText::get_RevealCodes);
  }
  STDMETHODIMP put_RevealCodes(VARIANT_BOOL Value) override {
    return call(&QELText::put_RevealCodes, Value);
  }
  STDMETHODIMP get_ForeColor(OLE_COLOR* Result) override {
    return answer(Result, &QELText::get_ForeColor);
  }
  STDMETHODIMP put_ForeColor(OLE_COLOR Value) override {
    return call(&QELText::put_ForeColor, Value);
  }
  STDMETHODIMP get_Labeled(SHORT* Result) override { return answer(Result, &QELText::get_Labeled); }
  STDMETHODIMP put_Labeled(SHORT Value) override { return call(&QELText::put_Labeled, Value); }
  STDMETHODIMP get_ShowHiddenText(VARIANT_BOOL* Result) override {
    return answer(Result, &QELText::get_ShowHiddenText);
  }
  STDMETHODIMP put_ShowHiddenText(VARIANT_BOOL Value) override {
    return call(&QELText::put_ShowHiddenText, Value);
  }
  STDMETHODIMP fmtTextWidth(BSTR Text, FLOAT* Result) override {
    return answer(Result, &QELText::fmtTextWidth, Text);
  }
  STDMETHODIMP TextHeight(BSTR Text, FLOAT* Result) override {
    return answer(Result, &QELText::TextHeight, Text);
  }
  STDMETHODIMP LineCount(BSTR Text, FLOAT Width, FLOAT Indent, SHORT* Result) override {
    return answer(Result, &QELText::LineCount, Text, Width, Indent);
  }
  STDMETHODIMP GetLine(BSTR Text, FLOAT Width, FLOAT Indent, SHORT LineNumber,
                       BSTR* Result) override {
    return answer(Result, &QELText::GetLine, Text, Width, Indent, LineNumber);
  }
  STDMETHODIMP WriteParagraph(BSTR Text, FLOAT X, FLOAT Y, FLOAT Width, FLOAT Indent,
                              FLOAT* Result) override {
    return answer(Result, &QELText::WriteParagraph, Text, X, Y, Width, Indent);
  }
  STDMETHODIMP get_LinesPrinted(SHORT* Result) override {
    return answer(Result, &QELText::get_LinesPrinted);
  }
  STDMETHODIMP RomanToArabic(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::RomanToArabic, Text);
  }
  STDMETHODIMP get_IgnoredWordList(BSTR* Result) override {
    return answer(Result, &QELText::get_IgnoredWordList);
  }
  STDMETHODIMP put_IgnoredWordList(BSTR Value) override {
    return call(&QELText::put_IgnoredWordList, Value);
  }
  STDMETHODIMP LowerCase(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &QELText::LowerCase, Text, Start, Length);
  }
  STDMETHODIMP UpperCase(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &QELText::UpperCase, Text, Start, Length);
  }
  STDMETHODIMP ChangeCase(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &QELText::ChangeCase, Text, Start, Length);
  }
  STDMETHODIMP TitleCase(BSTR Text, SHORT Start, SHORT Length, VARIANT_BOOL NotIgnoredWords,
                         BSTR* Result) override {
    return answer(Result, &QELText::TitleCase, Text, Start, Length, NotIgnoredWords);
  }
  STDMETHODIMP InitialCap(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &QELText::InitialCap, Text, Start, Length);
  }
  STDMETHODIMP FirstLetterToLowercase(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &QELText::FirstLetterToLowercase, Text, Start, Length);
  }
  STDMETHODIMP FirstLetterToUppercase(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &QELText::FirstLetterToUppercase, Text, Start, Length);
  }
  STDMETHODIMP AutoTitleCase(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::AutoTitleCase, Text);
  }
  STDMETHODIMP AutoTitleCaseRTF(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::AutoTitleCaseRTF, Text);
  }
  STDMETHODIMP AutoInitialCap(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::AutoInitialCap, Text);
  }
  STDMETHODIMP AutoInitialCapRTF(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::AutoInitialCapRTF, Text);
  }
  STDMETHODIMP UpperCaseRTF(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::UpperCaseRTF, Text);
  }
  STDMETHODIMP LowerCaseRTF(BSTR Text, BSTR* Result) override {
    return answer(Result, &QELText::LowerCaseRTF, Text);
  }
  STDMETHODIMP get_Lossless(VARIANT_BOOL* Result) override {
    return answer(Result, &QELText::get_Lossless);
  }
  STDMETHODIMP put_Lossless(VARIANT_BOOL Value) override {
    return call(&QELText::put_Lossless, Value);
  }
};

}  // namespace qel::com
