#pragma once

#include "com/automation/Adapter.h"
#include "com/automation/Enumerator.h"
#include "qel/model/WordCollection.h"

namespace qel::com {

/// Represents the words of a text to a host.
class WordCollectionObject final : public Adapter<WordCollection, IWordCollection> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP get_Count(LONG* Result) override { return answer(Result, &WordCollection::Count); }
  STDMETHODIMP get_Item(LONG Index, IWord** Result) override {
    return answer(Result, &WordCollection::Item, Index);
  }
  STDMETHODIMP get__NewEnum(IUnknown** Result) override { return new_enumerator(Result, behind()); }
};

}  // namespace qel::com
