// Defines the identifiers that no import library has.
#include <initguid.h>
// Needs the ones above.
#include <string>
#include <string_view>
#include <utility>

#include "windows/BoxAccessible.h"
#include "windows/BoxWindow.h"
#include "windows/Guard.h"
#include "windows/Text.h"

namespace qel::windows {
namespace {

constexpr auto client = static_cast<DWORD>(OBJID_CLIENT);

bool is_self(const VARIANT& child) { return child.vt == VT_I4 && child.lVal == CHILDID_SELF; }

HRESULT give(std::u16string_view text, BSTR* result) {
  *result = SysAllocStringLen(wide(text).data(), static_cast<UINT>(text.size()));
  return *result == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT give(LONG number, VARIANT* result) {
  result->vt = VT_I4;
  result->lVal = number;
  return S_OK;
}

HRESULT give_nothing(BSTR* result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return S_FALSE;
}

}  // namespace

BoxAccessible::BoxAccessible(HWND window, std::weak_ptr<const box::Box> box,
                             Pointer<IAccessible> standard)
    : window_(window), box_(std::move(box)), standard_(std::move(standard)) {}

LRESULT BoxAccessible::answer(HWND window, const std::weak_ptr<const box::Box>& box, WPARAM asked) {
  Pointer<IAccessible> standard;
  const HRESULT done = CreateStdAccessibleObject(window, OBJID_CLIENT, IID_IAccessible,
                                                 reinterpret_cast<void**>(standard.put()));
  if (FAILED(done) || !standard) return 0;
  const auto object =
      Pointer<IAccessible>::adopted(new BoxAccessible(window, box, std::move(standard)));
  return LresultFromObject(IID_IAccessible, asked, object.get());
}

void BoxAccessible::announce(HWND window, const std::u16string& name) {
  Pointer<IAccPropServices> services;
  CoCreateInstance(CLSID_AccPropServices, nullptr, CLSCTX_INPROC_SERVER, IID_IAccPropServices,
                   reinterpret_cast<void**>(services.put()));
  if (!services) return;
  if (name.empty()) {
    const MSAAPROPID property = PROPID_ACC_NAME;
    services->ClearHwndProps(window, client, CHILDID_SELF, &property, 1);
  } else {
    services->SetHwndPropStr(window, client, CHILDID_SELF, PROPID_ACC_NAME, wide(name));
  }
}

// What the box knows.

HRESULT BoxAccessible::get_accName(VARIANT child, BSTR* name) {
  if (name == nullptr) return E_POINTER;
  *name = nullptr;
  if (!is_self(child)) return E_INVALIDARG;
  const BoxWindow* const shown = BoxWindow::of(window_);
  if (shown == nullptr) return CO_E_OBJNOTCONNECTED;
  return shown->name().empty() ? S_FALSE : give(shown->name(), name);
}

HRESULT BoxAccessible::get_accValue(VARIANT child, BSTR* value) {
  if (value == nullptr) return E_POINTER;
  *value = nullptr;
  if (!is_self(child)) return E_INVALIDARG;
  const auto box = box_.lock();
  return box ? guarded([&] { return give(box->text(), value); }) : CO_E_OBJNOTCONNECTED;
}

HRESULT BoxAccessible::get_accRole(VARIANT child, VARIANT* role) {
  if (role == nullptr) return E_POINTER;
  *role = {};
  return is_self(child) ? give(ROLE_SYSTEM_TEXT, role) : E_INVALIDARG;
}

HRESULT BoxAccessible::get_accState(VARIANT child, VARIANT* state) {
  if (state == nullptr) return E_POINTER;
  *state = {};
  if (!is_self(child)) return E_INVALIDARG;
  const auto box = box_.lock();
  if (!box) return CO_E_OBJNOTCONNECTED;
  const bool is_enabled = IsWindowEnabled(window_) != FALSE;
  LONG flags = is_enabled ? STATE_SYSTEM_FOCUSABLE : STATE_SYSTEM_UNAVAILABLE;
  if (GetFocus() == window_) flags |= STATE_SYSTEM_FOCUSED;
  if (box->appearance().read_only) flags |= STATE_SYSTEM_READONLY;
  if (IsWindowVisible(window_) == FALSE) flags |= STATE_SYSTEM_INVISIBLE;
  return give(flags, state);
}

HRESULT BoxAccessible::get_accChildCount(LONG* count) {
  if (count == nullptr) return E_POINTER;
  *count = 0;
  return S_OK;
}

HRESULT BoxAccessible::get_accChild(VARIANT /*child*/, IDispatch** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  return S_FALSE;
}

HRESULT BoxAccessible::get_accDescription(VARIANT /*child*/, BSTR* description) {
  return give_nothing(description);
}

HRESULT BoxAccessible::get_accHelp(VARIANT /*child*/, BSTR* help) { return give_nothing(help); }

HRESULT BoxAccessible::get_accHelpTopic(BSTR* file, VARIANT /*child*/, LONG* /*topic*/) {
  return give_nothing(file);
}

HRESULT BoxAccessible::get_accKeyboardShortcut(VARIANT /*child*/, BSTR* shortcut) {
  return give_nothing(shortcut);
}

HRESULT BoxAccessible::get_accDefaultAction(VARIANT /*child*/, BSTR* action) {
  return give_nothing(action);
}

HRESULT BoxAccessible::get_accSelection(VARIANT* children) {
  if (children == nullptr) return E_POINTER;
  *children = {};
  return S_FALSE;
}

HRESULT BoxAccessible::accDoDefaultAction(VARIANT /*child*/) { return DISP_E_MEMBERNOTFOUND; }

HRESULT BoxAccessible::put_accName(VARIANT /*child*/, BSTR /*name*/) { return E_NOTIMPL; }

HRESULT BoxAccessible::put_accValue(VARIANT /*child*/, BSTR /*value*/) { return E_NOTIMPL; }

// What the system knows of any window.

HRESULT BoxAccessible::GetTypeInfoCount(UINT* count) { return standard_->GetTypeInfoCount(count); }

HRESULT BoxAccessible::GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) {
  return standard_->GetTypeInfo(index, locale, info);
}

HRESULT BoxAccessible::GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                                     DISPID* ids) {
  return standard_->GetIDsOfNames(id, names, count, locale, ids);
}

HRESULT BoxAccessible::Invoke(DISPID member, REFIID /*id*/, LCID locale, WORD flags,
                              DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* error,
                              UINT* wrong) {
  Pointer<ITypeInfo> info;
  const HRESULT found = standard_->GetTypeInfo(0, locale, info.put());
  if (FAILED(found)) return found;
  return info->Invoke(static_cast<IAccessible*>(this), member, flags, arguments, result, error,
                      wrong);
}

HRESULT BoxAccessible::get_accParent(IDispatch** parent) {
  return standard_->get_accParent(parent);
}

HRESULT BoxAccessible::get_accFocus(VARIANT* child) { return standard_->get_accFocus(child); }

HRESULT BoxAccessible::accSelect(LONG flags, VARIANT child) {
  return standard_->accSelect(flags, child);
}

HRESULT BoxAccessible::accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                                   VARIANT child) {
  return standard_->accLocation(left, top, width, height, child);
}

HRESULT BoxAccessible::accNavigate(LONG direction, VARIANT start, VARIANT* end) {
  return standard_->accNavigate(direction, start, end);
}

HRESULT BoxAccessible::accHitTest(LONG left, LONG top, VARIANT* child) {
  return standard_->accHitTest(left, top, child);
}

}  // namespace qel::windows
