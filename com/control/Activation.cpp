#include "com/control/Activation.h"

#include "com/automation/Errors.h"

namespace qel::com {

HRESULT InPlace::GetWindow(HWND* window) {
  if (window == nullptr) return E_POINTER;
  *window = control_.handle();
  return S_OK;
}

HRESULT InPlace::ContextSensitiveHelp(BOOL /*entered*/) { return E_NOTIMPL; }

HRESULT InPlace::InPlaceDeactivate() {
  control_.deactivate();
  return S_OK;
}

HRESULT InPlace::UIDeactivate() {
  control_.deactivate_ui();
  return S_OK;
}

HRESULT InPlace::SetObjectRects(LPCRECT place, LPCRECT clip) {
  if (place == nullptr) return E_POINTER;
  return guarded(IID_IOleInPlaceObject,
                 [&] { control_.put_place(*place, clip == nullptr ? *place : *clip); });
}

HRESULT InPlace::ReactivateAndUndo() { return E_NOTIMPL; }

HRESULT Active::GetWindow(HWND* window) {
  if (window == nullptr) return E_POINTER;
  *window = control_.handle();
  return S_OK;
}

HRESULT Active::ContextSensitiveHelp(BOOL /*entered*/) { return E_NOTIMPL; }

namespace {

DWORD modifiers_held() {
  constexpr int shift = 1;
  constexpr int ctrl = 2;
  constexpr int alt = 4;
  const auto held = [](int key, int mask) { return GetKeyState(key) < 0 ? mask : 0; };
  return static_cast<DWORD>(held(VK_SHIFT, shift) | held(VK_CONTROL, ctrl) | held(VK_MENU, alt));
}

/// Whether the key leads out of the box: the host moves the focus, or presses a button of its own.
bool leads_out(const MSG& message, bool is_multiline) {
  const bool has_ctrl = GetKeyState(VK_CONTROL) < 0;
  switch (message.wParam) {
    case VK_TAB:
      return !has_ctrl;
    case VK_ESCAPE:
      return true;
    case VK_RETURN:
      return !is_multiline && !has_ctrl;
    default:
      return false;
  }
}

}  // namespace

/// Gives the box its keys before the host can use them as shortcuts of its own.
HRESULT Active::TranslateAccelerator(LPMSG message) {
  if (message == nullptr) return E_POINTER;
  const bool is_key = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
  if (!is_key || control_.ambients().is_ui_dead() ||
      IsChild(control_.handle(), message->hwnd) == FALSE)
    return S_FALSE;
  if (message->message == WM_SYSKEYDOWN ||
      leads_out(*message, control_.textbox().get_Multiline())) {
    const Pointer<IOleControlSite> site =
        Pointer<IOleClientSite>(control_.client_site()).as<IOleControlSite>();
    return site ? site->TranslateAccelerator(message, modifiers_held()) : S_FALSE;
  }
  TranslateMessage(message);
  DispatchMessageW(message);
  return S_OK;
}

HRESULT Active::OnFrameWindowActivate(BOOL /*active*/) { return S_OK; }

HRESULT Active::OnDocWindowActivate(BOOL /*active*/) { return S_OK; }

HRESULT Active::ResizeBorder(LPCRECT /*border*/, IOleInPlaceUIWindow* /*window*/,
                             BOOL /*is_frame*/) {
  return S_OK;
}

HRESULT Active::EnableModeless(BOOL /*enable*/) { return S_OK; }

HRESULT Steering::GetControlInfo(CONTROLINFO* info) {
  if (info == nullptr) return E_POINTER;
  info->hAccel = nullptr;
  info->cAccel = 0;
  info->dwFlags = control_.textbox().get_Multiline() ? CTRLINFO_EATS_RETURN : 0;
  return S_OK;
}

HRESULT Steering::OnMnemonic(MSG* /*message*/) { return S_OK; }

HRESULT Steering::OnAmbientPropertyChange(DISPID property) {
  return guarded(IID_IOleControl, [&] { control_.on_ambient_change(property); });
}

HRESULT Steering::FreezeEvents(BOOL freeze) {
  control_.freeze_events(freeze != FALSE);
  return S_OK;
}

}  // namespace qel::com
