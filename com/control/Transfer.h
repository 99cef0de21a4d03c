#pragma once

#include <objidl.h>

#include "com/control/HostedControl.h"
#include "com/control/Part.h"
#include "windows/Pointer.h"

namespace qel::com {

/// The text of a control as it is now: text and RTF.
Pointer<IDataObject> data_of(const QELTextbox& textbox);

/// The control as data for its host: its text, its RTF, and a picture of it.
class Transfer final : public Part<IDataObject> {
 public:
  Transfer(IUnknown& whole, HostedControl& control) : Part(whole), control_(control) {}

  STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override;
  STDMETHODIMP GetDataHere(FORMATETC* format, STGMEDIUM* medium) override;
  STDMETHODIMP QueryGetData(FORMATETC* format) override;
  STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* out) override;
  STDMETHODIMP SetData(FORMATETC* format, STGMEDIUM* medium, BOOL releases) override;
  STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override;
  STDMETHODIMP DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink,
                       DWORD* connection) override;
  STDMETHODIMP DUnadvise(DWORD connection) override;
  STDMETHODIMP EnumDAdvise(IEnumSTATDATA** connections) override;

 private:
  void put_picture(STGMEDIUM& medium);

  HostedControl& control_;
};

}  // namespace qel::com
