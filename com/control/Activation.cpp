#include "com/control/Activation.h"

#include <cstdint>

#include "com/automation/Errors.h"
#include "qel/box/Keyboard.h"
#include "qel/platform/Keys.h"
#include "windows/Modifiers.h"

namespace qel::com {

using namespace keys;

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

/// Whether the key leads out of the box: the host moves the focus, or presses a button of its own.
bool leads_out(std::int16_t key_code, std::int16_t shift, bool is_multiline) {
  const bool has_ctrl = (shift & ctrl_key) != 0;
  return (key_code == tab_key && !has_ctrl) || key_code == escape_key ||
         (key_code == enter_key && !is_multiline && !has_ctrl);
}

/// Whether a key types a character, or begins one: alone, with Shift, or with both Ctrl and Alt.
bool types(std::int16_t key_code, std::int16_t shift) {
  constexpr int both = ctrl_key | alt_key;
  const int others = shift & both;
  if (key_code == VK_PACKET || key_code == VK_PROCESSKEY) return true;
  if (others != 0 && others != both) return false;
  return MapVirtualKeyW(static_cast<UINT>(key_code), MAPVK_VK_TO_CHAR) >= L' ';
}

/// Whether the box has a use for the key; Alt+F4 closes windows.
bool is_used(const QELTextbox& textbox, std::int16_t key_code, std::int16_t shift) {
  using box::Keyboard;
  if (shift == alt_key && key_code == function_key(4)) return false;
  const bool breaks = textbox.get_Multiline() && (shift & alt_key) == 0 &&
                      (key_code == enter_key || (key_code == tab_key && shift == ctrl_key));
  return breaks || types(key_code, shift) || Keyboard::knows(key_code, shift) ||
         Keyboard::moves_by_lines(key_code, shift) || textbox.acts_on_key(key_code, shift);
}

}  // namespace

/// Gives the box the keys that it uses before the host can use them as shortcuts of its own. All
/// others are offered to the site, and come back as messages if nobody there wants them.
HRESULT Active::TranslateAccelerator(LPMSG message) {
  if (message == nullptr) return E_POINTER;
  const bool is_key = message->message == WM_KEYDOWN || message->message == WM_SYSKEYDOWN;
  if (!is_key || control_.ambients().is_ui_dead() ||
      IsChild(control_.handle(), message->hwnd) == FALSE) {
    return S_FALSE;
  }
  const auto key_code = static_cast<std::int16_t>(message->wParam);
  const std::int16_t shift = windows::held_modifiers();
  const QELTextbox& textbox = control_.textbox();
  if (leads_out(key_code, shift, textbox.get_Multiline()) || !is_used(textbox, key_code, shift)) {
    const auto site = Pointer<IOleClientSite>(control_.client_site()).as<IOleControlSite>();
    const auto modifiers = static_cast<DWORD>(shift);
    return site && site->TranslateAccelerator(message, modifiers) == S_OK ? S_OK : S_FALSE;
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

/// The control has no caption, so a key that leads to it is one of a label beside it.
HRESULT Steering::OnMnemonic(MSG* /*message*/) {
  HRESULT result = S_OK;
  const HRESULT done = guarded(IID_IOleControl, [&] { result = control_.activate_ui(); });
  return FAILED(done) ? done : result;
}

HRESULT Steering::OnAmbientPropertyChange(DISPID property) {
  return guarded(IID_IOleControl, [&] { control_.on_ambient_change(property); });
}

HRESULT Steering::FreezeEvents(BOOL freeze) {
  control_.freeze_events(freeze != FALSE);
  return S_OK;
}

}  // namespace qel::com
