#pragma once

#include "com/automation/Adapter.h"
#include "com/automation/Enumerator.h"
#include "qel/model/SegmentCollection.h"

namespace qel::com {

/// Represents the runs of a text to a host.
class SegmentCollectionObject final : public Adapter<SegmentCollection, ISegmentCollection> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP Add(BSTR text, IiStyle* style, ISegment** Result) override {
    return answer(Result, &SegmentCollection::Add, text, style);
  }
  STDMETHODIMP get_Count(LONG* Result) override {
    return answer(Result, &SegmentCollection::Count);
  }
  STDMETHODIMP IndexOf(ISegment* FindSegment, LONG* Result) override {
    return answer(Result, &SegmentCollection::IndexOf, FindSegment);
  }
  STDMETHODIMP InsertBefore(BSTR text, IiStyle* style, LONG Index, ISegment** Result) override {
    return answer(Result, &SegmentCollection::InsertBefore, text, style, Index);
  }
  STDMETHODIMP InsertAfter(BSTR text, IiStyle* style, LONG Index, ISegment** Result) override {
    return answer(Result, &SegmentCollection::InsertAfter, text, style, Index);
  }
  STDMETHODIMP Clear() override { return call(&SegmentCollection::Clear); }
  STDMETHODIMP get_Item(LONG Index, ISegment** Result) override {
    return answer(Result, &SegmentCollection::Item, Index);
  }
  STDMETHODIMP Remove(LONG Index) override { return call(&SegmentCollection::Remove, Index); }
  STDMETHODIMP get__NewEnum(IUnknown** Result) override { return new_enumerator(Result, behind()); }
};

}  // namespace qel::com
