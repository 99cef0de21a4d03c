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

HRESULT View::GetRect(DWORD aspect, LPRECTL place) {
  if (place == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT && aspect != DVASPECT_OPAQUE) return DV_E_DVASPECT;
  const SIZEL size = control_.natural_extent();
  *place = {0, 0, size.cx, size.cy};
  return S_OK;
}

HRESULT View::GetViewStatus(DWORD* status) {
  if (status == nullptr) return E_POINTER;
  *status = VIEWSTATUS_OPAQUE;
  return S_OK;
}

HRESULT View::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG tolerance, DWORD* hit) {
  const RECT area = {point.x, point.y, point.x + 1, point.y + 1};
  return QueryHitRect(aspect, bounds, &area, tolerance, hit);
}

HRESULT View::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT area, LONG /*tolerance*/,
                           DWORD* hit) {
  if (bounds == nullptr || area == nullptr || hit == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  RECT common = {};
  *hit = IntersectRect(&common, bounds, area) != FALSE ? HITRESULT_HIT : HITRESULT_OUTSIDE;
  return S_OK;
}

/// The control has no size that it would rather have: it keeps the host's.
HRESULT View::GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, HDC /*target*/,
                               DVEXTENTINFO* /*info*/, LPSIZEL size) {
  return GetExtent(aspect, index, device, size);
}

}  // namespace qel::com
