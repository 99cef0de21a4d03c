#include "windows/DataObject.h"

#include <ole2.h>
#include <shlobj.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <utility>
#include <vector>

#include "windows/GlobalMemory.h"
#include "windows/Guard.h"
#include "windows/HtmlFormat.h"
#include "windows/Pointer.h"

namespace qel::windows {

using platform::DragData;
using platform::html_format;
using platform::rtf_format;
using platform::text_format;

namespace {

// Objects of this thread. The system may pass on another object in place of one, so the data names
// the object that it comes from in a format of its own.
thread_local std::vector<DataObject*> own_objects;

struct Origin {
  DWORD process;
  DataObject* object;  // means something in that process only
};

CLIPFORMAT origin_format() {
  static const UINT format = RegisterClipboardFormatW(L"QEL Data Object");
  return static_cast<CLIPFORMAT>(format);
}

/// A format of data, and how the system knows it.
struct Known {
  std::int16_t format;
  CLIPFORMAT native;
};

/// The best of each kind first.
std::vector<Known> known_formats() {
  return {{rtf_format, static_cast<CLIPFORMAT>(rtf_clipboard_format())},
          {html_format, static_cast<CLIPFORMAT>(html_clipboard_format())},
          {text_format, CF_UNICODETEXT},
          {text_format, CF_TEXT}};
}

/// Whether the data can be had in that format.
bool gives(const DragData& data, std::int16_t format) {
  return data.has(format) || (format == html_format && data.has(rtf_format));
}

FORMATETC in_memory(CLIPFORMAT format) {
  return {format, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
}

bool is_in_memory(const FORMATETC& format) {
  return (format.tymed & TYMED_HGLOBAL) != 0 && format.dwAspect == DVASPECT_CONTENT &&
         (format.lindex == -1 || format.lindex == 0);
}

HGLOBAL block_of(const Origin& origin) {
  const HGLOBAL block = GlobalAlloc(GMEM_FIXED, sizeof origin);
  // A fixed block's handle is its address.
  if (block != nullptr) std::memcpy(block, &origin, sizeof origin);
  return block;
}

/// Holds what an object gives in one format.
class Medium {
 public:
  Medium(IDataObject& object, CLIPFORMAT format) {
    FORMATETC asked = in_memory(format);
    has_ = SUCCEEDED(object.GetData(&asked, &medium_));
  }
  Medium(const Medium&) = delete;
  Medium& operator=(const Medium&) = delete;
  ~Medium() {
    if (has_) ReleaseStgMedium(&medium_);
  }

  /// Null for data that is not in memory.
  HGLOBAL block() const {
    return has_ && medium_.tymed == TYMED_HGLOBAL ? medium_.hGlobal : nullptr;
  }

 private:
  STGMEDIUM medium_ = {};
  bool has_ = false;
};

bool offers(IDataObject& object, CLIPFORMAT format) {
  FORMATETC asked = in_memory(format);
  return object.QueryGetData(&asked) == S_OK;
}

std::optional<std::u16string> get(IDataObject& object, std::int16_t wanted) {
  for (const Known& known : known_formats()) {
    if (known.format != wanted || !offers(object, known.native)) continue;
    const Medium medium(object, known.native);
    if (medium.block() != nullptr) return read_block(medium.block(), known.native);
  }
  return {};
}

}  // namespace

DataObject::DataObject(DragData data) : data_(std::move(data)) { own_objects.push_back(this); }

DataObject::~DataObject() { std::erase(own_objects, this); }

DataObject* DataObject::behind(IDataObject& object) {
  const Medium medium(object, origin_format());
  if (medium.block() == nullptr || GlobalSize(medium.block()) < sizeof(Origin)) return nullptr;
  Origin origin = {};
  const void* const memory = GlobalLock(medium.block());
  if (memory == nullptr) return nullptr;
  std::memcpy(&origin, memory, sizeof origin);
  GlobalUnlock(medium.block());
  const auto found = std::find(own_objects.begin(), own_objects.end(), origin.object);
  const bool is_own = origin.process == GetCurrentProcessId() && found != own_objects.end();
  return is_own ? *found : nullptr;
}

/// The data in that format, in a new block; null where there is none.
HGLOBAL DataObject::block(CLIPFORMAT format) {
  if (format == origin_format()) return block_of({GetCurrentProcessId(), this});
  for (const Known& known : known_formats()) {
    if (known.native != format) continue;
    const auto value = known.format == html_format ? offered_html(data_) : data_.get(known.format);
    return value ? windows::block_of(*value, format) : nullptr;
  }
  return nullptr;
}

HRESULT DataObject::GetData(FORMATETC* format, STGMEDIUM* medium) noexcept {
  if (format == nullptr || medium == nullptr) return E_POINTER;
  return guarded([&]() -> HRESULT {
    *medium = {};
    const HRESULT result = QueryGetData(format);
    if (result != S_OK) return result;
    const HGLOBAL block = this->block(format->cfFormat);
    if (block == nullptr) return DV_E_FORMATETC;
    medium->tymed = TYMED_HGLOBAL;
    medium->hGlobal = block;
    return S_OK;
  });
}

HRESULT DataObject::GetDataHere(FORMATETC* /*format*/, STGMEDIUM* /*medium*/) noexcept {
  return DATA_E_FORMATETC;
}

HRESULT DataObject::QueryGetData(FORMATETC* format) noexcept {
  if (format == nullptr) return E_POINTER;
  return guarded([&]() -> HRESULT {
    const std::vector<Known> formats = known_formats();
    const bool has = format->cfFormat == origin_format() ||
                     std::any_of(formats.begin(), formats.end(), [&](const Known& known) {
                       return known.native == format->cfFormat && gives(data_, known.format);
                     });
    if (!has) return DV_E_FORMATETC;
    return is_in_memory(*format) ? S_OK : DV_E_TYMED;
  });
}

HRESULT DataObject::GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* out) noexcept {
  if (format == nullptr || out == nullptr) return E_POINTER;
  *out = *format;
  out->ptd = nullptr;
  return DATA_S_SAMEFORMATETC;
}

HRESULT DataObject::SetData(FORMATETC* /*format*/, STGMEDIUM* /*medium*/,
                            BOOL /*releases*/) noexcept {
  return E_NOTIMPL;
}

HRESULT DataObject::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) noexcept {
  if (formats == nullptr) return E_POINTER;
  *formats = nullptr;
  if (direction != DATADIR_GET) return E_NOTIMPL;
  return guarded([&] {
    std::vector<FORMATETC> offered;
    for (const Known& known : known_formats()) {
      if (gives(data_, known.format)) offered.push_back(in_memory(known.native));
    }
    offered.push_back(in_memory(origin_format()));
    return SHCreateStdEnumFmtEtc(static_cast<UINT>(offered.size()), offered.data(), formats);
  });
}

HRESULT DataObject::DAdvise(FORMATETC* /*format*/, DWORD /*flags*/, IAdviseSink* /*sink*/,
                            DWORD* /*connection*/) noexcept {
  return OLE_E_ADVISENOTSUPPORTED;
}

HRESULT DataObject::DUnadvise(DWORD /*connection*/) noexcept { return OLE_E_ADVISENOTSUPPORTED; }

HRESULT DataObject::EnumDAdvise(IEnumSTATDATA** /*connections*/) noexcept {
  return OLE_E_ADVISENOTSUPPORTED;
}

DragData read_data_object(IDataObject& object) {
  DragData data;
  for (const Known& known : known_formats()) {
    if (offers(object, known.native)) data.promise(known.format);
  }
  const auto held = Pointer<IDataObject>(&object);
  data.put_supply([held](DragData& promised, std::int16_t wanted) {
    if (const auto value = get(*held, wanted)) promised.put(wanted, *value);
  });
  return data;
}

}  // namespace qel::windows
