#pragma once

#include "com/automation/Adapter.h"
#include "qel/text/LinkedList.h"

namespace qel::com {

/// Represents a list to a host.
class LinkedListObject final : public Adapter<LinkedList, ILinkedList> {
 public:
  using Adapter::Adapter;

  STDMETHODIMP AddToTop(VARIANT Value, LONG* Result) override {
    return answer(Result, &LinkedList::AddToTop, Value);
  }
  STDMETHODIMP AddToBottom(VARIANT Value, LONG* Result) override {
    return answer(Result, &LinkedList::AddToBottom, Value);
  }
  STDMETHODIMP AddBeforeCurrent(VARIANT Value, LONG* Result) override {
    return answer(Result, &LinkedList::AddBeforeCurrent, Value);
  }
  STDMETHODIMP AddAfterCurrent(VARIANT Value, LONG* Result) override {
    return answer(Result, &LinkedList::AddAfterCurrent, Value);
  }
  STDMETHODIMP DeleteCurrent(VARIANT* Result) override {
    return answer(Result, &LinkedList::DeleteCurrent);
  }
  STDMETHODIMP RemoveCurrentLink(VARIANT* Result) override {
    return answer(Result, &LinkedList::RemoveCurrentLink);
  }
  STDMETHODIMP Clear() override { return call(&LinkedList::Clear); }
  STDMETHODIMP Compress() override { return call(&LinkedList::Compress); }
  STDMETHODIMP Current(LONG* Result) override { return answer(Result, &LinkedList::Current); }
  STDMETHODIMP First(LONG* Result) override { return answer(Result, &LinkedList::First); }
  STDMETHODIMP Last(LONG* Result) override { return answer(Result, &LinkedList::Last); }
  STDMETHODIMP GetData(LONG ID, VARIANT* Result) override {
    return answer(Result, &LinkedList::GetData, ID);
  }
  STDMETHODIMP SetData(VARIANT Value, LONG* Result) override {
    return answer(Result, &LinkedList::SetData, Value);
  }
  STDMETHODIMP GotoFirst(LONG* Result) override { return answer(Result, &LinkedList::GotoFirst); }
  STDMETHODIMP GotoLast(LONG* Result) override { return answer(Result, &LinkedList::GotoLast); }
  STDMETHODIMP GotoNext(LONG* Result) override { return answer(Result, &LinkedList::GotoNext); }
  STDMETHODIMP GotoPrevious(LONG* Result) override {
    return answer(Result, &LinkedList::GotoPrevious);
  }
  STDMETHODIMP GotoID(LONG ID) override { return call(&LinkedList::GotoID, ID); }
  STDMETHODIMP SetCurrent(LONG ID, LONG* Result) override {
    return answer(Result, &LinkedList::SetCurrent, ID);
  }
  STDMETHODIMP Count(LONG* Result) override { return answer(Result, &LinkedList::Count); }
  STDMETHODIMP ListIndex(LONG* Result) override { return answer(Result, &LinkedList::ListIndex); }
  STDMETHODIMP MoveCurrentToTop(LONG* Result) override {
    return answer(Result, &LinkedList::MoveCurrentToTop);
  }
  STDMETHODIMP MoveCurrentToBottom(LONG* Result) override {
    return answer(Result, &LinkedList::MoveCurrentToBottom);
  }
  STDMETHODIMP MoveCurrentUpOne(LONG* Result) override {
    return answer(Result, &LinkedList::MoveCurrentUpOne);
  }
  STDMETHODIMP MoveCurrentDownOne(LONG* Result) override {
    return answer(Result, &LinkedList::MoveCurrentDownOne);
  }
};

}  // namespace qel::com
