#pragma once

#include <ocidl.h>
#include <ole2.h>

#include "com/control/HostedControl.h"
#include "com/control/Part.h"

namespace qel::com {

/// Draws the control wherever the host wants it: on paper, or while it is not active. All of its
/// rectangle is painted and can be hit.
class View final : public Part<IViewObjectEx> {
 public:
  View(IUnknown& whole, HostedControl& control) : Part(whole), control_(control) {}

  STDMETHODIMP Draw(DWORD aspect, LONG index, void* hints, DVTARGETDEVICE* device, HDC target,
                    HDC context, LPCRECTL bounds, LPCRECTL window_bounds,
                    BOOL(STDMETHODCALLTYPE* go_on)(ULONG_PTR), ULONG_PTR token) override;
  STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* hints, DVTARGETDEVICE* device,
                           HDC target, LOGPALETTE** colors) override;
  STDMETHODIMP Freeze(DWORD aspect, LONG index, void* hints, DWORD* freeze) override;
  STDMETHODIMP Unfreeze(DWORD freeze) override;
  STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
  STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
  STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL size) override;
  STDMETHODIMP GetRect(DWORD aspect, LPRECTL place) override;
  STDMETHODIMP GetViewStatus(DWORD* status) override;
  STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG tolerance,
                             DWORD* hit) override;
  STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT area, LONG tolerance,
                            DWORD* hit) override;
  STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, HDC target,
                                DVEXTENTINFO* info, LPSIZEL size) override;

 private:
  HostedControl& control_;
};

}  // namespace qel::com
