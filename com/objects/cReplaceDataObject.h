#pragma once

#include "com/automation/Adapter.h"
#include "qel/model/cReplaceData.h"

namespace qel::com {

/// Represents replacement data to a host.
class cReplaceDataObject final : public Adapter<cReplaceData, IcReplaceData> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP get_DontChangeStyle(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::DontChangeStyle);
  }
  STDMETHODIMP put_DontChangeStyle(VARIANT_BOOL Value) override {
    return set(&cReplaceData::DontChangeStyle, Value);
  }
  STDMETHODIMP get_DontChangeFont(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::DontChangeFont);
  }
  STDMETHODIMP put_DontChangeFont(VARIANT_BOOL Value) override {
    return set(&cReplaceData::DontChangeFont, Value);
  }
  STDMETHODIMP get_DontChangeColor(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::DontChangeColor);
  }
  STDMETHODIMP put_DontChangeColor(VARIANT_BOOL Value) override {
    return set(&cReplaceData::DontChangeColor, Value);
  }
  STDMETHODIMP get_Bold(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::Bold);
  }
  STDMETHODIMP put_Bold(VARIANT_BOOL Value) override { return set(&cReplaceData::Bold, Value); }
  STDMETHODIMP get_Italic(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::Italic);
  }
  STDMETHODIMP put_Italic(VARIANT_BOOL Value) override { return set(&cReplaceData::Italic, Value); }
  STDMETHODIMP get_Underline(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::Underline);
  }
  STDMETHODIMP put_Underline(VARIANT_BOOL Value) override {
    return set(&cReplaceData::Underline, Value);
  }
  STDMETHODIMP get_StrikeOut(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::StrikeOut);
  }
  STDMETHODIMP put_StrikeOut(VARIANT_BOOL Value) override {
    return set(&cReplaceData::StrikeOut, Value);
  }
  STDMETHODIMP get_Superscript(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::Superscript);
  }
  STDMETHODIMP put_Superscript(VARIANT_BOOL Value) override {
    return set(&cReplaceData::Superscript, Value);
  }
  STDMETHODIMP get_Subscript(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::Subscript);
  }
  STDMETHODIMP put_Subscript(VARIANT_BOOL Value) override {
    return set(&cReplaceData::Subscript, Value);
  }
  STDMETHODIMP get_FontID(SHORT* Result) override { return answer(Result, &cReplaceData::FontID); }
  STDMETHODIMP put_FontID(SHORT Value) override { return set(&cReplaceData::FontID, Value); }
  STDMETHODIMP get_ColorID(SHORT* Result) override {
    return answer(Result, &cReplaceData::ColorID);
  }
  STDMETHODIMP put_ColorID(SHORT Value) override { return set(&cReplaceData::ColorID, Value); }
  STDMETHODIMP get_All(BSTR* Result) override { return answer(Result, &cReplaceData::get_All); }
  STDMETHODIMP put_All(BSTR Value) override { return call(&cReplaceData::put_All, Value); }
  STDMETHODIMP Initialize() override { return call(&cReplaceData::Initialize); }
  STDMETHODIMP get_Ignored(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::get_Ignored);
  }
  STDMETHODIMP put_Ignored(VARIANT_BOOL Value) override {
    return call(&cReplaceData::put_Ignored, Value);
  }
  STDMETHODIMP get_Hidden(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::get_Hidden);
  }
  STDMETHODIMP put_Hidden(VARIANT_BOOL Value) override {
    return call(&cReplaceData::put_Hidden, Value);
  }
  STDMETHODIMP get_Note(VARIANT_BOOL* Result) override {
    return answer(Result, &cReplaceData::get_Note);
  }
  STDMETHODIMP put_Note(VARIANT_BOOL Value) override {
    return call(&cReplaceData::put_Note, Value);
  }
};

}  // namespace qel::com
