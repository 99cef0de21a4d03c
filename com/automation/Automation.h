#pragma once

#include <objsafe.h>
#include <ocidl.h>
#include <olectl.h>
#include <windows.h>

#include <atomic>
#include <utility>

#include "com/automation/Errors.h"
#include "com/automation/TypeLibrary.h"
#include "com/server/Module.h"

namespace qel::com {

/// The id of an interface. Private interfaces have a function for it.
template <class Interface>
const IID& interface_id() {
  if constexpr (requires { Interface::id(); }) {
    return Interface::id();
  } else {
    return __uuidof(Interface);
  }
}

/// The base of every object of the component: reference counts, calls by name through the type
/// library, information about its class, errors with descriptions, and what it refuses to callers
/// that its host does not trust. `Interface` is the dual interface, `More` are further ones. It may
/// be a part of another object, whose references and interfaces are its own to everybody else.
template <class Interface, class... More>
class Automation : public Interface,
                   public ISupportErrorInfo,
                   public IProvideClassInfo2,
                   public IObjectSafety,
                   public More... {
 public:
  explicit Automation(const CLSID& class_id) : class_id_(class_id) {}
  Automation(const Automation&) = delete;
  Automation& operator=(const Automation&) = delete;

  // IUnknown
  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    return outer_->QueryInterface(id, result);
  }
  STDMETHODIMP_(ULONG) AddRef() override { return outer_->AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return outer_->Release(); }

  /// The reference of whoever creates the object, which becomes a part of `outer` unless that is
  /// null.
  IUnknown* created_for(IUnknown* outer) {
    if (outer != nullptr) outer_ = outer;
    return &inner_;
  }

  // IDispatch
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) override {
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    return index == 0 ? type_info(__uuidof(Interface), info) : DISP_E_BADINDEX;
  }
  STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID /*locale*/,
                             DISPID* ids) override {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    return ids_of_names(__uuidof(Interface), names, count, ids);
  }
  STDMETHODIMP Invoke(DISPID member, REFIID reserved, LCID /*locale*/, WORD kind,
                      DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                      UINT* wrong_argument) override {
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    return invoke(__uuidof(Interface), static_cast<Interface*>(this),
                  {member, kind, arguments, result, exception, wrong_argument});
  }

  // ISupportErrorInfo
  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID id) override {
    return id == __uuidof(Interface) ? S_OK : S_FALSE;
  }

  // IProvideClassInfo2
  STDMETHODIMP GetClassInfo(ITypeInfo** info) override { return type_info(class_id_, info); }
  STDMETHODIMP GetGUID(DWORD kind, GUID* id) override {
    if (id == nullptr) return E_POINTER;
    if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
    *id = source_id();
    return *id == GUID_NULL ? E_NOTIMPL : S_OK;
  }

  // IObjectSafety
  STDMETHODIMP GetInterfaceSafetyOptions(REFIID id, DWORD* supported, DWORD* enabled) override {
    if (supported == nullptr || enabled == nullptr) return E_POINTER;
    if (find(id) == nullptr) return E_NOINTERFACE;
    *supported = all_safety;
    *enabled = safety_;
    return S_OK;
  }
  STDMETHODIMP SetInterfaceSafetyOptions(REFIID id, DWORD mask, DWORD enabled) override {
    if (find(id) == nullptr) return E_NOINTERFACE;
    if ((mask & ~all_safety) != 0) return E_FAIL;
    safety_ = (safety_ & ~mask) | (enabled & mask);
    on_trust(trusts_callers());
    return S_OK;
  }

 protected:
  virtual ~Automation() = default;

  /// Interfaces beyond those of the bases.
  virtual void* extra_interface(const IID& /*id*/) { return nullptr; }
  /// The interface through which the object raises its events.
  virtual const IID& source_id() const { return GUID_NULL; }

  /// The whole of which the object is a part, or the object itself.
  IUnknown& whole() { return *static_cast<Interface*>(this); }
  /// The object itself.
  IUnknown& own() { return inner_; }

  /// Runs the action of a member.
  template <class Action>
  HRESULT guard(Action&& action) const noexcept {
    return guarded(__uuidof(Interface), std::forward<Action>(action));
  }

  /// Raises where the host does not trust its scripts: a page that somebody else wrote must not
  /// read the clipboard or act outside the object.
  void require_trust() const {
    if (!trusts_callers()) raise_not_trusted();
  }
  /// The host has said whether it trusts its scripts.
  virtual void on_trust(bool /*trusts*/) {}

 private:
  /// What the object is without the one that it is a part of.
  class Inner final : public IUnknown {
   public:
    explicit Inner(Automation& object) : object_(object) {}

    STDMETHODIMP QueryInterface(REFIID id, void** result) override {
      if (result == nullptr) return E_POINTER;
      const bool is_inner = id == IID_IUnknown;
      *result = is_inner ? this : object_.find(id);
      if (*result == nullptr) return E_NOINTERFACE;
      is_inner ? AddRef() : object_.AddRef();
      return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
    STDMETHODIMP_(ULONG) Release() override {
      const ULONG left = --references_;
      if (left == 0) delete &object_;
      return left;
    }

   private:
    Automation& object_;
    std::atomic<ULONG> references_ = 1;
  };

  static constexpr DWORD all_safety =
      INTERFACESAFE_FOR_UNTRUSTED_CALLER | INTERFACESAFE_FOR_UNTRUSTED_DATA;

  bool trusts_callers() const { return (safety_ & INTERFACESAFE_FOR_UNTRUSTED_CALLER) == 0; }

  void* find(const IID& id) {
    if (id == IID_IDispatch || id == __uuidof(Interface)) return static_cast<Interface*>(this);
    if (id == IID_ISupportErrorInfo) return static_cast<ISupportErrorInfo*>(this);
    if (id == IID_IObjectSafety) return static_cast<IObjectSafety*>(this);
    if (id == IID_IProvideClassInfo || id == IID_IProvideClassInfo2) {
      return static_cast<IProvideClassInfo2*>(this);
    }
    void* found = nullptr;
    ((id == interface_id<More>() ? (found = static_cast<More*>(this)) : nullptr), ...);
    return found != nullptr ? found : extra_interface(id);
  }

  const ModuleUse module_use_;
  Inner inner_{*this};
  IUnknown* outer_ = &inner_;  // holds this object, so no reference to it is counted
  DWORD safety_ = 0;
  const CLSID& class_id_;
};

}  // namespace qel::com
