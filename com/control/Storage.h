#pragma once

#include <ocidl.h>

#include "com/control/HostedControl.h"
#include "com/control/Part.h"

namespace qel::com {

/// Keeps the control's properties in a stream of the host: the letters "QELT", the size of what
/// follows in bytes, and the properties as text (`headless::PropertyBag`).
class StreamStorage final : public Part<IPersistStreamInit> {
 public:
  StreamStorage(IUnknown& whole, HostedControl& control) : Part(whole), control_(control) {}

  STDMETHODIMP GetClassID(CLSID* id) override;
  STDMETHODIMP IsDirty() override;
  /// A stream that holds something else is an error, and leaves the control as it is.
  STDMETHODIMP Load(LPSTREAM stream) override;
  STDMETHODIMP Save(LPSTREAM stream, BOOL clear_dirty) override;
  STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;
  STDMETHODIMP InitNew() override;

 private:
  HostedControl& control_;
};

/// Keeps the control's properties in a stream named "CONTENTS" of a storage of the host, as
/// `StreamStorage` writes it.
class DocumentStorage final : public Part<IPersistStorage> {
 public:
  DocumentStorage(IUnknown& whole, HostedControl& control) : Part(whole), control_(control) {}

  STDMETHODIMP GetClassID(CLSID* id) override;
  STDMETHODIMP IsDirty() override;
  STDMETHODIMP InitNew(LPSTORAGE storage) override;
  STDMETHODIMP Load(LPSTORAGE storage) override;
  STDMETHODIMP Save(LPSTORAGE storage, BOOL is_own) override;
  /// The control is clean from now on where the storage is, or becomes, its own.
  STDMETHODIMP SaveCompleted(LPSTORAGE storage) override;
  STDMETHODIMP HandsOffStorage() override;

 private:
  HostedControl& control_;
  bool saved_own_ = false;
};

/// Keeps the control's properties in a property bag of the host.
class BagStorage final : public Part<IPersistPropertyBag> {
 public:
  BagStorage(IUnknown& whole, HostedControl& control) : Part(whole), control_(control) {}

  STDMETHODIMP GetClassID(CLSID* id) override;
  STDMETHODIMP InitNew() override;
  STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) override;
  STDMETHODIMP Save(IPropertyBag* bag, BOOL clear_dirty, BOOL all_properties) override;

 private:
  HostedControl& control_;
};

}  // namespace qel::com
