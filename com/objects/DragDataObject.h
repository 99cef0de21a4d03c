#pragma once

#include "com/automation/Adapter.h"
#include "qel/platform/DragData.h"

namespace qel::com {

/// Represents dragged data to a host.
class DragDataObject final : public Adapter<platform::DragData, IDragData> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP GetFormat(SHORT Format, VARIANT_BOOL* Result) override {
    return answer(Result, &platform::DragData::has, Format);
  }
  /// Empty where the data has no such format.
  STDMETHODIMP GetData(SHORT Format, BSTR* Result) override {
    return answer(Result, [&] { return object().get(Format).value_or(u""); });
  }
  /// Without a value the data is only promised: it is supplied when somebody asks for it.
  STDMETHODIMP SetData(VARIANT Data, SHORT Format) override {
    if (is_missing(Data)) return call(&platform::DragData::promise, Format);
    return call([&] { object().put(Format, in_type<std::u16string>(Value(Data))); });
  }
  STDMETHODIMP Clear() override { return call(&platform::DragData::clear); }
};

}  // namespace qel::com
