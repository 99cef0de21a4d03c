#pragma once

#include "com/automation/Adapter.h"
#include "com/automation/HostCanvas.h"
#include "qel/text/TextAndFormatting.h"

namespace qel::com {

/// Represents a layout engine to a host.
class TextAndFormattingObject final : public Adapter<TextAndFormatting, ITextAndFormatting> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP get_Canvas(IDispatch** Result) override {
    if (Result == nullptr) return E_POINTER;
    *Result = host_object(object().get_Canvas()).detach();
    return S_OK;
  }
  STDMETHODIMP putref_Canvas(IDispatch* Value) override {
    return call([&] {
      if (Value != nullptr) this->require_trust();
      object().put_Canvas(canvas_on(Value));
    });
  }

  STDMETHODIMP SetFonts(IQELIndexFonts* Fonts) override {
    return call(&TextAndFormatting::SetFonts, Fonts);
  }
  STDMETHODIMP SetColors(IQELIndexColors* Colors) override {
    return call(&TextAndFormatting::SetColors, Colors);
  }
  STDMETHODIMP SetFontAndColors(IQELIndexFonts* Fonts, IQELIndexColors* Colors) override {
    return call(&TextAndFormatting::SetFontAndColors, Fonts, Colors);
  }
  STDMETHODIMP get_Fonts(IQELIndexFonts** Result) override {
    return answer(Result, &TextAndFormatting::get_Fonts);
  }
  STDMETHODIMP get_Colors(IQELIndexColors** Result) override {
    return answer(Result, &TextAndFormatting::get_Colors);
  }
  STDMETHODIMP get_DefaultFont(BSTR* Result) override {
    return answer(Result, &TextAndFormatting::get_DefaultFont);
  }
  STDMETHODIMP put_DefaultFont(BSTR Value) override {
    return call(&TextAndFormatting::put_DefaultFont, Value);
  }
  STDMETHODIMP get_DefaultFontSize(FLOAT* Result) override {
    return answer(Result, &TextAndFormatting::get_DefaultFontSize);
  }
  STDMETHODIMP put_DefaultFontSize(FLOAT Value) override {
    return call(&TextAndFormatting::put_DefaultFontSize, Value);
  }
  STDMETHODIMP get_ForeColor(OLE_COLOR* Result) override {
    return answer(Result, &TextAndFormatting::get_ForeColor);
  }
  STDMETHODIMP put_ForeColor(OLE_COLOR Value) override {
    return call(&TextAndFormatting::put_ForeColor, Value);
  }
  STDMETHODIMP get_IgnoredColor(OLE_COLOR* Result) override {
    return answer(Result, &TextAndFormatting::get_IgnoredColor);
  }
  STDMETHODIMP put_IgnoredColor(OLE_COLOR Value) override {
    return call(&TextAndFormatting::put_IgnoredColor, Value);
  }
  STDMETHODIMP get_HiddenColor(OLE_COLOR* Result) override {
    return answer(Result, &TextAndFormatting::get_HiddenColor);
  }
  STDMETHODIMP put_HiddenColor(OLE_COLOR Value) override {
    return call(&TextAndFormatting::put_HiddenColor, Value);
  }
  STDMETHODIMP get_NoteColor(OLE_COLOR* Result) override {
    return answer(Result, &TextAndFormatting::get_NoteColor);
  }
  STDMETHODIMP put_NoteColor(OLE_COLOR Value) override {
    return call(&TextAndFormatting::put_NoteColor, Value);
  }
  STDMETHODIMP get_Align(SHORT* Result) override {
    return answer(Result, &TextAndFormatting::get_Align);
  }
  STDMETHODIMP put_Align(SHORT Value) override {
    return call(&TextAndFormatting::put_Align, Value);
  }
  STDMETHODIMP get_WordWrap(VARIANT_BOOL* Result) override {
    return answer(Result, &TextAndFormatting::get_WordWrap);
  }
  STDMETHODIMP put_WordWrap(VARIANT_BOOL Value) override {
    return call(&TextAndFormatting::put_WordWrap, Value);
  }
  STDMETHODIMP get_RevealCodes(VARIANT_BOOL* Result) override {
    return answer(Result, &TextAndFormatting::get_RevealCodes);
  }
  STDMETHODIMP put_RevealCodes(VARIANT_BOOL Value) override {
    return call(&TextAndFormatting::put_RevealCodes, Value);
  }
  STDMETHODIMP get_ShowHiddenText(VARIANT_BOOL* Result) override {
    return answer(Result, &TextAndFormatting::get_ShowHiddenText);
  }
  STDMETHODIMP put_ShowHiddenText(VARIANT_BOOL Value) override {
    return call(&TextAndFormatting::put_ShowHiddenText, Value);
  }
  STDMETHODIMP get_IgnoreColors(VARIANT_BOOL* Result) override {
    return answer(Result, &TextAndFormatting::get_IgnoreColors);
  }
  STDMETHODIMP put_IgnoreColors(VARIANT_BOOL Value) override {
    return call(&TextAndFormatting::put_IgnoreColors, Value);
  }
  STDMETHODIMP get_LabelID(SHORT* Result) override {
    return answer(Result, &TextAndFormatting::get_LabelID);
  }
  STDMETHODIMP put_LabelID(SHORT Value) override {
    return call(&TextAndFormatting::put_LabelID, Value);
  }
  STDMETHODIMP fmtTextWidth(BSTR Text, FLOAT* Result) override {
    return answer(Result, &TextAndFormatting::fmtTextWidth, Text);
  }
  STDMETHODIMP TextHeight(BSTR Text, FLOAT* Result) override {
    return answer(Result, &TextAndFormatting::TextHeight, Text);
  }
  STDMETHODIMP LineCount(BSTR Text, FLOAT Width, FLOAT Indent, SHORT* Result) override {
    return answer(Result, &TextAndFormatting::LineCount, Text, Width, Indent);
  }
  STDMETHODIMP GetLine(BSTR Text, FLOAT Width, FLOAT Indent, SHORT LineNumber,
                       BSTR* Result) override {
    return answer(Result, &TextAndFormatting::GetLine, Text, Width, Indent, LineNumber);
  }
  STDMETHODIMP WriteParagraph(BSTR Text, FLOAT X, FLOAT Y, FLOAT Width, FLOAT Indent,
                              FLOAT* Result) override {
    return answer(Result, &TextAndFormatting::WriteParagraph, Text, X, Y, Width, Indent);
  }
  STDMETHODIMP get_LinesPrinted(SHORT* Result) override {
    return answer(Result, &TextAndFormatting::get_LinesPrinted);
  }
  STDMETHODIMP fmtLen(BSTR Text, SHORT* Result) override {
    return answer(Result, &TextAndFormatting::fmtLen, Text);
  }
  STDMETHODIMP fmtInStr(BSTR Text, BSTR SearchText, SHORT* Result) override {
    return answer(Result, &TextAndFormatting::fmtInStr, Text, SearchText);
  }
  STDMETHODIMP fmtRevInStr(BSTR Text, BSTR SearchText, SHORT* Result) override {
    return answer(Result, &TextAndFormatting::fmtRevInStr, Text, SearchText);
  }
  STDMETHODIMP fmtLeft(BSTR Text, SHORT Count, BSTR* Result) override {
    return answer(Result, &TextAndFormatting::fmtLeft, Text, Count);
  }
  STDMETHODIMP fmtRight(BSTR Text, SHORT Count, BSTR* Result) override {
    return answer(Result, &TextAndFormatting::fmtRight, Text, Count);
  }
  STDMETHODIMP fmtMid(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &TextAndFormatting::fmtMid, Text, Start, Length);
  }
  STDMETHODIMP IsSortCode(BSTR Text, VARIANT_BOOL* Result) override {
    return answer(Result, &TextAndFormatting::IsSortCode, Text);
  }
  STDMETHODIMP IsEscapeCode(BSTR Text, VARIANT_BOOL* Result) override {
    return answer(Result, &TextAndFormatting::IsEscapeCode, Text);
  }
  STDMETHODIMP RomanToArabic(BSTR Text, BSTR* Result) override {
    return answer(Result, &TextAndFormatting::RomanToArabic, Text);
  }
  STDMETHODIMP get_Lossless(VARIANT_BOOL* Result) override {
    return answer(Result, &TextAndFormatting::get_Lossless);
  }
  STDMETHODIMP put_Lossless(VARIANT_BOOL Value) override {
    return call(&TextAndFormatting::put_Lossless, Value);
  }
};

}  // namespace qel::com
