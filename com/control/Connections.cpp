#include "com/control/Connections.h"

#include <olectl.h>

#include <vector>

#include "com/automation/Errors.h"
#include "com/automation/ListEnumerator.h"

namespace qel::com {
namespace {

struct Connection {
  DWORD cookie;
  Pointer<IUnknown> sink;
};

CONNECTDATA connection_for_caller(const Connection& connection) {
  return {Pointer<IUnknown>(connection.sink).detach(), connection.cookie};
}

using ConnectionEnumerator =
    ListEnumerator<IEnumConnections, Connection, CONNECTDATA, connection_for_caller>;

}  // namespace

/// A connection point is an object of its own, which shares only its reference count with the
/// whole.
HRESULT Connections::QueryInterface(REFIID id, void** result) {
  if (result == nullptr) return E_POINTER;
  const bool is_known = id == IID_IUnknown || id == IID_IConnectionPoint;
  *result = is_known ? static_cast<IConnectionPoint*>(this) : nullptr;
  if (!is_known) return E_NOINTERFACE;
  AddRef();
  return S_OK;
}

HRESULT Connections::GetConnectionInterface(IID* id) {
  if (id == nullptr) return E_POINTER;
  *id = id_;
  return S_OK;
}

HRESULT Connections::GetConnectionPointContainer(IConnectionPointContainer** container) {
  if (container == nullptr) return E_POINTER;
  *container = Pointer<IConnectionPointContainer>(&container_).detach();
  return S_OK;
}

HRESULT Connections::Advise(IUnknown* sink, DWORD* cookie) {
  if (sink == nullptr || cookie == nullptr) return E_POINTER;
  *cookie = 0;
  Pointer<IUnknown> connected;
  if (FAILED(sink->QueryInterface(id_, reinterpret_cast<void**>(connected.put())))) {
    connected = Pointer<IUnknown>();
    // A sink that is called by number through IDispatch need not know the interface.
    if (id_ != IID_IPropertyNotifySink) {
      sink->QueryInterface(IID_IDispatch, reinterpret_cast<void**>(connected.put()));
    }
  }
  if (!connected) return CONNECT_E_CANNOTCONNECT;
  return guarded(IID_IConnectionPoint, [&] {
    sinks_.emplace(last_cookie_ + 1, connected);
    *cookie = ++last_cookie_;
  });
}

HRESULT Connections::Unadvise(DWORD cookie) {
  const auto place = sinks_.find(cookie);
  if (place == sinks_.end()) return CONNECT_E_NOCONNECTION;
  // Releasing the sink may lead back here.
  const Pointer<IUnknown> sink = std::move(place->second);
  sinks_.erase(place);
  return S_OK;
}

HRESULT Connections::EnumConnections(IEnumConnections** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return guarded(IID_IConnectionPoint, [&] {
    std::vector<Connection> connections;
    for (const auto& [cookie, sink] : sinks_) connections.push_back({cookie, sink});
    *result = new ConnectionEnumerator(std::move(connections));
  });
}

}  // namespace qel::com
