#pragma once

#include "com/automation/Adapter.h"
#include "qel/tables/QELIndexColors.h"

namespace qel::com {

/// Represents a table of colours to a host.
class QELIndexColorsObject final : public Adapter<QELIndexColors, IQELIndexColors> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP ColorIndexGivenColor(OLE_COLOR Color, SHORT* Result) override {
    return answer(Result, &QELIndexColors::ColorIndexGivenColor, Color);
  }
  STDMETHODIMP ConvertSystemColor(OLE_COLOR Color, OLE_COLOR* Result) override {
    return answer(Result, &QELIndexColors::ConvertSystemColor, Color);
  }
  STDMETHODIMP get_All(BSTR* Result) override { return answer(Result, &QELIndexColors::get_All); }
  STDMETHODIMP put_All(BSTR Value) override { return call(&QELIndexColors::put_All, Value); }
  STDMETHODIMP get_ColorTable(BSTR* Result) override {
    return answer(Result, &QELIndexColors::get_ColorTable);
  }
  STDMETHODIMP get_Labels(IQELIndexLabels** Result) override {
    return answer(Result, &QELIndexColors::get_Labels);
  }
  STDMETHODIMP get_ActiveLabelIndex(SHORT* Result) override {
    return answer(Result, &QELIndexColors::get_ActiveLabelIndex);
  }
  STDMETHODIMP put_ActiveLabelIndex(SHORT Index) override {
    return call(&QELIndexColors::put_ActiveLabelIndex, Index);
  }
  STDMETHODIMP get_ActiveLabelColor(OLE_COLOR* Result) override {
    return answer(Result, &QELIndexColors::get_ActiveLabelColor);
  }
  STDMETHODIMP CopyFrom(IQELIndexColors* Source) override {
    return call(&QELIndexColors::CopyFrom, Source);
  }
  STDMETHODIMP CopyTo(IQELIndexColors* Target) override {
    return call(&QELIndexColors::CopyTo, Target);
  }
  STDMETHODIMP get_Color(SHORT Index, OLE_COLOR* Result) override {
    return answer(Result, &QELIndexColors::get_Color, Index);
  }
  STDMETHODIMP put_Color(SHORT Index, OLE_COLOR Value) override {
    return call(&QELIndexColors::put_Color, Index, Value);
  }
  STDMETHODIMP get_DefaultColor(OLE_COLOR* Result) override {
    return answer(Result, &QELIndexColors::get_DefaultColor);
  }
  STDMETHODIMP put_DefaultColor(OLE_COLOR Value) override {
    return call(&QELIndexColors::put_DefaultColor, Value);
  }
  STDMETHODIMP get_LabelColor(SHORT Index, OLE_COLOR* Result) override {
    return answer(Result, &QELIndexColors::get_LabelColor, Index);
  }
  STDMETHODIMP put_LabelColor(SHORT Index, OLE_COLOR Value) override {
    return call(&QELIndexColors::put_LabelColor, Index, Value);
  }
  STDMETHODIMP get_LabelName(SHORT Index, BSTR* Result) override {
    return answer(Result, &QELIndexColors::get_LabelName, Index);
  }
  STDMETHODIMP put_LabelName(SHORT Index, BSTR Value) override {
    return call(&QELIndexColors::put_LabelName, Index, Value);
  }
  STDMETHODIMP get_IgnoredColor(OLE_COLOR* Result) override {
    return answer(Result, &QELIndexColors::get_IgnoredColor);
  }
  STDMETHODIMP put_IgnoredColor(OLE_COLOR Value) override {
    return call(&QELIndexColors::put_IgnoredColor, Value);
  }
  STDMETHODIMP get_HiddenColor(OLE_COLOR* Result) override {
    return answer(Result, &QELIndexColors::get_HiddenColor);
  }
  STDMETHODIMP put_HiddenColor(OLE_COLOR Value) override {
    return call(&QELIndexColors::put_HiddenColor, Value);
  }
  STDMETHODIMP get_NoteColor(OLE_COLOR* Result) override {
    return answer(Result, &QELIndexColors::get_NoteColor);
  }
  STDMETHODIMP put_NoteColor(OLE_COLOR Value) override {
    return call(&QELIndexColors::put_NoteColor, Value);
  }
};

}  // namespace qel::com
