#pragma once

#include "com/automation/Adapter.h"
#include "qel/tables/QELIndexLabels.h"

namespace qel::com {

/// Represents a table of labels to a host.
class QELIndexLabelsObject final : public Adapter<QELIndexLabels, IQELIndexLabels> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP get_All(BSTR* Result) override { return answer(Result, &QELIndexLabels::get_All); }
  STDMETHODIMP put_All(BSTR Value) override { return call(&QELIndexLabels::put_All, Value); }
  STDMETHODIMP get_ActiveLabelIndex(SHORT* Result) override {
    return answer(Result, &QELIndexLabels::get_ActiveLabelIndex);
  }
  STDMETHODIMP put_ActiveLabelIndex(SHORT Index) override {
    return call(&QELIndexLabels::put_ActiveLabelIndex, Index);
  }
  STDMETHODIMP get_ActiveLabelColor(OLE_COLOR* Result) override {
    return answer(Result, &QELIndexLabels::get_ActiveLabelColor);
  }
  STDMETHODIMP CopyFrom(IQELIndexLabels* Source) override {
    return call(&QELIndexLabels::CopyFrom, Source);
  }
  STDMETHODIMP CopyTo(IQELIndexLabels* Target) override {
    return call(&QELIndexLabels::CopyTo, Target);
  }
  STDMETHODIMP get_Color(SHORT Index, OLE_COLOR* Result) override {
    return answer(Result, &QELIndexLabels::get_Color, Index);
  }
  STDMETHODIMP put_Color(SHORT Index, OLE_COLOR Value) override {
    return call(&QELIndexLabels::put_Color, Index, Value);
  }
  STDMETHODIMP get_Name(SHORT Index, BSTR* Result) override {
    return answer(Result, &QELIndexLabels::get_Name, Index);
  }
  STDMETHODIMP put_Name(SHORT Index, BSTR Value) override {
    return call(&QELIndexLabels::put_Name, Index, Value);
  }
};

}  // namespace qel::com
