// Values between a host and the component: variables by reference, what is kept, failures.
#include <gtest/gtest.h>
#include <qelcom.h>

#include <array>
#include <cstddef>
#include <string>

#include "com/Component.h"

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
  union {
    SHORT small;
    LONG large;
    LONGLONG huge;
    float single;
    double real;
    BYTE byte;
    CY currency;
    BSTR text;
    DECIMAL decimal;
  } variable = {};
  const auto call = [&](VARTYPE type) {
    VARIANT argument = {};
    argument.vt = static_cast<VARTYPE>(VT_BYREF | type);
    argument.byref = &variable;
    BSTR result = nullptr;
    EXPECT_EQ(text->LeftStr(Text(L"abc"), &argument, &result), S_OK) << type;
    return taken(result);
  };
  // Five characters of three: the variable is put right.
  variable.small = 5;
  EXPECT_EQ(call(VT_I2), L"abc");
  EXPECT_EQ(variable.small, 3);
  variable.large = 5;
  call(VT_I4);
  EXPECT_EQ(variable.large, 3);
  variable.huge = 5;
  call(VT_I8);
  EXPECT_EQ(variable.huge, 3);
  variable.single = 5;
  call(VT_R4);
  EXPECT_EQ(variable.single, 3.0F);
  variable.real = 5;
  call(VT_R8);
  EXPECT_EQ(variable.real, 3.0);
  variable.byte = 5;
  call(VT_UI1);
  EXPECT_EQ(variable.byte, 3);
  variable.currency.int64 = 50000;
  call(VT_CY);
  EXPECT_EQ(variable.currency.int64, 30000);
  variable.text = SysAllocString(L"5");
  call(VT_BSTR);
  EXPECT_EQ(taken(variable.text), L"3");
  VarDecFromI4(5, &variable.decimal);
  call(VT_DECIMAL);
  EXPECT_EQ(variable.decimal.Lo64, 3U);
  EXPECT_EQ(variable.decimal.wReserved, 0);

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

/// An object that tells how often it is held.
class Counted final : public IUnknown {
 public:
  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    *result = id == IID_IUnknown ? this : nullptr;
    if (*result == nullptr) return E_NOINTERFACE;
    ++count;
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++count; }
  STDMETHODIMP_(ULONG) Release() override { return --count; }

  ULONG count = 1;
};

TEST_F(ValuesTest, KeepsValuesOfAnyType) {
  const Component component;
  const auto list = component.create<ILinkedList>(__uuidof(LinkedList));
  Counted object;
  SHORT number = 7;
  Text text(L"text");
  VARIANT inner = {};
  inner.vt = VT_I2;
  inner.iVal = 8;
  std::array<VARIANT, 13> values = {};
  std::size_t count = 0;
  const auto add = [&](int type) -> VARIANT& {
    values[count].vt = static_cast<VARTYPE>(type);
    return values[count++];
  };
  add(VT_EMPTY);
  add(VT_NULL);
  add(VT_UI1).bVal = 200;
  add(VT_I8).llVal = 1LL << 40;
  add(VT_DATE).date = 36526.5;
  add(VT_CY).cyVal.int64 = 12345;
  add(VT_ERROR).scode = DISP_E_PARAMNOTFOUND;
  add(VT_BOOL).boolVal = VARIANT_TRUE;
  add(VT_BSTR).bstrVal = nullptr;
  add(VT_UNKNOWN).punkVal = &object;
  add(VT_BYREF | VT_I2).piVal = &number;
  add(VT_BYREF | VT_VARIANT).pvarVal = &inner;
  VARIANT& array = add(VT_ARRAY | VT_UNKNOWN);
  array.parray = SafeArrayCreateVector(VT_UNKNOWN, 0, 2);
  LONG place = 1;
  SafeArrayPutElement(array.parray, &place, &object);
  VARIANT decimal = {};
  VarDecFromR8(1.25, &decimal.decVal);
  decimal.vt = VT_DECIMAL;

  LONG id = 0;
  for (const VARIANT& value : values) EXPECT_EQ(list->AddToBottom(value, &id), S_OK) << value.vt;
  EXPECT_EQ(list->AddToBottom(decimal, &id), S_OK);
  number = 0;
  inner.iVal = 0;
  VariantClear(&array);
  EXPECT_EQ(object.count, 3U);

  VARIANT got = {};
  const auto get = [&](LONG node) {
    VariantClear(&got);
    EXPECT_EQ(list->GetData(node, &got), S_OK);
    return got.vt;
  };
  for (LONG i = 1; i <= 9; ++i) {
    const VARIANT& value = values[static_cast<std::size_t>(i) - 1];
    EXPECT_EQ(get(i), value.vt);
    EXPECT_TRUE(got.llVal == value.llVal || value.vt == VT_BSTR) << value.vt;
  }
  EXPECT_EQ(get(10), VT_UNKNOWN);
  EXPECT_EQ(got.punkVal, &object);
  EXPECT_EQ(object.count, 4U);
  EXPECT_EQ(get(11), VT_I2);
  EXPECT_EQ(got.iVal, 7);
  EXPECT_EQ(get(12), VT_I2);
  EXPECT_EQ(got.iVal, 8);
  EXPECT_EQ(get(13), VT_ARRAY | VT_UNKNOWN);
  EXPECT_EQ(object.count, 4U);
  EXPECT_EQ(get(14), VT_DECIMAL);
  EXPECT_EQ(got.decVal.Lo64, 125U);

  // What is taken out is the caller's alone; what is cleared is let go.
  list->GotoID(10);
  EXPECT_EQ(list->RemoveCurrentLink(&got), S_OK);
  EXPECT_EQ(object.count, 3U);
  VariantClear(&got);
  EXPECT_EQ(object.count, 2U);
  list->Clear();
  EXPECT_EQ(object.count, 1U);
  EXPECT_TRUE(!component.is_idle());
}

/// What a host gives to draw on, which fails when it is asked for anything.
class FailingCanvas final : public IDispatch {
 public:
  explicit FailingCanvas(HRESULT failure) : failure_(failure) {}

  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    *result = id == IID_IUnknown || id == IID_IDispatch ? this : nullptr;
    return *result != nullptr ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT* /*count*/) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override {
    *ids = 1;
    return S_OK;
  }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO* exception,
                      UINT*) override {
    if (failure_ == DISP_E_EXCEPTION) {
      exception->wCode = 1234;
      exception->bstrSource = SysAllocString(L"Canvas");
      exception->pfnDeferredFillIn = [](EXCEPINFO* late) -> HRESULT {
        late->bstrDescription = SysAllocString(L"no \u20AC pen");
        return S_OK;
      };
    }
    return failure_;
  }

 private:
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
