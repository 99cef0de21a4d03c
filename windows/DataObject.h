#pragma once

#include <objidl.h>

#include <cstdint>

#include "qel/platform/DragData.h"
#include "windows/ComObject.h"

namespace qel::windows {

/// Dragged data as other programs see it: text, in Unicode and in the system's code page, and RTF.
/// What was only promised is supplied when somebody gets it.
class DataObject : public ComObject<IDataObject> {
 public:
  explicit DataObject(platform::DragData data);

  /// The object behind `object` where that is one of this thread's, also when the system has put
  /// something between; else null.
  static DataObject* behind(IDataObject& object);

  platform::DragData& data() { return data_; }
  /// The source may be gone from now on: what was not supplied yet will not be.
  void end_supply() { data_.put_supply({}); }

  HRESULT STDMETHODCALLTYPE GetData(FORMATETC* form, STGMEDIUM* medium) noexcept override;
  HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC* form, STGMEDIUM* medium) noexcept override;
  HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* form) noexcept override;
  HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC* form,
                                                  FORMATETC* out) noexcept override;
  HRESULT STDMETHODCALLTYPE SetData(FORMATETC* form, STGMEDIUM* medium,
                                    BOOL releases) noexcept override;
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction,
                                          IEnumFORMATETC** forms) noexcept override;
  HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC* form, DWORD flags, IAdviseSink* sink,
                                    DWORD* connection) noexcept override;
  HRESULT STDMETHODCALLTYPE DUnadvise(DWORD connection) noexcept override;
  HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA** connections) noexcept override;

 protected:
  ~DataObject() override;

 private:
  HGLOBAL block(CLIPFORMAT format);

  platform::DragData data_;
};

/// Data of any program as dragged data: what it has is promised, and read from `object` when it is
/// asked for. The object is held as long as the result.
platform::DragData read_data_object(IDataObject& object);

}  // namespace qel::windows
