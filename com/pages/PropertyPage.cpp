#include "com/pages/PropertyPage.h"

#include <ocidl.h>
#include <olectl.h>

#include <memory>

#include "com/automation/Errors.h"
#include "com/control/CallerString.h"
#include "com/pages/PageDialog.h"
#include "com/pages/Settings.h"
#include "com/server/Module.h"
#include "qel/base/Error.h"
#include "windows/ComObject.h"
#include "windows/Pointer.h"

namespace qel::com {
namespace {

class PropertyPage final : public windows::ComObject<IPropertyPage2> {
 public:
  STDMETHODIMP QueryInterface(REFIID id, void** object) noexcept override {
    const bool is_older = id == IID_IPropertyPage;
    return ComObject::QueryInterface(is_older ? IID_IPropertyPage2 : id, object);
  }

  STDMETHODIMP SetPageSite(IPropertyPageSite* site) override {
    site_ = Pointer<IPropertyPageSite>(site);
    return S_OK;
  }
  STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override {
    if (count > 0 && objects == nullptr) return E_POINTER;
    return guarded(IID_IPropertyPage, [&] {
      settings_.put_objects({objects, count});
      if (dialog_ && count > 0) dialog_->show_settings();
    });
  }
  STDMETHODIMP Activate(HWND parent, LPCRECT place, BOOL /*modal*/) override {
    if (place == nullptr) return E_POINTER;
    if (settings_.is_empty()) return E_UNEXPECTED;
    return guarded(IID_IPropertyPage, [&] {
      dialog_.reset();
      dialog_ = std::make_shared<PageDialog>(parent, settings_, [this] { on_change(); });
      put_place(*place);
    });
  }
  STDMETHODIMP Deactivate() override {
    dialog_.reset();
    return S_OK;
  }
  STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override {
    if (info == nullptr) return E_POINTER;
    return guarded(IID_IPropertyPage, [&] {
      const ULONG size = info->cb;
      *info = {};
      info->cb = size;
      info->size = own_size();
      info->pszTitle = for_caller(L"Text Box");
    });
  }
  STDMETHODIMP Show(UINT how) override {
    if (!dialog_) return E_UNEXPECTED;
    ShowWindow(dialog_->handle(), static_cast<int>(how));
    return S_OK;
  }
  STDMETHODIMP Move(LPCRECT place) override {
    if (place == nullptr) return E_POINTER;
    if (!dialog_) return E_UNEXPECTED;
    put_place(*place);
    return S_OK;
  }
  STDMETHODIMP IsPageDirty() override { return dialog_ && dialog_->is_changed() ? S_OK : S_FALSE; }
  STDMETHODIMP Apply() override {
    if (settings_.is_empty()) return E_UNEXPECTED;
    return guarded(IID_IPropertyPage, [&] {
      // Hosts that are told of a change may close the page.
      if (const auto dialog = dialog_) dialog->apply();
    });
  }
  STDMETHODIMP Help(LPCOLESTR /*folder*/) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG* message) override {
    if (message == nullptr) return E_POINTER;
    if (dialog_ && dialog_->handle_key(*message)) return S_OK;
    return site_ && site_->TranslateAccelerator(message) == S_OK ? S_OK : S_FALSE;
  }
  STDMETHODIMP EditProperty(DISPID property) override {
    const Setting* const setting = setting_of(property);
    if (setting == nullptr) return E_NOTIMPL;
    if (!dialog_) return E_UNEXPECTED;
    dialog_->put_focus(*setting);
    return S_OK;
  }

 private:
  void on_change() {
    const Pointer<IPropertyPageSite> site = site_;  // which may leave the page now
    if (site) site->OnStatusChange(PROPPAGESTATUS_DIRTY);
  }
  void put_place(const RECT& place) const {
    SetWindowPos(dialog_->handle(), nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
  }
  /// The resource tells it in units of the system's font.
  static SIZE own_size() {
    const SharedSettings none;
    const PageDialog dialog(GetDesktopWindow(), none, [] {});
    RECT place = {};
    GetWindowRect(dialog.handle(), &place);
    return {place.right - place.left, place.bottom - place.top};
  }

  const ModuleUse module_use_;
  Pointer<IPropertyPageSite> site_;
  SharedSettings settings_;
  std::shared_ptr<PageDialog> dialog_;
};

}  // namespace

IUnknown* make_property_page(IUnknown* outer) {
  if (outer != nullptr) {
    throw Error(static_cast<std::uint32_t>(CLASS_E_NOAGGREGATION), "QEL",
                "it is no part of others");
  }
  return new PropertyPage;
}

}  // namespace qel::com
