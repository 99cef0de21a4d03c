#pragma once

#include "com/automation/Adapter.h"
#include "qel/text/TextCase.h"

namespace qel::com {

/// Represents a case converter to a host.
class TextCaseObject final : public Adapter<TextCase, ITextCase> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP get_TextCase(::TextCaseKind* Result) override {
    return answer(Result, &TextCase::get_TextCase);
  }
  STDMETHODIMP put_TextCase(::TextCaseKind Value) override {
    return call([&] { object().put_TextCase(static_cast<TextCaseKind>(Value)); });
  }
  STDMETHODIMP get_IgnoredWordList(BSTR* Result) override {
    return answer(Result, &TextCase::get_IgnoredWordList);
  }
  STDMETHODIMP put_IgnoredWordList(BSTR Value) override {
    return call(&TextCase::put_IgnoredWordList, Value);
  }
  STDMETHODIMP LowerCase(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &TextCase::LowerCase, Text, Start, Length, Way::stated);
  }
  STDMETHODIMP UpperCase(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &TextCase::UpperCase, Text, Start, Length, Way::stated);
  }
  STDMETHODIMP ChangeCase(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &TextCase::ChangeCase, Text, Start, Length, Way::stated);
  }
  STDMETHODIMP TitleCase(BSTR Text, SHORT Start, SHORT Length, VARIANT_BOOL NotIgnoredWords,
                         BSTR* Result) override {
    return answer(Result, &TextCase::TitleCase, Text, Start, Length, NotIgnoredWords, Way::stated);
  }
  STDMETHODIMP InitialCap(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &TextCase::InitialCap, Text, Start, Length, Way::stated);
  }
  STDMETHODIMP FirstToLower(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &TextCase::FirstToLower, Text, Start, Length, Way::stated);
  }
  STDMETHODIMP FirstToUpper(BSTR Text, SHORT Start, SHORT Length, BSTR* Result) override {
    return answer(Result, &TextCase::FirstToUpper, Text, Start, Length, Way::stated);
  }
  STDMETHODIMP AutoTitleCase(BSTR Text, BSTR* Result) override {
    return answer(Result, &TextCase::AutoTitleCase, Text, Way::stated);
  }
  STDMETHODIMP AutoTitleCaseRTF(BSTR Text, BSTR* Result) override {
    return answer(Result, &TextCase::AutoTitleCaseRTF, Text);
  }
  STDMETHODIMP AutoInitialCap(BSTR Text, BSTR* Result) override {
    return answer(Result, &TextCase::AutoInitialCap, Text, Way::stated);
  }
  STDMETHODIMP AutoInitialCapRTF(BSTR Text, BSTR* Result) override {
    return answer(Result, &TextCase::AutoInitialCapRTF, Text);
  }
  STDMETHODIMP UpperCaseRTF(BSTR Text, BSTR* Result) override {
    return answer(Result, &TextCase::UpperCaseRTF, Text);
  }
  STDMETHODIMP LowerCaseRTF(BSTR Text, BSTR* Result) override {
    return answer(Result, &TextCase::LowerCaseRTF, Text);
  }
  STDMETHODIMP IsAlphabet(BSTR Text, VARIANT_BOOL* Result) override {
    return answer(Result, &TextCase::IsAlphabet, Text);
  }
  STDMETHODIMP IsQuote(BSTR Text, VARIANT_BOOL* Result) override {
    return answer(Result, &TextCase::IsQuote, Text);
  }
  STDMETHODIMP IsWhitespace(BSTR Text, VARIANT_BOOL* Result) override {
    return answer(Result, &TextCase::IsWhitespace, Text);
  }
  STDMETHODIMP IsLeftQuote(BSTR Text, VARIANT_BOOL* Result) override {
    return answer(Result, &TextCase::IsLeftQuote, Text);
  }
};

}  // namespace qel::com
