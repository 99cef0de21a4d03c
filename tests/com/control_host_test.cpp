// The control in a window of the system's own container, driven by keys and by what hosts call.

#include <gtest/gtest.h>
#include <objsafe.h>

#include "com/Host.h"

namespace qel::com::test {
namespace {

class Control : public testing::Test {
 protected:
  static void SetUpTestSuite() { OleInitialize(nullptr); }
  void TearDown() override {
    handle_messages();
    EXPECT_TRUE(component_.is_idle()) << "an object was left behind";
  }

  Component component_;
};

TEST_F(Control, ActsOnShortcutsAndTellsItsHost) {
  Form form(component_);
  ASSERT_TRUE(form.control());
  OLE_HANDLE window = 0;
  form->get_hWnd(&window);
  EXPECT_TRUE(IsChild(form.window(), reinterpret_cast<HWND>(static_cast<INT_PTR>(window))));
  std::vector<DISPID> events;
  bool cancels = false;
  bool makes_italic = false;
  Called sink;
  sink.act = [&](DISPID event, DISPPARAMS& arguments, VARIANT*) {
    events.push_back(event);
    // Of two arguments the first one comes last.
    if (event == DISPID_KEYDOWN && cancels) *arguments.rgvarg[1].piVal = 0;
    if (event == DISPID_KEYDOWN && makes_italic) {
      *arguments.rgvarg[1].piVal = L'I';
      *arguments.rgvarg[0].piVal = 2;
    }
    if (event == DISPID_KEYPRESS && *arguments.rgvarg[0].piVal == L'a') {
      *arguments.rgvarg[0].piVal = L'z';
    }
    return S_OK;
  };
  const Connection connection(*form.control(), __uuidof(QELTextboxEvents), sink);
  ASSERT_TRUE(connection.holds());
  SetFocus(form.box());
  press('B', {VK_CONTROL});
  type(L"ba");
  EXPECT_EQ(form.markup(), L"/b1bz/b0");
  constexpr DISPID change = 1;
  const std::vector<DISPID> expected = {
      DISPID_KEYDOWN,  DISPID_KEYDOWN,  change,      DISPID_KEYUP, DISPID_KEYUP,
      DISPID_KEYDOWN,  DISPID_KEYPRESS, change,      DISPID_KEYUP, DISPID_KEYDOWN,
      DISPID_KEYPRESS, change,          DISPID_KEYUP};
  EXPECT_EQ(events, expected);
  cancels = true;
  press('I', {VK_CONTROL});
  type(L"b");
  EXPECT_EQ(form.markup(), L"/b1bz/b0") << "a host cancels keys";

  cancels = false;
  makes_italic = true;
  form->put_SelStart(0);
  form->put_SelLength(2);
  press(VK_F9);
  EXPECT_EQ(form.markup(), L"/b1/i1bz/b0/i0") << "a host makes another key of it";
  Pointer<IObjectSafety> safety;
  form->QueryInterface(IID_IObjectSafety, reinterpret_cast<void**>(safety.put()));
  constexpr DWORD caller = INTERFACESAFE_FOR_UNTRUSTED_CALLER;
  EXPECT_EQ(safety->SetInterfaceSafetyOptions(IID_IDispatch, caller, caller), S_OK);
  press(VK_F9);
  EXPECT_EQ(form.markup(), L"/b1/i1bz/b0/i0") << "a page that is not trusted does not";
}

TEST_F(Control, KeepsItsPropertiesInABag) {
  Bag bag;
  {
    Form form(component_);
    form->put_Multiline(VARIANT_TRUE);
    form->put_NoteColor(255);
    const auto storage = form.control().as<IPersistPropertyBag>();
    ASSERT_TRUE(storage);
    EXPECT_EQ(storage->Save(&bag, TRUE, FALSE), S_OK);
    EXPECT_EQ(bag.values.size(), 2U) << "presets are not kept";
    EXPECT_EQ(bag.values[L"NoteColor"], L"255");
    form->put_Lossless(VARIANT_TRUE);
    form.put_markup(L"/y4x/y0/c1y/c0/nl~/b1");
    EXPECT_EQ(storage->Save(&bag, TRUE, FALSE), S_OK);
    EXPECT_EQ(bag.values[L"Lossless"], L"True");
    Bag all;
    EXPECT_EQ(storage->Save(&all, FALSE, TRUE), S_OK);
    EXPECT_EQ(all.values.size(), 33U);
  }
  bag.values[L"HideColor"] = L"no colour";
  Form form(component_);
  EXPECT_EQ(form.control().as<IPersistPropertyBag>()->Load(&bag, nullptr), S_OK);
  EXPECT_EQ(form.markup(), L"/y4x/y0/c1y/c0/nl~/b1");
  SetFocus(form.box());
  press(VK_END, {VK_CONTROL});
  type(L"0/i1");
  EXPECT_EQ(form.markup(), L"/y4x/y0/c1y/c0/nl~/b10~/i1") << "typed codes are text, too";
  OLE_COLOR color = 0;
  form->get_HideColor(&color);
  EXPECT_EQ(color, 0x00FF0000U) << "what does not convert is the preset";
}

TEST_F(Control, KeepsItsPropertiesInAStream) {
  Pointer<IStream> stream;
  CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
  Form form(component_);
  const auto storage = form.control().as<IPersistStreamInit>();
  ASSERT_TRUE(storage);
  form.put_markup(L"kept \\ /i1\u20AC/i0");
  EXPECT_EQ(storage->IsDirty(), S_OK);
  ULARGE_INTEGER most = {};
  EXPECT_EQ(storage->GetSizeMax(&most), S_OK);
  ASSERT_EQ(storage->Save(stream.get(), TRUE), S_OK);
  EXPECT_EQ(storage->IsDirty(), S_FALSE);
  STATSTG status = {};
  stream->Stat(&status, STATFLAG_NONAME);
  EXPECT_EQ(status.cbSize.QuadPart, most.QuadPart);

  form.put_markup(L"other");
  stream->Seek({}, STREAM_SEEK_SET, nullptr);
  EXPECT_EQ(storage->Load(stream.get()), S_OK);
  EXPECT_EQ(form.markup(), L"kept \\ /i1\u20AC/i0");

  // Cut off anywhere it is an error, and nothing has changed.
  for (const ULONGLONG size : {ULONGLONG{0}, ULONGLONG{3}, ULONGLONG{8}, most.QuadPart - 2}) {
    ULARGE_INTEGER cut = {};
    cut.QuadPart = size;
    stream->SetSize(cut);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    EXPECT_TRUE(FAILED(storage->Load(stream.get()))) << size;
    EXPECT_EQ(form.markup(), L"kept \\ /i1\u20AC/i0");
  }
  EXPECT_EQ(storage->InitNew(), S_OK);
  EXPECT_EQ(form.markup(), L"");
}

TEST_F(Control, AsksAndTellsWhoIsBoundToIt) {
  Form form(component_);
  NoticeSink sink;
  const Connection connection(*form.control(), IID_IPropertyNotifySink, sink);
  ASSERT_TRUE(connection.holds());
  form.put_markup(L"a");
  form->put_BackColor(255);
  form->put_Lossless(VARIANT_TRUE);
  constexpr DISPID lossless = 82;
  EXPECT_EQ(sink.changed, (std::vector<DISPID>{DISPID_TEXT, DISPID_VALUE, DISPID_VALUE,
                                               DISPID_BACKCOLOR, lossless}));
  sink.allows = false;
  EXPECT_EQ(form->put_Text(Text(L"b")), CTL_E_PERMISSIONDENIED);
  EXPECT_EQ(form.markup(), L"a");
  sink.changed.clear();
  SetFocus(form.box());
  type(L"x");
  EXPECT_EQ(sink.changed, (std::vector<DISPID>{DISPID_TEXT, DISPID_VALUE})) << "typing tells, too";
}

TEST_F(Control, OpensItsLargeEditor) {
  Form form(component_);
  opened_editors = 0;
  SetTimer(nullptr, 0, 20, close_editor);
  EXPECT_EQ(form->InvokeLargeEditor(), S_OK);
  EXPECT_EQ(opened_editors, 1);
}

TEST_F(Control, OutlivesTheWindowOfItsHost) {
  Form form(component_);
  form.put_markup(L"a/b1b/b0");
  const Pointer<IQELTextbox> kept = form.control();
  form.close();
  EXPECT_EQ(form.markup(), L"a/b1b/b0");
  EXPECT_EQ(kept->put_SelBold(VARIANT_TRUE), S_OK);
  EXPECT_EQ(kept->put_Multiline(VARIANT_TRUE), S_OK);
}

TEST_F(Control, SurvivesAHostThatLetsGoOfItInAnEvent) {
  Form form(component_);
  Called sink;
  int events = 0;
  auto connection = std::make_unique<Connection>(*form.control(), __uuidof(QELTextboxEvents), sink);
  sink.act = [&](DISPID, DISPPARAMS&, VARIANT*) {
    ++events;
    form.control() = {};
    if (form.window() != nullptr) form.close();
    return S_OK;
  };
  SetFocus(form.box());
  press('B', {VK_CONTROL});
  EXPECT_GE(events, 1);
  connection.reset();
}

}  // namespace
}  // namespace qel::com::test
