#include "com/control/Pages.h"

#include <olectl.h>
#include <qelcom.h>

#include "windows/Pointer.h"

namespace qel::com {

HRESULT Pages::GetPages(CAUUID* pages) {
  if (pages == nullptr) return E_POINTER;
  *pages = {};
  pages->pElems = static_cast<GUID*>(CoTaskMemAlloc(sizeof(GUID)));
  if (pages->pElems == nullptr) return E_OUTOFMEMORY;
  *pages->pElems = __uuidof(::QELTextboxPage);
  pages->cElems = 1;
  return S_OK;
}

HRESULT show_properties(IUnknown& control, IOleClientSite* host, HWND parent) {
  const auto site = Pointer<IOleClientSite>(host).as<IOleControlSite>();
  if (site && site->ShowPropertyFrame() == S_OK) return S_OK;
  IUnknown* object = &control;
  CLSID page = __uuidof(::QELTextboxPage);
  return OleCreatePropertyFrame(parent, 0, 0, L"QELTextbox", 1, &object, 1, &page,
                                LOCALE_USER_DEFAULT, 0, nullptr);
}

}  // namespace qel::com
