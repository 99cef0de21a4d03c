// Values between a host and the component: variables by reference, failures, colours.
#include <gtest/gtest.h>
#include <qelcom.h>

#include <array>

#include "com/Host.h"

namespace qel::com::test {
namespace {

class ValuesTest : public testing::Test {
 protected:
  ValuesTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~ValuesTest() override { CoUninitialize(); }
};

TEST_F(ValuesTest, ChangesVariablesOfAnyType) {
  const Component component;
  const auto text = component.create<IQELText>(__uuidof(QELText));
  for (const VARTYPE type :
       {VT_I2, VT_I4, VT_I8, VT_R4, VT_R8, VT_UI1, VT_CY, VT_BSTR, VT_DECIMAL}) {
    VARIANT five = {};
    five.vt = VT_I2;
    five.iVal = 5;
    VARIANT variable = {};
    ASSERT_EQ(VariantChangeType(&variable, &five, 0, type), S_OK);
    VARIANT argument = {};
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    argument.byref = type == VT_DECIMAL ? static_cast<void*>(&variable.decVal) : &variable.llVal;
    BSTR shortened = nullptr;
    EXPECT_EQ(text->LeftStr(Text(L"abc"), &argument, &shortened), S_OK) << type;
    EXPECT_EQ(taken(shortened), L"abc");
    variable.vt = type;  // a decimal number lies over its type
    EXPECT_EQ(VariantChangeType(&variable, &variable, 0, VT_I2), S_OK);
    EXPECT_EQ(variable.iVal, 3) << "put right in a variable of type " << type;
  }

  VARIANT inner = {};
  inner.vt = VT_R8;
  inner.dblVal = 5;
  VARIANT outer = {};
  outer.vt = VT_BYREF | VT_VARIANT;
  outer.pvarVal = &inner;
  BSTR result = nullptr;
  EXPECT_EQ(text->LeftStr(Text(L"abc"), &outer, &result), S_OK);
  SysFreeString(result);
  EXPECT_EQ(inner.vt, VT_I2);
  EXPECT_EQ(inner.iVal, 3);

  inner.vt = VT_BSTR;
  inner.bstrVal = SysAllocString(L"five");
  EXPECT_EQ(text->LeftStr(Text(L"abc"), &outer, &result), static_cast<HRESULT>(0x800A000D));
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(taken(inner.bstrVal), L"five");
  EXPECT_EQ(text->LeftStr(Text(L"abc"), nullptr, &result), static_cast<HRESULT>(0x800A005B));
}

TEST_F(ValuesTest, AreTheSameInVariables) {
  const Component component;
  const auto parser = component.create<IRTFParser>(__uuidof(RTFParser));
  const Text text(L"a\n");
  BSTR variable = text;
  VARIANT given = {};
  given.vt = VT_BSTR;
  given.bstrVal = text;
  VARIANT reference = {};
  reference.vt = VT_BYREF | VT_BSTR;
  reference.pbstrVal = &variable;
  BSTR result = nullptr;
  parser->put_Lossless(VARIANT_TRUE);
  for (const VARIANT& source : {given, reference}) {
    EXPECT_EQ(parser->Convert(source, cfMarkup, cfMarkup, {}, {}, &result), S_OK);
    EXPECT_EQ(taken(result), L"a/nl") << source.vt;
  }
}

/// What a host gives to draw on, which fails when it is asked for anything.
class FailingCanvas final : public Called {
 public:
  explicit FailingCanvas(HRESULT failure) : failure_(failure) {}

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override {
    *ids = 1;
    return S_OK;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO* exception,
                      UINT*) override {
    if (failure_ == DISP_E_EXCEPTION) {
      exception->wCode = 1234;
      exception->bstrSource = SysAllocString(L"Canvas");
      exception->pfnDeferredFillIn = describe;
    }
    return failure_;
  }

 private:
  static HRESULT STDMETHODCALLTYPE describe(EXCEPINFO* exception) {
    exception->bstrDescription = SysAllocString(L"no \u20AC pen");
    return S_OK;
  }

  HRESULT failure_;
};

TEST_F(ValuesTest, HandsOnWhatTheHostFailsWith) {
  struct Row {
    HRESULT failure;
    HRESULT result;
    const wchar_t* source;
    const wchar_t* description;
  };
  const std::array rows = {
      Row{DISP_E_EXCEPTION, static_cast<HRESULT>(0x800A04D2), L"Canvas", L"no \u20AC pen"},
      Row{DISP_E_BADPARAMCOUNT, static_cast<HRESULT>(0x800A01C2), L"QELText",
          L"the object refuses hDC"},
      Row{E_ACCESSDENIED, E_ACCESSDENIED, L"QELText", L"the object refuses hDC"},
  };
  const Component component;
  const auto text = component.create<IQELText>(__uuidof(QELText));
  for (const Row& row : rows) {
    FailingCanvas canvas(row.failure);
    EXPECT_EQ(text->SetCanvas(&canvas), row.result);
    const Report report = last_report();
    EXPECT_EQ(report.source, row.source);
    EXPECT_EQ(report.description, row.description);
  }
  EXPECT_EQ(text->SetCanvas(nullptr), S_OK);
}

TEST_F(ValuesTest, AsksTheSystemForItsColors) {
  constexpr int element = COLOR_BTNFACE;
  const COLORREF before = GetSysColor(element);
  const COLORREF other = 0x123456;
  ASSERT_TRUE(SetSysColors(1, &element, &other));
  const Component component;
  const auto colors = component.create<IQELIndexColors>(__uuidof(QELIndexColors));
  OLE_COLOR color = 0;
  EXPECT_EQ(colors->put_Color(3, 0x80000000 + element), S_OK);
  EXPECT_EQ(colors->get_NoteColor(&color), S_OK);
  EXPECT_EQ(color, other);
  SetSysColors(1, &element, &before);
}

}  // namespace
}  // namespace qel::com::test
