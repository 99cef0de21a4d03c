// The control in documents and designers: where it is kept, what it gives as data, how it is asked.

#include <gtest/gtest.h>

#include "com/Host.h"

namespace qel::com::test {
namespace {

class Embedded : public testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  void TearDown() override {
    handle_messages();
    control_ = {};
    EXPECT_TRUE(component_.is_idle()) << "an object was left behind";
  }

  std::wstring markup() const {
    BSTR text = nullptr;
    control_->get_TextQEL(&text);
    return taken(text);
  }
  void put_markup(const wchar_t* text) const { control_->put_TextQEL(Text(text)); }

  Component component_;
  Pointer<IQELTextbox> control_ = component_.create<IQELTextbox>(__uuidof(::QELTextbox));
};

TEST_F(Embedded, IsKeptInADocument) {
  Pointer<IStorage> document;
  ASSERT_EQ(StgCreateDocfile(
                nullptr, STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_DELETEONRELEASE,
                0, document.put()),
            S_OK);
  const auto kept = control_.as<IPersistStorage>();
  ASSERT_TRUE(kept);
  EXPECT_EQ(kept->InitNew(document.get()), S_OK);
  EXPECT_EQ(kept->IsDirty(), S_FALSE);
  EXPECT_EQ(kept->Load(document.get()), STG_E_FILENOTFOUND);
  put_markup(L"a/b1b/b0");
  // Saved elsewhere it stays dirty; saved at home, or where its home is from now on, it does not.
  const struct {
    BOOL is_own;
    IStorage* moved_to;
    HRESULT dirty;
  } saves[] = {{FALSE, nullptr, S_OK}, {TRUE, nullptr, S_FALSE}, {FALSE, document.get(), S_FALSE}};
  for (const auto& save : saves) {
    put_markup(L"");
    put_markup(L"a/b1b/b0");
    EXPECT_EQ(kept->Save(document.get(), save.is_own), S_OK);
    EXPECT_EQ(kept->HandsOffStorage(), S_OK);
    EXPECT_EQ(kept->SaveCompleted(save.moved_to), S_OK);
    EXPECT_EQ(kept->IsDirty(), save.dirty);
  }
  put_markup(L"other");
  EXPECT_EQ(kept->Load(document.get()), S_OK);
  EXPECT_EQ(markup(), L"a/b1b/b0");
}

TEST_F(Embedded, IsDataForItsHost) {
  put_markup(L"a/b1b/b0");
  const auto data = control_.as<IDataObject>();
  ASSERT_TRUE(data);
  Pointer<IDataObject> copied;
  EXPECT_EQ(control_.as<IOleObject>()->GetClipboardData(0, copied.put()), S_OK);
  put_markup(L"later");
  STGMEDIUM medium = {};
  const auto text_of = [&](IDataObject& object) {
    FORMATETC format = {CF_UNICODETEXT, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    EXPECT_EQ(object.GetData(&format, &medium), S_OK);
    std::wstring text = static_cast<const wchar_t*>(GlobalLock(medium.hGlobal));
    GlobalUnlock(medium.hGlobal);
    ReleaseStgMedium(&medium);
    return text;
  };
  EXPECT_EQ(text_of(*copied), L"ab") << "what the clipboard has stays";
  EXPECT_EQ(text_of(*data), L"later");

  Pointer<IEnumFORMATETC> formats;
  ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, formats.put()), S_OK);
  FORMATETC format = {};
  int count = 0;
  for (; formats->Next(1, &format, nullptr) == S_OK; ++count) {
    EXPECT_EQ(data->QueryGetData(&format), S_OK) << format.cfFormat;
    ASSERT_EQ(data->GetData(&format, &medium), S_OK) << format.cfFormat;
    if (format.cfFormat == CF_METAFILEPICT) {
      SIZEL size = {};
      control_.as<IOleObject>()->GetExtent(DVASPECT_CONTENT, &size);
      const auto* const frame = static_cast<METAFILEPICT*>(GlobalLock(medium.hMetaFilePict));
      EXPECT_EQ(frame->xExt, size.cx);
      EXPECT_GT(GetMetaFileBitsEx(frame->hMF, 0, nullptr), 100U);
      GlobalUnlock(medium.hMetaFilePict);
    }
    ReleaseStgMedium(&medium);
  }
  EXPECT_GE(count, 4) << "a picture, RTF and text of two kinds";
  format.cfFormat = CF_BITMAP;
  EXPECT_TRUE(FAILED(data->GetData(&format, &medium)));

  AdviseSink sink;
  DWORD cookie = 0;
  format = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};
  EXPECT_EQ(data->DAdvise(&format, ADVF_NODATA, &sink, &cookie), S_OK);
  control_->put_BackColor(255);
  EXPECT_EQ(sink.told, "data ");
  EXPECT_EQ(data->DUnadvise(cookie), S_OK);
}

