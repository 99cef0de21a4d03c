#pragma once

#include "com/automation/Adapter.h"
#include "qel/platform/RichEdit.h"

namespace qel::com {

/// Represents the box of a control to a host. A property that differs within the selection is Null.
class RichTextBoxObject final : public Adapter<platform::RichEdit, IRichTextBox> {
  using Box = platform::RichEdit;

 public:
  using Adapter::Adapter;

  STDMETHODIMP get_Text(BSTR* Result) override { return answer(Result, &Box::get_Text); }
  STDMETHODIMP put_Text(BSTR Value) override { return call(&Box::put_Text, Value); }
  STDMETHODIMP get_TextRTF(BSTR* Result) override { return answer(Result, &Box::get_TextRTF); }
  STDMETHODIMP put_TextRTF(BSTR Value) override { return call(&Box::put_TextRTF, Value); }
  STDMETHODIMP get_SelStart(LONG* Result) override { return answer(Result, &Box::get_SelStart); }
  STDMETHODIMP put_SelStart(LONG Value) override { return call(&Box::put_SelStart, Value); }
  STDMETHODIMP get_SelLength(LONG* Result) override { return answer(Result, &Box::get_SelLength); }
  STDMETHODIMP put_SelLength(LONG Value) override { return call(&Box::put_SelLength, Value); }
  STDMETHODIMP get_SelText(BSTR* Result) override { return answer(Result, &Box::get_SelText); }
  STDMETHODIMP put_SelText(BSTR Value) override { return call(&Box::put_SelText, Value); }
  STDMETHODIMP get_SelRTF(BSTR* Result) override { return answer(Result, &Box::get_SelRTF); }
  STDMETHODIMP put_SelRTF(BSTR Value) override { return call(&Box::put_SelRTF, Value); }
  STDMETHODIMP get_SelBold(VARIANT* Result) override { return answer(Result, &Box::get_SelBold); }
  STDMETHODIMP put_SelBold(VARIANT Value) override { return put(&Box::put_SelBold, Value); }
  STDMETHODIMP get_SelItalic(VARIANT* Result) override {
    return answer(Result, &Box::get_SelItalic);
  }
  STDMETHODIMP put_SelItalic(VARIANT Value) override { return put(&Box::put_SelItalic, Value); }
  STDMETHODIMP get_SelUnderline(VARIANT* Result) override {
    return answer(Result, &Box::get_SelUnderline);
  }
  STDMETHODIMP put_SelUnderline(VARIANT Value) override {
    return put(&Box::put_SelUnderline, Value);
  }
  STDMETHODIMP get_SelStrikeThru(VARIANT* Result) override {
    return answer(Result, &Box::get_SelStrikeThru);
  }
  STDMETHODIMP put_SelStrikeThru(VARIANT Value) override {
    return put(&Box::put_SelStrikeThru, Value);
  }
  STDMETHODIMP get_SelCharOffset(VARIANT* Result) override {
    return answer(Result, &Box::get_SelCharOffset);
  }
  STDMETHODIMP put_SelCharOffset(VARIANT Value) override {
    return put(&Box::put_SelCharOffset, Value);
  }
  STDMETHODIMP get_SelColor(VARIANT* Result) override { return answer(Result, &Box::get_SelColor); }
  STDMETHODIMP put_SelColor(VARIANT Value) override { return put(&Box::put_SelColor, Value); }
  STDMETHODIMP get_SelFontName(VARIANT* Result) override {
    return answer(Result, &Box::get_SelFontName);
  }
  STDMETHODIMP put_SelFontName(VARIANT Value) override { return put(&Box::put_SelFontName, Value); }
  STDMETHODIMP get_SelFontSize(VARIANT* Result) override {
    return answer(Result, &Box::get_SelFontSize);
  }
  STDMETHODIMP put_SelFontSize(VARIANT Value) override { return put(&Box::put_SelFontSize, Value); }

 private:
  template <class Argument>
  using Plain =
      std::conditional_t<std::is_same_v<Argument, std::u16string_view>, std::u16string, Argument>;

  template <class Argument>
  HRESULT put(void (Box::*member)(Argument), const VARIANT& value) const {
    return guard([&] { (object().*member)(in_type<Plain<Argument>>(Value(value))); });
  }
};

}  // namespace qel::com
