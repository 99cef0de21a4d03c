#pragma once

#include <ocidl.h>

#include <map>

#include "com/control/Part.h"
#include "windows/Pointer.h"

namespace qel::com {

/// The sinks that are connected to an object through one interface. It lives as long as the object.
class Connections final : public Part<IConnectionPoint> {
 public:
  /// `id` is the interface of the sinks; a sink without it may be called by name.
  Connections(IUnknown& whole, IConnectionPointContainer& container, const IID& id)
      : Part(whole), container_(container), id_(id) {}

  STDMETHODIMP QueryInterface(REFIID id, void** result) override;

  STDMETHODIMP GetConnectionInterface(IID* id) override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
  STDMETHODIMP Unadvise(DWORD cookie) override;
  STDMETHODIMP EnumConnections(IEnumConnections** result) override;

  const IID& id() const { return id_; }
  bool is_empty() const { return sinks_.empty(); }
  /// Calls the sinks in the order in which they were connected: those that are connected now and
  /// still are when their turn comes.
  template <class Act>
  void each(Act act) const {
    const auto connected = sinks_;
    for (const auto& [cookie, sink] : connected) {
      if (sinks_.contains(cookie)) act(*sink.get());
    }
  }

 private:
  IConnectionPointContainer& container_;
  const IID& id_;
  DWORD last_cookie_ = 0;
  std::map<DWORD, Pointer<IUnknown>> sinks_;
};

}  // namespace qel::com
