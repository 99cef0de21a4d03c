#pragma once

#include "com/automation/Adapter.h"
#include "com/automation/HostCanvas.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::com {

/// Represents a table of fonts to a host.
class QELIndexFontsObject final : public Adapter<QELIndexFonts, IQELIndexFonts> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP FontIndexGivenFontName(BSTR Name, SHORT* Result) override {
    return answer(Result, &QELIndexFonts::FontIndexGivenFontName, Name);
  }
  /// Without a surface, fonts are tried out on that of the thread's control.
  STDMETHODIMP FontTable(IDispatch* Surface, BSTR* Result) override {
    return answer(Result, [&] { return object().FontTable(surface_on(Surface).get()); });
  }
  STDMETHODIMP get_All(BSTR* Result) override { return answer(Result, &QELIndexFonts::get_All); }
  STDMETHODIMP put_All(BSTR Value) override { return call(&QELIndexFonts::put_All, Value); }
  STDMETHODIMP CopyFrom(IQELIndexFonts* Source) override {
    return call(&QELIndexFonts::CopyFrom, Source);
  }
  STDMETHODIMP get_Font(SHORT Index, BSTR* Result) override {
    return answer(Result, &QELIndexFonts::get_Font, Index);
  }
  STDMETHODIMP put_Font(SHORT Index, BSTR Value) override {
    return call(&QELIndexFonts::put_Font, Index, Value);
  }
  STDMETHODIMP get_DefaultFont(BSTR* Result) override {
    return answer(Result, &QELIndexFonts::get_DefaultFont);
  }
  STDMETHODIMP put_DefaultFont(BSTR Value) override {
    return call(&QELIndexFonts::put_DefaultFont, Value);
  }
  STDMETHODIMP get_FontSize(FLOAT* Result) override {
    return answer(Result, &QELIndexFonts::get_FontSize);
  }
  STDMETHODIMP put_FontSize(FLOAT Value) override {
    return call(&QELIndexFonts::put_FontSize, Value);
  }
};

}  // namespace qel::com
