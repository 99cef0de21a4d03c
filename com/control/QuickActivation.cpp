#include "com/control/QuickActivation.h"

#include "com/automation/Errors.h"
#include "com/control/Embedding.h"

namespace qel::com {
namespace {

/// The number of the connection; 0 where there is none.
DWORD connected(Connections& connections, IUnknown* sink) {
  DWORD cookie = 0;
  if (sink != nullptr) connections.Advise(sink, &cookie);
  return cookie;
}

}  // namespace

HRESULT QuickActivation::QuickActivate(QACONTAINER* host, QACONTROL* answer) {
  if (host == nullptr || answer == nullptr) return E_POINTER;
  if (host->cbSize < sizeof *host || answer->cbSize < sizeof *answer) return E_INVALIDARG;
  return guarded(IID_IQuickActivate, [&] {
    control_.put_client_site(host->pClientSite);
    if (host->pAdviseSink != nullptr) view_.SetAdvise(DVASPECT_CONTENT, 0, host->pAdviseSink);
    const DWORD size = answer->cbSize;
    *answer = {};
    answer->cbSize = size;
    answer->dwMiscStatus = Embedding::behaviour;
    view_.GetViewStatus(&answer->dwViewStatus);
    answer->dwEventCookie = connected(connections_.events(), host->pUnkEventSink);
    answer->dwPropNotifyCookie = connected(connections_.notices(), host->pPropertyNotifySink);
  });
}

HRESULT QuickActivation::SetContentExtent(LPSIZEL size) {
  if (size == nullptr) return E_POINTER;
  return guarded(IID_IQuickActivate, [&] { control_.put_natural_extent(*size); });
}

HRESULT QuickActivation::GetContentExtent(LPSIZEL size) {
  if (size == nullptr) return E_POINTER;
  *size = control_.natural_extent();
  return S_OK;
}

}  // namespace qel::com