TEST_F(Embedded, OffersTheValuesOfItsProperties) {
  const auto browsing = control_.as<IPerPropertyBrowsing>();
  ASSERT_TRUE(browsing);
  constexpr DISPID scroll_bars = 46;
  BSTR shown = nullptr;
  control_->put_ScrollBars(sbVertical);
  EXPECT_EQ(browsing->GetDisplayString(scroll_bars, &shown), S_OK);
  EXPECT_EQ(taken(shown), L"2 - A vertical scroll bar");
  CALPOLESTR texts = {};
  CADWORD cookies = {};
  ASSERT_EQ(browsing->GetPredefinedStrings(scroll_bars, &texts, &cookies), S_OK);
  ASSERT_EQ(texts.cElems, 4U);
  ASSERT_EQ(cookies.cElems, 4U);
  EXPECT_STREQ(texts.pElems[3], L"3 - Both scroll bars");
  VARIANT value = {};
  EXPECT_EQ(browsing->GetPredefinedValue(scroll_bars, cookies.pElems[3], &value), S_OK);
  EXPECT_EQ(value.lVal, sbBoth);
  EXPECT_EQ(browsing->GetPredefinedValue(scroll_bars, 77, &value), E_INVALIDARG);
  for (ULONG i = 0; i < texts.cElems; ++i) CoTaskMemFree(texts.pElems[i]);
  CoTaskMemFree(texts.pElems);
  CoTaskMemFree(cookies.pElems);
  EXPECT_EQ(browsing->GetDisplayString(DISPID_TEXT, &shown), S_FALSE) << "any text";
  EXPECT_EQ(browsing->GetPredefinedStrings(DISPID_TEXT, &texts, &cookies), S_FALSE);
  CLSID page = {};
  EXPECT_EQ(browsing->MapPropertyToPage(scroll_bars, &page), PERPROP_E_NOPAGEAVAILABLE);
}

TEST_F(Embedded, IsActivatedInOneCall) {
  Called events;
  int told = 0;
  events.act = [&](DISPID, DISPPARAMS&, VARIANT*) { return ++told, S_OK; };
  NoticeSink notices;
  QACONTAINER host = {};
  host.cbSize = sizeof host;
  host.pUnkEventSink = &events;
  host.pPropertyNotifySink = &notices;
  QACONTROL answer = {};
  const auto quick = control_.as<IQuickActivate>();
  ASSERT_TRUE(quick);
  EXPECT_EQ(quick->QuickActivate(&host, &answer), E_INVALIDARG) << "of another size";
  answer.cbSize = sizeof answer;
  EXPECT_EQ(quick->QuickActivate(&host, &answer), S_OK);
  DWORD status = 0;
  control_.as<IOleObject>()->GetMiscStatus(DVASPECT_CONTENT, &status);
  EXPECT_EQ(answer.dwMiscStatus, status);
  EXPECT_EQ(answer.dwViewStatus, static_cast<DWORD>(VIEWSTATUS_OPAQUE));
  control_->put_Text(Text(L"a"));
  EXPECT_EQ(told, 1);
  EXPECT_FALSE(notices.changed.empty());
  const auto container = control_.as<IConnectionPointContainer>();
  Pointer<IConnectionPoint> point;
  container->FindConnectionPoint(__uuidof(QELTextboxEvents), point.put());
  EXPECT_EQ(point->Unadvise(answer.dwEventCookie), S_OK);
  container->FindConnectionPoint(IID_IPropertyNotifySink, point.put());
  EXPECT_EQ(point->Unadvise(answer.dwPropNotifyCookie), S_OK);
  SIZEL size = {1000, 500};
  EXPECT_EQ(quick->SetContentExtent(&size), S_OK);
  RECTL place = {};
  EXPECT_EQ(control_.as<IViewObjectEx>()->GetRect(DVASPECT_CONTENT, &place), S_OK);
  EXPECT_EQ(place.right, 1000);
  EXPECT_EQ(place.bottom, 500);
}

TEST_F(Embedded, IsHitWithinItsBounds) {
  const auto view = control_.as<IViewObjectEx>();
  ASSERT_TRUE(view);
  const RECT bounds = {10, 10, 20, 20};
  const struct {
    POINT point;
    DWORD hit;
  } cases[] = {{{10, 10}, HITRESULT_HIT}, {{19, 19}, HITRESULT_HIT}, {{20, 19}, HITRESULT_OUTSIDE}};
  for (const auto& each : cases) {
    DWORD hit = 99;
    EXPECT_EQ(view->QueryHitPoint(DVASPECT_CONTENT, &bounds, each.point, 0, &hit), S_OK);
    EXPECT_EQ(hit, each.hit) << each.point.x;
  }
  const RECT beside = {0, 0, 10, 30};
  DWORD hit = 99;
  EXPECT_EQ(view->QueryHitRect(DVASPECT_CONTENT, &bounds, &beside, 0, &hit), S_OK);
  EXPECT_EQ(hit, static_cast<DWORD>(HITRESULT_OUTSIDE));
}

}  // namespace
}  // namespace qel::com::test
