#pragma once

#include "com/automation/Adapter.h"
#include "qel/model/Word.h"

namespace qel::com {

/// Represents a word to a host.
class WordObject final : public Adapter<Word, IWord> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP get_Text(BSTR* Result) override { return answer(Result, &Word::get_Text); }
  STDMETHODIMP SegmentCount(LONG* Result) override { return answer(Result, &Word::SegmentCount); }
  STDMETHODIMP Segment(LONG Index, ISegment** Result) override {
    return answer(Result, &Word::Segment, Index);
  }
  STDMETHODIMP SegmentIndex(LONG Index, LONG* Result) override {
    return answer(Result, &Word::SegmentIndex, Index);
  }
};

}  // namespace qel::com
