#pragma once

#include "com/automation/Adapter.h"
#include "qel/model/iStyle.h"

namespace qel::com {

/// Represents a style record to a host.
class iStyleObject final : public Adapter<iStyle, IiStyle> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP get_Name(BSTR* Result) override { return answer(Result, &iStyle::Name); }
  STDMETHODIMP put_Name(BSTR Value) override { return set(&iStyle::Name, Value); }
  STDMETHODIMP get_Size(FLOAT* Result) override { return answer(Result, &iStyle::Size); }
  STDMETHODIMP put_Size(FLOAT Value) override { return set(&iStyle::Size, Value); }
  STDMETHODIMP get_Bold(VARIANT_BOOL* Result) override { return answer(Result, &iStyle::Bold); }
  STDMETHODIMP put_Bold(VARIANT_BOOL Value) override { return set(&iStyle::Bold, Value); }
  STDMETHODIMP get_Italic(VARIANT_BOOL* Result) override { return answer(Result, &iStyle::Italic); }
  STDMETHODIMP put_Italic(VARIANT_BOOL Value) override { return set(&iStyle::Italic, Value); }
  STDMETHODIMP get_Underline(VARIANT_BOOL* Result) override {
    return answer(Result, &iStyle::Underline);
  }
  STDMETHODIMP put_Underline(VARIANT_BOOL Value) override { return set(&iStyle::Underline, Value); }
  STDMETHODIMP get_SmallCaps(VARIANT_BOOL* Result) override {
    return answer(Result, &iStyle::SmallCaps);
  }
  STDMETHODIMP put_SmallCaps(VARIANT_BOOL Value) override { return set(&iStyle::SmallCaps, Value); }
  STDMETHODIMP get_StrikeThru(VARIANT_BOOL* Result) override {
    return answer(Result, &iStyle::StrikeThru);
  }
  STDMETHODIMP put_StrikeThru(VARIANT_BOOL Value) override {
    return set(&iStyle::StrikeThru, Value);
  }
  STDMETHODIMP get_Superscript(VARIANT_BOOL* Result) override {
    return answer(Result, &iStyle::Superscript);
  }
  STDMETHODIMP put_Superscript(VARIANT_BOOL Value) override {
    return set(&iStyle::Superscript, Value);
  }
  STDMETHODIMP get_Subscript(VARIANT_BOOL* Result) override {
    return answer(Result, &iStyle::Subscript);
  }
  STDMETHODIMP put_Subscript(VARIANT_BOOL Value) override { return set(&iStyle::Subscript, Value); }
  STDMETHODIMP get_FontID(SHORT* Result) override { return answer(Result, &iStyle::FontID); }
  STDMETHODIMP put_FontID(SHORT Value) override { return set(&iStyle::FontID, Value); }
  STDMETHODIMP get_ColorID(SHORT* Result) override { return answer(Result, &iStyle::ColorID); }
  STDMETHODIMP put_ColorID(SHORT Value) override { return set(&iStyle::ColorID, Value); }
  STDMETHODIMP get_TitleCase(VARIANT_BOOL* Result) override {
    return answer(Result, &iStyle::TitleCase);
  }
  STDMETHODIMP put_TitleCase(VARIANT_BOOL Value) override { return set(&iStyle::TitleCase, Value); }
  STDMETHODIMP get_Unicode(VARIANT_BOOL* Result) override {
    return answer(Result, &iStyle::Unicode);
  }
  STDMETHODIMP put_Unicode(VARIANT_BOOL Value) override { return set(&iStyle::Unicode, Value); }
  STDMETHODIMP get_Ignored(VARIANT_BOOL* Result) override {
    return answer(Result, &iStyle::get_Ignored);
  }
  STDMETHODIMP put_Ignored(VARIANT_BOOL Value) override {
    return call(&iStyle::put_Ignored, Value);
  }
  STDMETHODIMP get_Hidden(VARIANT_BOOL* Result) override {
    return answer(Result, &iStyle::get_Hidden);
  }
  STDMETHODIMP put_Hidden(VARIANT_BOOL Value) override { return call(&iStyle::put_Hidden, Value); }
  STDMETHODIMP get_Note(VARIANT_BOOL* Result) override { return answer(Result, &iStyle::get_Note); }
  STDMETHODIMP put_Note(VARIANT_BOOL Value) override { return call(&iStyle::put_Note, Value); }
  STDMETHODIMP OnCodes(IiStyle* pStyle, BSTR* Result) override {
    return answer(Result, &iStyle::OnCodes, pStyle);
  }
  STDMETHODIMP OffCodes(IiStyle* pStyle, BSTR* Result) override {
    return answer(Result, &iStyle::OffCodes, pStyle);
  }
  STDMETHODIMP DifferentOnCodes(IiStyle* pStyle, IiStyle* LastStyle, BSTR* Result) override {
    return answer(Result, &iStyle::DifferentOnCodes, pStyle, LastStyle);
  }
  STDMETHODIMP DifferentOffCodes(IiStyle* pStyle, IiStyle* NextStyle, BSTR* Result) override {
    return answer(Result, &iStyle::DifferentOffCodes, pStyle, NextStyle);
  }
  STDMETHODIMP get_All(BSTR* Result) override { return answer(Result, &iStyle::get_All); }
  STDMETHODIMP put_All(BSTR Value) override { return call(&iStyle::put_All, Value); }
  STDMETHODIMP Initialize() override { return call(&iStyle::Initialize); }
  STDMETHODIMP v6OnCodes(IiStyle* pStyle, BSTR* Result) override {
    return answer(Result, &iStyle::v6OnCodes, pStyle);
  }
  STDMETHODIMP v6OffCodes(IiStyle* pStyle, BSTR* Result) override {
    return answer(Result, &iStyle::v6OffCodes, pStyle);
  }
  STDMETHODIMP v6DifferentOnCodes(IiStyle* pStyle, IiStyle* LastStyle, BSTR* Result) override {
    return answer(Result, &iStyle::v6DifferentOnCodes, pStyle, LastStyle);
  }
  STDMETHODIMP v6DifferentOffCodes(IiStyle* pStyle, IiStyle* NextStyle, BSTR* Result) override {
    return answer(Result, &iStyle::v6DifferentOffCodes, pStyle, NextStyle);
  }
};

}  // namespace qel::com
