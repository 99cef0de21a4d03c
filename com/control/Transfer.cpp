#include "com/control/Transfer.h"

#include <ole2.h>

#include <new>
#include <vector>

#include "com/automation/Errors.h"
#include "com/automation/ListEnumerator.h"
#include "com/control/Extents.h"
#include "windows/DataObject.h"

namespace qel::com {
namespace {

constexpr FORMATETC picture = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};

bool is_picture(const FORMATETC& format) {
  return format.cfFormat == picture.cfFormat && format.dwAspect == picture.dwAspect &&
         (format.tymed & picture.tymed) != 0;
}

FORMATETC same(const FORMATETC& format) { return format; }
using Formats = ListEnumerator<IEnumFORMATETC, FORMATETC, FORMATETC, same>;

}  // namespace

Pointer<IDataObject> data_of(const QELTextbox& textbox) {
  platform::DragData data;
  data.put(platform::text_format, textbox.get_Text());
  data.put(platform::rtf_format, textbox.get_TextRTF());
  return Pointer<IDataObject>::adopted(new windows::DataObject(std::move(data)));
}

/// A metafile as wide and high as its frame says, in hundredths of a millimetre.
void Transfer::put_picture(STGMEDIUM& medium) {
  const SIZEL size = control_.natural_extent();
  const SIZE pixels = in_pixels(size, control_.dpi());
  const HDC context = CreateMetaFileW(nullptr);
  SetMapMode(context, MM_ANISOTROPIC);
  SetWindowExtEx(context, pixels.cx, pixels.cy, nullptr);
  control_.draw(context, {0, 0, pixels.cx, pixels.cy});
  const HMETAFILE file = CloseMetaFile(context);
  const HGLOBAL block = GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT));
  auto* const frame = block == nullptr ? nullptr : static_cast<METAFILEPICT*>(GlobalLock(block));
  if (frame == nullptr) {
    DeleteMetaFile(file);
    throw std::bad_alloc();
  }
  *frame = {MM_ANISOTROPIC, size.cx, size.cy, file};
  GlobalUnlock(block);
  medium.tymed = TYMED_MFPICT;
  medium.hMetaFilePict = block;
}

HRESULT Transfer::GetData(FORMATETC* format, STGMEDIUM* medium) {
  if (format == nullptr || medium == nullptr) return E_POINTER;
  *medium = {};
  HRESULT result = S_OK;
  const HRESULT done = guarded(IID_IDataObject, [&] {
    if (is_picture(*format)) {
      put_picture(*medium);
    } else {
      result = data_of(control_.textbox())->GetData(format, medium);
    }
  });
  return FAILED(done) ? done : result;
}

HRESULT Transfer::GetDataHere(FORMATETC* /*format*/, STGMEDIUM* /*medium*/) { return E_NOTIMPL; }

HRESULT Transfer::QueryGetData(FORMATETC* format) {
  if (format == nullptr) return E_POINTER;
  if (is_picture(*format)) return S_OK;
  HRESULT result = S_OK;
  const HRESULT done =
      guarded(IID_IDataObject, [&] { result = data_of(control_.textbox())->QueryGetData(format); });
  return FAILED(done) ? done : result;
}

HRESULT Transfer::GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* out) {
  if (format == nullptr || out == nullptr) return E_POINTER;
  *out = *format;
  out->ptd = nullptr;  // it looks the same on all devices
  return DATA_S_SAMEFORMATETC;
}

HRESULT Transfer::SetData(FORMATETC* /*format*/, STGMEDIUM* /*medium*/, BOOL /*releases*/) {
  return E_NOTIMPL;
}

HRESULT Transfer::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) {
  if (formats == nullptr) return E_POINTER;
  *formats = nullptr;
  if (direction != DATADIR_GET) return E_NOTIMPL;
  return guarded(IID_IDataObject, [&] {
    std::vector<FORMATETC> all = {picture};
    Pointer<IEnumFORMATETC> texts;
    FORMATETC format = {};
    if (SUCCEEDED(data_of(control_.textbox())->EnumFormatEtc(direction, texts.put()))) {
      while (texts->Next(1, &format, nullptr) == S_OK) all.push_back(format);
    }
    *formats = new Formats(std::move(all));
  });
}

HRESULT Transfer::DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* connection) {
  const auto sinks = control_.data_sinks();
  return sinks ? sinks->Advise(this, format, flags, sink, connection) : E_OUTOFMEMORY;
}

HRESULT Transfer::DUnadvise(DWORD connection) {
  const auto sinks = control_.data_sinks();
  return sinks ? sinks->Unadvise(connection) : OLE_E_NOCONNECTION;
}

HRESULT Transfer::EnumDAdvise(IEnumSTATDATA** connections) {
  const auto sinks = control_.data_sinks();
  return sinks ? sinks->EnumAdvise(connections) : OLE_E_ADVISENOTSUPPORTED;
}

}  // namespace qel::com
