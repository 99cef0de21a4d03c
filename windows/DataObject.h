#pragma once

#include <objidl.h>

#include <cstdint>

#include "qel/platform/DragData.h"
#include "windows/ComObject.h"

namespace qel::windows {

/// Dragged data as other programs see it: text, in Unicode and in the system's code page, RTF, and
/// HTML where there is RTF. Promised data is supplied when a program gets it.
class DataObject : public ComObject<IDataObject> {
 public:
  explicit DataObject(platform::DragData data);

  /// The object behind `object` where that is one of this thread's, even through an object that the
  /// system has put in between; else null.
  static DataObject* behind(IDataObject& object);

  platform::DragData& data() { return data_; }
  /// The source may go from now on: data that has not been supplied yet will not be.
  void end_supply() { data_.put_supply({}); }

  HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) noexcept override;
  HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC* format, STGMEDIUM* medium) noexcept override;
  HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) noexcept override;
  HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC* format,
                                                  FORMATETC* out) noexcept override;
  HRESULT STDMETHODCALLTYPE SetData(FORMATETC* format, STGMEDIUM* medium,
                                    BOOL releases) noexcept override;
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD direction,
                                          IEnumFORMATETC** formats) noexcept override;
  HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink,
                                    DWORD* connection) noexcept override;
  HRESULT STDMETHODCALLTYPE DUnadvise(DWORD connection) noexcept override;
  HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA** connections) noexcept override;

 protected:
  ~DataObject() override;

 private:
  HGLOBAL block(CLIPFORMAT format);

  platform::DragData data_;
};

/// Any program's data as dragged data: the formats that it has are promised, and read from `object`
/// when asked for. The result holds the object.
platform::DragData read_data_object(IDataObject& object);

}  // namespace qel::windows
