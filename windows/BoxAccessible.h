#pragma once

#include <oleacc.h>
#include <windows.h>

#include <memory>

#include "qel/box/Box.h"
#include "windows/ComObject.h"
#include "windows/Pointer.h"

namespace qel::windows {

/// A box as a program for users who cannot see it asks for it: a text field with a name, whose
/// value is the text of the box. The place of the window among others is the system's to tell.
class BoxAccessible final : public ComObject<IAccessible> {
 public:
  /// `standard` is what the system has for any window.
  BoxAccessible(HWND window, std::weak_ptr<const box::Box> box, Pointer<IAccessible> standard);

  /// The answer to `WM_GETOBJECT`; 0 where the system cannot help.
  static LRESULT answer(HWND window, const std::weak_ptr<const box::Box>& box, WPARAM asked);
  /// Tells the system of the name, for programs that ask it and not the window; an empty one is
  /// none. Systems that cannot be told are left alone.
  static void announce(HWND window, const std::u16string& name);

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
  STDMETHODIMP GetIDsOfNames(REFIID id, LPOLESTR* names, UINT count, LCID locale,
                             DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID member, REFIID id, LCID locale, WORD flags, DISPPARAMS* arguments,
                      VARIANT* result, EXCEPINFO* error, UINT* wrong) override;

  STDMETHODIMP get_accParent(IDispatch** parent) override;
  STDMETHODIMP get_accChildCount(LONG* count) override;
  STDMETHODIMP get_accChild(VARIANT child, IDispatch** object) override;
  STDMETHODIMP get_accName(VARIANT child, BSTR* name) override;
  STDMETHODIMP get_accValue(VARIANT child, BSTR* value) override;
  STDMETHODIMP get_accDescription(VARIANT child, BSTR* description) override;
  STDMETHODIMP get_accRole(VARIANT child, VARIANT* role) override;
  STDMETHODIMP get_accState(VARIANT child, VARIANT* state) override;
  STDMETHODIMP get_accHelp(VARIANT child, BSTR* help) override;
  STDMETHODIMP get_accHelpTopic(BSTR* file, VARIANT child, LONG* topic) override;
  STDMETHODIMP get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override;
  STDMETHODIMP get_accFocus(VARIANT* child) override;
  STDMETHODIMP get_accSelection(VARIANT* children) override;
  STDMETHODIMP get_accDefaultAction(VARIANT child, BSTR* action) override;
  STDMETHODIMP accSelect(LONG flags, VARIANT child) override;
  STDMETHODIMP accLocation(LONG* left, LONG* top, LONG* width, LONG* height,
                           VARIANT child) override;
  STDMETHODIMP accNavigate(LONG direction, VARIANT start, VARIANT* end) override;
  STDMETHODIMP accHitTest(LONG left, LONG top, VARIANT* child) override;
  STDMETHODIMP accDoDefaultAction(VARIANT child) override;
  STDMETHODIMP put_accName(VARIANT child, BSTR name) override;
  STDMETHODIMP put_accValue(VARIANT child, BSTR value) override;

 private:
  HWND window_;
  std::weak_ptr<const box::Box> box_;
  Pointer<IAccessible> standard_;
};

}  // namespace qel::windows
