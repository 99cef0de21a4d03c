// The property page of text boxes, in a frame of its own and in the system's.

#include <gtest/gtest.h>

#include <array>

#include "com/Host.h"
#include "com/pages/PageIds.h"

namespace qel::com::test {
namespace {

class Site : public Uncounted<IPropertyPageSite> {
 public:
  int changes = 0;
  int keys = 0;
  std::function<void()> act = [] {};

  STDMETHODIMP OnStatusChange(DWORD status) override {
    changes += status == PROPPAGESTATUS_DIRTY ? 1 : 0;
    return act(), S_OK;
  }
  STDMETHODIMP GetLocaleID(LCID* locale) override { return *locale = LOCALE_USER_DEFAULT, S_OK; }
  STDMETHODIMP GetPageContainer(IUnknown**) override { return E_NOTIMPL; }
  STDMETHODIMP TranslateAccelerator(MSG*) override { return ++keys, S_FALSE; }
};

class Pages : public testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  void SetUp() override {
    CAUUID pages = {};
    ASSERT_EQ(boxes_[0].as<ISpecifyPropertyPages>()->GetPages(&pages), S_OK);
    ASSERT_EQ(pages.cElems, 1U);
    page_ = component_.create<IPropertyPage2>(*pages.pElems);
    CoTaskMemFree(pages.pElems);
    ASSERT_TRUE(page_);
    page_->SetPageSite(&site_);
  }
  void TearDown() override {
    page_->Deactivate();
    page_->SetPageSite(nullptr);
    page_ = {};
    boxes_ = {};
    DestroyWindow(frame_);
    handle_messages();
    EXPECT_TRUE(component_.is_idle()) << "an object was left behind";
  }

  HRESULT show() {
    std::array<IUnknown*, 2> objects = {boxes_[0].get(), boxes_[1].get()};
    EXPECT_EQ(page_->SetObjects(2, objects.data()), S_OK);
    const RECT place = {0, 0, 600, 500};
    const HRESULT done = page_->Activate(frame_, &place, FALSE);
    page_->Show(SW_SHOW);
    return done;
  }
  HWND dialog() const { return GetWindow(frame_, GW_CHILD); }
  HWND control(int id) const { return GetDlgItem(dialog(), id); }
  LRESULT state(int id) const { return SendMessageW(control(id), BM_GETCHECK, 0, 0); }
  LRESULT choice(int id) const { return SendMessageW(control(id), CB_GETCURSEL, 0, 0); }

  Component component_;
  std::array<Pointer<IQELTextbox>, 2> boxes_ = {
      component_.create<IQELTextbox>(__uuidof(::QELTextbox)),
      component_.create<IQELTextbox>(__uuidof(::QELTextbox))};
  HWND frame_ = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 640, 540,
                                nullptr, nullptr, nullptr, nullptr);
  Site site_;
  Pointer<IPropertyPage2> page_;
};

TEST_F(Pages, ChangesWhatTheUserHasChangedInAllBoxes) {
  boxes_[0]->put_BackColor(RGB(255, 255, 0));
  boxes_[1]->put_ScrollBars(sbBoth);
  boxes_[1]->put_RecognizeTabs(VARIANT_TRUE);
  ASSERT_EQ(show(), S_OK);
  EXPECT_EQ(state(QEL_PAGE_ENABLED), BST_CHECKED);
  EXPECT_EQ(state(QEL_PAGE_RECOGNIZE_TABS), BST_INDETERMINATE) << "the boxes differ";
  EXPECT_EQ(choice(QEL_PAGE_SCROLL_BARS), CB_ERR);
  EXPECT_EQ(choice(QEL_PAGE_DROP_MODE), dpManual);
  EXPECT_EQ(page_->IsPageDirty(), S_FALSE);
  EXPECT_EQ(site_.changes, 0);

  SendMessageW(control(QEL_PAGE_MULTILINE), BM_CLICK, 0, 0);
  SetWindowTextW(control(QEL_PAGE_FONT_SIZE), L"many");
  SendMessageW(control(QEL_PAGE_BORDER_STYLE), CB_SETCURSEL, 0, 0);
  SendMessageW(dialog(), WM_COMMAND, MAKEWPARAM(QEL_PAGE_BORDER_STYLE, CBN_SELCHANGE), 0);
  EXPECT_EQ(site_.changes, 3);
  EXPECT_EQ(page_->Apply(), static_cast<HRESULT>(0x800A000D)) << "the size is no number";
  EXPECT_EQ(GetFocus(), control(QEL_PAGE_FONT_SIZE));
  EXPECT_EQ(page_->IsPageDirty(), S_OK);
  SetWindowTextW(control(QEL_PAGE_FONT_SIZE), L"10,5");
  EXPECT_EQ(page_->Apply(), S_OK);
  EXPECT_EQ(page_->IsPageDirty(), S_FALSE);
  for (const auto& box : boxes_) {
    VARIANT_BOOL is_multiline = VARIANT_FALSE;
    FLOAT size = 0;
    BorderStyleKind border = boSingle;
    box->get_Multiline(&is_multiline);
    box->get_FontSize(&size);
    box->get_BorderStyle(&border);
    EXPECT_EQ(is_multiline, VARIANT_TRUE);
    EXPECT_EQ(size, 10.5F);
    EXPECT_EQ(border, boNone);
  }
  ScrollBarsKind bars = sbNone;
  boxes_[1]->get_ScrollBars(&bars);
  EXPECT_EQ(bars, sbBoth) << "what differed and was not touched";
  SendMessageW(control(QEL_PAGE_RECOGNIZE_TABS), BM_CLICK, 0, 0);
  EXPECT_EQ(page_->IsPageDirty(), S_OK);
}

