#include "com/control/Embedding.h"

#include <qelcom.h>

#include <iterator>
#include <vector>

#include "com/automation/Errors.h"
#include "com/automation/ListEnumerator.h"
#include "com/control/CallerString.h"
#include "com/control/Pages.h"
#include "com/control/Transfer.h"

namespace qel::com {

HRESULT Embedding::SetClientSite(IOleClientSite* site) {
  return guarded(IID_IOleObject, [&] { control_.put_client_site(site); });
}

HRESULT Embedding::GetClientSite(IOleClientSite** site) {
  if (site == nullptr) return E_POINTER;
  *site = Pointer<IOleClientSite>(control_.client_site()).detach();
  return S_OK;
}

HRESULT Embedding::SetHostNames(LPCOLESTR /*application*/, LPCOLESTR /*document*/) { return S_OK; }

HRESULT Embedding::Close(DWORD save) {
  const Pointer<IOleClientSite> site(control_.client_site());
  if (save != OLECLOSE_NOSAVE && control_.is_dirty() && site) {
    site->SaveObject();
    if (sinks_) sinks_->SendOnSave();
  }
  control_.deactivate();
  const Pointer<IOleAdviseHolder> sinks = sinks_;
  if (sinks) sinks->SendOnClose();
  return S_OK;
}

HRESULT Embedding::SetMoniker(DWORD /*which*/, IMoniker* /*moniker*/) { return E_NOTIMPL; }

HRESULT Embedding::GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) {
  IOleClientSite* const site = control_.client_site();
  return site == nullptr ? E_NOTIMPL : site->GetMoniker(assign, which, moniker);
}

HRESULT Embedding::InitFromData(IDataObject* /*data*/, BOOL /*creation*/, DWORD /*reserved*/) {
  return E_NOTIMPL;
}

/// What the clipboard keeps must not change with the control.
HRESULT Embedding::GetClipboardData(DWORD /*reserved*/, IDataObject** data) {
  if (data == nullptr) return E_POINTER;
  *data = nullptr;
  return guarded(IID_IOleObject, [&] { *data = data_of(control_.textbox()).detach(); });
}

HRESULT Embedding::DoVerb(LONG verb, LPMSG /*message*/, IOleClientSite* /*site*/, LONG /*index*/,
                          HWND parent, LPCRECT /*place*/) {
  HRESULT result = S_OK;
  if (verb == OLEIVERB_PROPERTIES) {
    // The host may release the last reference meanwhile.
    const Pointer<IUnknown> held(&whole());
    control_.put_modal(true);
    result = show_properties(whole(), control_.client_site(), parent);
    control_.put_modal(false);
    return result;
  }
  const HRESULT done = guarded(IID_IOleObject, [&] { result = act(verb); });
  return FAILED(done) ? done : result;
}

HRESULT Embedding::act(LONG verb) {
  switch (verb) {
    case OLEIVERB_PRIMARY:
    case OLEIVERB_UIACTIVATE:
      return control_.activate_ui();
    case OLEIVERB_SHOW:
    case OLEIVERB_INPLACEACTIVATE:
      return control_.activate();
    case OLEIVERB_HIDE:
      control_.deactivate_ui();
      ShowWindow(control_.handle(), SW_HIDE);
      return S_OK;
    case edit_verb:
      control_.textbox().InvokeLargeEditor();
      return S_OK;
    default:
      return verb < 0 ? E_NOTIMPL : OLEOBJ_S_INVALIDVERB;
  }
}

namespace {

/// The same verbs as registered, for hosts that did not find the component in the registry.
constexpr OLEVERB own_verbs[] = {
    {OLEIVERB_PRIMARY, const_cast<LPOLESTR>(L"&Edit"), 0, OLEVERBATTRIB_ONCONTAINERMENU},
    {Embedding::edit_verb, const_cast<LPOLESTR>(L"&Large Editor..."), 0,
     OLEVERBATTRIB_ONCONTAINERMENU}};

OLEVERB verb_for_caller(const OLEVERB& verb) {
  OLEVERB given = verb;
  given.lpszVerbName = for_caller(verb.lpszVerbName);
  return given;
}

using Verbs = ListEnumerator<IEnumOLEVERB, OLEVERB, OLEVERB, verb_for_caller>;

}  // namespace

HRESULT Embedding::EnumVerbs(IEnumOLEVERB** verbs) {
  if (verbs == nullptr) return E_POINTER;
  *verbs = nullptr;
  return guarded(IID_IOleObject, [&] {
    *verbs = new Verbs(std::vector<OLEVERB>(std::begin(own_verbs), std::end(own_verbs)));
  });
}

HRESULT Embedding::Update() { return S_OK; }

HRESULT Embedding::IsUpToDate() { return S_OK; }

HRESULT Embedding::GetUserClassID(CLSID* id) {
  if (id == nullptr) return E_POINTER;
  *id = __uuidof(::QELTextbox);
  return S_OK;
}

HRESULT Embedding::GetUserType(DWORD form, LPOLESTR* name) {
  if (name == nullptr) return E_POINTER;
  if (SUCCEEDED(OleRegGetUserType(__uuidof(::QELTextbox), form, name))) return S_OK;
  *name = for_caller(L"QELTextbox");
  return *name == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT Embedding::SetExtent(DWORD aspect, SIZEL* size) {
  if (size == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  return guarded(IID_IOleObject, [&] { control_.put_natural_extent(*size); });
}

HRESULT Embedding::GetExtent(DWORD aspect, SIZEL* size) {
  if (size == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  *size = control_.natural_extent();
  return S_OK;
}

HRESULT Embedding::advised() { return sinks_ ? S_OK : CreateOleAdviseHolder(sinks_.put()); }

HRESULT Embedding::Advise(IAdviseSink* sink, DWORD* connection) {
  if (connection == nullptr) return E_POINTER;
  const HRESULT done = advised();
  return FAILED(done) ? done : sinks_->Advise(sink, connection);
}

HRESULT Embedding::Unadvise(DWORD connection) {
  return sinks_ ? sinks_->Unadvise(connection) : OLE_E_NOCONNECTION;
}

HRESULT Embedding::EnumAdvise(IEnumSTATDATA** sinks) {
  if (sinks == nullptr) return E_POINTER;
  const HRESULT done = advised();
  return FAILED(done) ? done : sinks_->EnumAdvise(sinks);
}

HRESULT Embedding::GetMiscStatus(DWORD aspect, DWORD* status) {
  if (status == nullptr) return E_POINTER;
  *status = aspect == DVASPECT_CONTENT ? behaviour : 0;
  return S_OK;
}

HRESULT Embedding::SetColorScheme(LOGPALETTE* /*palette*/) { return E_NOTIMPL; }

}  // namespace qel::com
