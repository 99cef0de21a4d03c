#pragma once

#include <optional>

#include "com/automation/Adapter.h"
#include "com/objects/Conversions.h"
#include "qel/platform/Common.h"
#include "qel/rtf/RTFParser.h"

namespace qel::com {

/// Represents a parser to a host.
class RTFParserObject final : public Adapter<RTFParser, IRTFParser> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP QELToRTF(BSTR Text, IQELIndexFonts* Fonts, IQELIndexColors* Colors,
                        BSTR* Result) override {
    return answer(Result,
                  [&] { return ready().QELToRTF(text_of(Text), given(Fonts), given(Colors)); });
  }
  STDMETHODIMP QELToRTFWithoutTables(BSTR Text, BSTR* Result) override {
    return answer(Result, &RTFParser::QELToRTFWithoutTables, Text);
  }
  STDMETHODIMP IsQELCode(BSTR Code, VARIANT_BOOL* Result) override {
    return answer(Result, &RTFParser::IsQELCode, Code);
  }
  STDMETHODIMP ConvertSystemColor(OLE_COLOR Color, OLE_COLOR* Result) override {
    return answer(Result, &RTFParser::ConvertSystemColor, Color);
  }
  STDMETHODIMP get_ConvertNLToSpace(VARIANT_BOOL* Result) override {
    return answer(Result, &RTFParser::get_ConvertNLToSpace);
  }
  STDMETHODIMP put_ConvertNLToSpace(VARIANT_BOOL Value) override {
    return call(&RTFParser::put_ConvertNLToSpace, Value);
  }
  STDMETHODIMP get_ConvertTabsToSpace(VARIANT_BOOL* Result) override {
    return answer(Result, &RTFParser::get_ConvertTabsToSpace);
  }
  STDMETHODIMP put_ConvertTabsToSpace(VARIANT_BOOL Value) override {
    return call(&RTFParser::put_ConvertTabsToSpace, Value);
  }
  STDMETHODIMP get_RecognizeCRLF(VARIANT_BOOL* Result) override {
    return answer(Result, &RTFParser::get_RecognizeCRLF);
  }
  STDMETHODIMP put_RecognizeCRLF(VARIANT_BOOL Value) override {
    return call(&RTFParser::put_RecognizeCRLF, Value);
  }
  STDMETHODIMP get_RecognizeTabs(VARIANT_BOOL* Result) override {
    return answer(Result, &RTFParser::get_RecognizeTabs);
  }
  STDMETHODIMP put_RecognizeTabs(VARIANT_BOOL Value) override {
    return call(&RTFParser::put_RecognizeTabs, Value);
  }
  STDMETHODIMP RTFToQEL(BSTR RTF, IQELIndexFonts* Fonts, IQELIndexColors* Colors,
                        BSTR* Result) override {
    return answer(Result,
                  [&] { return ready().RTFToQEL(text_of(RTF), given(Fonts), given(Colors)); });
  }
  STDMETHODIMP SimpleRTF(BSTR RTF, IQELIndexFonts* Fonts, IQELIndexColors* Colors,
                         BSTR* Result) override {
    return answer(Result,
                  [&] { return ready().SimpleRTF(text_of(RTF), given(Fonts), given(Colors)); });
  }
  STDMETHODIMP RTFToText(BSTR RTF, BSTR* Result) override {
    return answer(Result, [&] { return ready().RTFToText(text_of(RTF)); });
  }
  STDMETHODIMP PreprocessRTF(BSTR Text, BSTR* Result) override {
    return answer(Result, &RTFParser::PreprocessRTF, Text);
  }
  STDMETHODIMP get_Lossless(VARIANT_BOOL* Result) override {
    return answer(Result, &RTFParser::get_Lossless);
  }
  STDMETHODIMP put_Lossless(VARIANT_BOOL Value) override {
    return call(&RTFParser::put_Lossless, Value);
  }
  STDMETHODIMP Convert(VARIANT Source, ConversionFormat To, ConversionFormat From, VARIANT Fonts,
                       VARIANT Colors, BSTR* Result) override {
    return answer(Result, [&] {
      return conversions_.text(object(), Source, {To, From, Fonts, Colors});
    });
  }
  STDMETHODIMP ConvertToBytes(VARIANT Source, ConversionFormat To, ConversionFormat From,
                              VARIANT Fonts, VARIANT Colors, VARIANT* Result) override {
    if (Result == nullptr) return E_POINTER;
    VariantInit(Result);
    return guard([&] {
      *Result =
          Value::of_bytes(conversions_.bytes(object(), Source, {To, From, Fonts, Colors})).detach();
    });
  }
  STDMETHODIMP ConvertFile(BSTR Source, BSTR Target, ConversionFormat To, ConversionFormat From,
                           VARIANT Fonts, VARIANT Colors) override {
    return guard([&] {
      require_trust();
      conversions_.file(object(), text_of(Source), text_of(Target), {To, From, Fonts, Colors});
    });
  }
  STDMETHODIMP get_Report(BSTR* Result) override {
    return answer(Result,
                  [&] { return from_message(convert::in_words(conversions_.report().dropped)); });
  }
  STDMETHODIMP Dropped(BSTR Kind, LONG* Result) override {
    return answer(Result, [&] { return conversions_.dropped(text_of(Kind)); });
  }
  STDMETHODIMP get_IsBrokenOff(VARIANT_BOOL* Result) override {
    return answer(Result, [&] { return conversions_.report().is_broken_off; });
  }

 private:
  /// A parser works without a control too: it then makes the surface and the box to convert with
  /// itself.
  RTFParser& ready() {
    if (!Common::measuring_surface() || !Common::conversion_box()) slots_.emplace();
    return object();
  }

  std::optional<Common::ConversionSlots> slots_;
  Conversions conversions_;
};

}  // namespace qel::com
