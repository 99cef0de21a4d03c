#pragma once

#include <ocidl.h>

#include "com/control/HostedControl.h"
#include "com/control/Part.h"

namespace qel::com {

/// The control in a window of its host.
class InPlace final : public Part<IOleInPlaceObject> {
 public:
  InPlace(IUnknown& whole, HostedControl& control) : Part(whole), control_(control) {}

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL entered) override;
  STDMETHODIMP InPlaceDeactivate() override;
  STDMETHODIMP UIDeactivate() override;
  STDMETHODIMP SetObjectRects(LPCRECT place, LPCRECT clip) override;
  STDMETHODIMP ReactivateAndUndo() override;

 private:
  HostedControl& control_;
};

/// The control while the user works in it.
class Active final : public Part<IOleInPlaceActiveObject> {
 public:
  Active(IUnknown& whole, HostedControl& control) : Part(whole), control_(control) {}

  STDMETHODIMP GetWindow(HWND* window) override;
  STDMETHODIMP ContextSensitiveHelp(BOOL entered) override;
  STDMETHODIMP TranslateAccelerator(LPMSG message) override;
  STDMETHODIMP OnFrameWindowActivate(BOOL active) override;
  STDMETHODIMP OnDocWindowActivate(BOOL active) override;
  STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL is_frame) override;
  STDMETHODIMP EnableModeless(BOOL enable) override;

 private:
  HostedControl& control_;
};

/// What a host asks only of controls.
class Steering final : public Part<IOleControl> {
 public:
  Steering(IUnknown& whole, HostedControl& control) : Part(whole), control_(control) {}

  STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
  STDMETHODIMP OnMnemonic(MSG* message) override;
  STDMETHODIMP OnAmbientPropertyChange(DISPID property) override;
  STDMETHODIMP FreezeEvents(BOOL freeze) override;

 private:
  HostedControl& control_;
};

}  // namespace qel::com
