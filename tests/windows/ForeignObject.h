#pragma once

#include <objidl.h>
#include <windows.h>

#include <cstring>
#include <map>
#include <string>
#include <utility>

#include "windows/ComObject.h"
#include "windows/Pointer.h"

namespace qel::test {

using windows::ComObject;
using windows::Pointer;

/// Data of another program, or an object that the system puts in place of `behind`.
class ForeignObject : public ComObject<IDataObject> {
 public:
  explicit ForeignObject(std::map<UINT, std::string> formats, IDataObject* behind = nullptr)
      : formats_(std::move(formats)), behind_(Pointer<IDataObject>(behind)) {}

  static Pointer<ForeignObject> create(std::map<UINT, std::string> formats,
                                       IDataObject* behind = nullptr) {
    return Pointer<ForeignObject>::adopted(new ForeignObject(std::move(formats), behind));
  }

  HRESULT STDMETHODCALLTYPE GetData(FORMATETC* format, STGMEDIUM* medium) noexcept override {
    if (behind_) return behind_->GetData(format, medium);
    const auto found = formats_.find(format->cfFormat);
    if (found == formats_.end()) return DV_E_FORMATETC;
    ++reads;
    *medium = {};
    medium->tymed = TYMED_HGLOBAL;
    medium->hGlobal = GlobalAlloc(GMEM_MOVEABLE, found->second.size());
    std::memcpy(GlobalLock(medium->hGlobal), found->second.data(), found->second.size());
    GlobalUnlock(medium->hGlobal);
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryGetData(FORMATETC* format) noexcept override {
    if (behind_) return behind_->QueryGetData(format);
    return formats_.contains(format->cfFormat) ? S_OK : DV_E_FORMATETC;
  }
  HRESULT STDMETHODCALLTYPE GetDataHere(FORMATETC*, STGMEDIUM*) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE GetCanonicalFormatEtc(FORMATETC*, FORMATETC*) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE SetData(FORMATETC*, STGMEDIUM*, BOOL) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE EnumFormatEtc(DWORD, IEnumFORMATETC**) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DAdvise(FORMATETC*, DWORD, IAdviseSink*, DWORD*) noexcept override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE DUnadvise(DWORD) noexcept override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE EnumDAdvise(IEnumSTATDATA**) noexcept override { return E_NOTIMPL; }

  int reads = 0;

 private:
  std::map<UINT, std::string> formats_;
  Pointer<IDataObject> behind_;
};

/// The number of references to the object besides this one.
template <class Object>
ULONG others_of(const Pointer<Object>& object) {
  object->AddRef();
  return object->Release() - 1;
}

}  // namespace qel::test
