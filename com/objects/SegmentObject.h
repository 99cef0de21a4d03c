#pragma once

#include "com/automation/Adapter.h"
#include "qel/model/Segment.h"

namespace qel::com {

/// Represents a run of text to a host.
class SegmentObject final : public Adapter<Segment, ISegment> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP get_Text(BSTR* Result) override { return answer(Result, &Segment::get_Text); }
  STDMETHODIMP put_Text(BSTR text) override { return call(&Segment::put_Text, text); }
  STDMETHODIMP get_Style(IiStyle** Result) override {
    return answer(Result,
                  [this] { return std::shared_ptr<iStyle>(behind(), &object().get_Style()); });
  }
};

}  // namespace qel::com