/// A designer that shows something else when it is told of a change.
class Reader : public NoticeSink {
 public:
  std::function<void()> act;

  STDMETHODIMP OnChanged(DISPID) override { return act(), S_OK; }
};

TEST_F(Pages, MayBeClosedWhileTheyChangeBoxes) {
  ASSERT_EQ(show(), S_OK);
  IUnknown* first = boxes_[0].get();
  Reader reader;
  reader.act = [&] {
    EXPECT_EQ(page_->SetObjects(1, &first), S_OK);
    page_->Deactivate();
  };
  const Connection connection(*boxes_[0], IID_IPropertyNotifySink, reader);
  SendMessageW(control(QEL_PAGE_ENABLED), BM_CLICK, 0, 0);
  EXPECT_EQ(page_->Apply(), S_OK);
  for (const auto& box : boxes_) {
    VARIANT_BOOL is_enabled = VARIANT_TRUE;
    box->get_Enabled(&is_enabled);
    EXPECT_EQ(is_enabled, VARIANT_FALSE);
  }

  ASSERT_EQ(show(), S_OK);
  site_.act = [&] { page_->Deactivate(); };
  SendMessageW(control(QEL_PAGE_ENABLED), BM_CLICK, 0, 0);
  EXPECT_EQ(dialog(), nullptr);
  EXPECT_EQ(site_.changes, 2);
}

TEST_F(Pages, ShowsHowItLooks) {
  for (const auto& box : boxes_) box->put_BackColor(RGB(255, 255, 0));
  ASSERT_EQ(show(), S_OK);
  const HDC context = CreateCompatibleDC(nullptr);
  const HBITMAP bitmap = CreateBitmap(200, 60, 1, 32, nullptr);
  const HGDIOBJ before = SelectObject(context, bitmap);
  DRAWITEMSTRUCT item = {};
  item.CtlID = QEL_PAGE_PREVIEW;
  item.hDC = context;
  item.rcItem = {0, 0, 200, 60};
  SendMessageW(dialog(), WM_DRAWITEM, item.CtlID, reinterpret_cast<LPARAM>(&item));
  int paper = 0;
  int ink = 0;
  for (int at = 0; at < 200 * 60; ++at) {
    const COLORREF color = GetPixel(context, at % 200, at / 200);
    (color == RGB(255, 255, 0) ? paper : ink) += 1;
  }
  EXPECT_GT(paper, 6000);
  EXPECT_GT(ink, 500) << "text and border";
  SelectObject(context, before);
  DeleteObject(bitmap);
  DeleteDC(context);
}

TEST_F(Pages, LeadsThroughItsControls) {
  EXPECT_NE(show(), E_UNEXPECTED);
  constexpr DISPID font_name = 44;
  CLSID page = {};
  EXPECT_EQ(boxes_[0].as<IPerPropertyBrowsing>()->MapPropertyToPage(font_name, &page), S_OK);
  EXPECT_EQ(page, __uuidof(::QELTextboxPage));
  EXPECT_EQ(page_->EditProperty(font_name), S_OK);
  EXPECT_TRUE(GetFocus() == control(QEL_PAGE_FONT_NAME) ||
              IsChild(control(QEL_PAGE_FONT_NAME), GetFocus()));
  EXPECT_EQ(page_->EditProperty(DISPID_TEXT), E_NOTIMPL);
  const auto takes = [&](WPARAM key, int from) {
    SetFocus(control(from));
    MSG message = {GetFocus(), WM_KEYDOWN, key, 0, 0, {}};
    return page_->TranslateAccelerator(&message) == S_OK;
  };
  EXPECT_TRUE(takes(VK_TAB, QEL_PAGE_REVEAL_CODES));
  EXPECT_EQ(GetFocus(), control(QEL_PAGE_LOSSLESS));
  EXPECT_EQ(site_.keys, 0);
  EXPECT_FALSE(takes(VK_TAB, QEL_PAGE_DROP_MODE)) << "to the frame's buttons";
  EXPECT_FALSE(takes(VK_RETURN, QEL_PAGE_ENABLED));
  EXPECT_EQ(site_.keys, 2);
  PROPPAGEINFO info = {};
  info.cb = sizeof info;
  EXPECT_EQ(page_->GetPageInfo(&info), S_OK);
  EXPECT_GT(info.size.cx, info.size.cy);
  CoTaskMemFree(info.pszTitle);
  const auto other = component_.create<IUnknown>(__uuidof(::iStyle));
  IUnknown* object = other.get();
  EXPECT_EQ(page_->SetObjects(1, &object), E_NOINTERFACE);
}

int closed_frames = 0;
BOOL CALLBACK close_frame(HWND window, LPARAM) {
  if (IsWindowVisible(window) != FALSE && GetDlgItem(window, IDOK) != nullptr) {
    ++closed_frames;
    PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
  }
  return TRUE;
}

void CALLBACK close_frames(HWND, UINT, UINT_PTR, DWORD) {
  EnumThreadWindows(GetCurrentThreadId(), close_frame, 0);
}

TEST_F(Pages, AreShownByTheSystem) {
  const RegisteredClass page(component_, __uuidof(::QELTextboxPage));
  const UINT_PTR timer = SetTimer(nullptr, 0, 100, close_frames);
  const auto object = boxes_[0].as<IOleObject>();
  EXPECT_EQ(object->DoVerb(OLEIVERB_PROPERTIES, nullptr, nullptr, 0, frame_, nullptr), S_OK);
  KillTimer(nullptr, timer);
  EXPECT_GE(closed_frames, 1);
}

}  // namespace
}  // namespace qel::com::test
