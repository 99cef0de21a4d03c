#include "com/control/View.h"

#include "com/automation/Errors.h"

namespace qel::com {

HRESULT View::Draw(DWORD aspect, LONG /*index*/, void* /*hints*/, DVTARGETDEVICE* /*device*/,
                   HDC /*target*/, HDC context, LPCRECTL bounds, LPCRECTL /*window_bounds*/,
                   BOOL(STDMETHODCALLTYPE* /*go_on*/)(ULONG_PTR), ULONG_PTR /*token*/) {
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (context == nullptr || bounds == nullptr) return E_INVALIDARG;
  const RECT area = {bounds->left, bounds->top, bounds->right, bounds->bottom};
  return guarded(IID_IViewObject, [&] { control_.draw(context, area); });
}

HRESULT View::GetColorSet(DWORD /*aspect*/, LONG /*index*/, void* /*hints*/,
                          DVTARGETDEVICE* /*device*/, HDC /*target*/, LOGPALETTE** colors) {
  if (colors == nullptr) return E_POINTER;
  *colors = nullptr;
  return S_FALSE;  // no palette of its own
}

HRESULT View::Freeze(DWORD /*aspect*/, LONG /*index*/, void* /*hints*/, DWORD* /*freeze*/) {
  return E_NOTIMPL;
}

HRESULT View::Unfreeze(DWORD /*freeze*/) { return E_NOTIMPL; }

HRESULT View::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  control_.put_view_sink(aspects, flags, sink);
  return S_OK;
}

HRESULT View::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
  control_.view_sink(aspects, flags, sink);
  return S_OK;
}

HRESULT View::GetExtent(DWORD aspect, LONG /*index*/, DVTARGETDEVICE* /*device*/, LPSIZEL size) {
  if (size == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  *size = control_.natural_extent();
  return S_OK;
}

}  // namespace qel::com
