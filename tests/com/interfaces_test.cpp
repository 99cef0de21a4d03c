// Every member that the type library describes, called with whatever a host may pass.
#include <gtest/gtest.h>
#include <qelcom.h>

#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>
#include <vector>

#include "com/Component.h"

namespace qel::com::test {
namespace {

/// Calls `visit(function)` for each member that is no part of `IDispatch`.
template <class Visit>
void each_function(ITypeInfo& info, Visit visit) {
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(info.GetFuncDesc(i, &function)); ++i) {
    if (function->memid < 0x60000000) visit(*function);
    info.ReleaseFuncDesc(function);
  }
}

/// Calls `visit(value)` for each value of an enumeration.
template <class Visit>
void each_value(ITypeInfo& info, Visit visit) {
  VARDESC* value = nullptr;
  for (UINT i = 0; SUCCEEDED(info.GetVarDesc(i, &value)); ++i) {
    visit(*value);
    info.ReleaseVarDesc(value);
  }
}

std::string narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

/// The type of a value as compiled hosts pass it, in the system's numbers: an enumeration is a
/// long, an object a pointer.
VARTYPE passed_type(ITypeInfo& info, const TYPEDESC& type) {
  if (type.vt == VT_PTR) return static_cast<VARTYPE>(VT_BYREF | passed_type(info, *type.lptdesc));
  if (type.vt != VT_USERDEFINED) return type.vt;
  Pointer<ITypeInfo> named;
  TYPEATTR* attributes = nullptr;
  info.GetRefTypeInfo(type.hreftype, named.put());
  named->GetTypeAttr(&attributes);
  const VARTYPE passed = attributes->typekind == TKIND_ENUM    ? VARTYPE{VT_I4}
                         : attributes->typekind == TKIND_ALIAS ? attributes->tdescAlias.vt
                                                               : VARTYPE{VT_DISPATCH};
  named->ReleaseTypeAttr(attributes);
  return passed;
}

/// All that compiled hosts rely on, in the library's order: the ids, the numbers of members, how
/// they are called and the types of their arguments, the values of enumerations.
std::string listing(ITypeLib& library) {
  std::ostringstream lines;
  each_type(library, [&](ITypeInfo& info, const TYPEATTR& attributes) {
    lines << narrow(name_of(info)) << std::hex << ' ' << attributes.guid.Data1 << std::dec << '\n';
    each_function(info, [&](const FUNCDESC& function) {
      lines << "  " << function.memid << ' ' << narrow(name_of(info, function.memid)) << ' '
            << function.invkind << ':' << passed_type(info, function.elemdescFunc.tdesc);
      for (SHORT i = 0; i < function.cParams; ++i) {
        lines << ' ' << passed_type(info, function.lprgelemdescParam[i].tdesc);
      }
      lines << '\n';
    });
    each_value(info, [&](const VARDESC& value) {
      lines << "  " << value.lpvarValue->lVal << ' ' << narrow(name_of(info, value.memid)) << '\n';
    });
  });
  return lines.str();
}

class InterfacesTest : public testing::Test {
 protected:
  InterfacesTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~InterfacesTest() override { CoUninitialize(); }

  /// Calls `visit(name, object)` for one object of each class with something in it; what others
  /// make comes from the text object.
  void each_object(const std::function<void(const std::wstring&, IDispatch&)>& visit) {
    each_class(*component_.type_library(), [&](const CLSID& id, const std::wstring& name) {
      if (const auto object = component_.create<IDispatch>(id)) visit(name, *object);
    });
    const auto decoder = component_.create<IStyleDecoder>(__uuidof(StyleDecoder));
    decoder->put_QELText(Text(L"one /b1two/b0 three"));
    Pointer<ISegment> segment;
    decoder->GetSegmentGivenStartAndLength(0, 3, segment.put());
    Pointer<IWordCollection> words;
    decoder->get_Words(words.put());
    Pointer<IWord> word;
    words->get_Item(2, word.put());
    visit(L"StyleDecoder", *decoder);
    visit(L"Segment", *segment);
    visit(L"WordCollection", *words);
    visit(L"Word", *word);
  }

  static Pointer<ITypeInfo> info_of(IDispatch& object) {
    Pointer<ITypeInfo> info;
    object.GetTypeInfo(0, LOCALE_NEUTRAL, info.put());
    return info;
  }

  Component component_;
};

TEST_F(InterfacesTest, KeepsNamesNumbersAndOrder) {
  std::ifstream file(QEL_TEST_DIR "/com/type_library.txt");
  const std::string kept((std::istreambuf_iterator<char>(file)), {});
  const std::string now = listing(*component_.type_library());
  if (kept != now) std::ofstream("type_library.txt", std::ios::binary) << now;
  EXPECT_EQ(kept, now) << "type_library.txt beside the test has what is there now";
}

std::wstring help_of(ITypeInfo& info, MEMBERID member = MEMBERID_NIL) {
  BSTR help = nullptr;
  info.GetDocumentation(member, nullptr, &help, nullptr, nullptr);
  return taken(help);
}

TEST_F(InterfacesTest, ExplainsEverything) {
  each_type(*component_.type_library(), [](ITypeInfo& info, const TYPEATTR&) {
    const std::wstring name = name_of(info);
    EXPECT_NE(help_of(info), L"") << name;
    each_function(info, [&](const FUNCDESC& function) {
      EXPECT_NE(help_of(info, function.memid), L"")
          << name << L"." << name_of(info, function.memid);
    });
    each_value(info, [&](const VARDESC& value) {
      EXPECT_NE(help_of(info, value.memid), L"") << name << L"." << name_of(info, value.memid);
      if (name_of(info, value.memid) == L"dpManual") {
        EXPECT_EQ(help_of(info, value.memid), L"The host handles drops in its events");
      }
    });
  });
}

TEST_F(InterfacesTest, ReadsEveryProperty) {
  each_object([](const std::wstring& name, IDispatch& object) {
    const auto info = info_of(object);
    each_function(*info, [&](const FUNCDESC& function) {
      if (function.invkind != INVOKE_PROPERTYGET) return;
      VARIANT index = {};
      VARIANT result = {};
      index.vt = VT_I2;
      index.iVal = 1;
      DISPPARAMS arguments = {&index, nullptr, static_cast<UINT>(function.cParams), 0};
      EXPECT_EQ(object.Invoke(function.memid, IID_NULL, 0, DISPATCH_PROPERTYGET, &arguments,
                              &result, nullptr, nullptr),
                S_OK)
          << name << L"." << name_of(*info, function.memid);
      VariantClear(&result);
    });
  });
}

/// Values of every kind, good and bad.
class Oddities {
 public:
  explicit Oddities(IDispatch& object) : long_text_(std::wstring(100000, L'/').c_str()) {
    add(VT_EMPTY, 0);
    add(VT_NULL, 0);
    for (const LONGLONG number : {0LL, -1LL, 32767LL, -32768LL, 65536LL, 0x7FFFFFFFLL}) {
      add(VT_I4, number);
      add(VT_CY, number * 1000000);
    }
    add(VT_ERROR, DISP_E_PARAMNOTFOUND);
    add(VT_DISPATCH, 0);
    add(VT_UNKNOWN, 0);
    add(VT_DATE, 0x40E0000000000000);
    for (const LONGLONG bits : {0x7FF8000000000000, 0x7FF0000000000000, 0x7E37E43C8800759C}) {
      add(VT_R8, bits);
    }
    add(VT_BOOL, -1);
    add(VT_BSTR, 0);
    add(VT_BSTR, reinterpret_cast<LONG_PTR>(static_cast<BSTR>(text_)));
    add(VT_BSTR, reinterpret_cast<LONG_PTR>(static_cast<BSTR>(long_text_)));
    add(VT_DISPATCH, reinterpret_cast<LONG_PTR>(&object));
    add(VT_UNKNOWN, reinterpret_cast<LONG_PTR>(&object));
    add(VT_BYREF | VT_I2, reinterpret_cast<LONG_PTR>(&number_));
    add(VT_BYREF | VT_VARIANT, reinterpret_cast<LONG_PTR>(&variable_));
    array_ = SafeArrayCreateVector(VT_VARIANT, 0, 3);
    add(VT_ARRAY | VT_VARIANT, reinterpret_cast<LONG_PTR>(array_));
    add(VT_ARRAY | VT_VARIANT | VT_BYREF, reinterpret_cast<LONG_PTR>(&array_));
  }
  Oddities(const Oddities&) = delete;
  Oddities& operator=(const Oddities&) = delete;
  ~Oddities() { SafeArrayDestroy(array_); }

  std::size_t size() const { return values_.size(); }
  /// `count` of them, from `first` on.
  std::vector<VARIANT> some(std::size_t first, SHORT count) const {
    std::vector<VARIANT> some;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
      some.push_back(values_[(first + i * 7) % values_.size()]);
    }
    return some;
  }

 private:
  void add(int type, LONGLONG bits) {
    VARIANT value = {};
    value.vt = static_cast<VARTYPE>(type);
    value.llVal = bits;
    values_.push_back(value);
  }

  std::vector<VARIANT> values_;
  Text text_{L"/b1a\\b0 {\\rtf1 <Font:Rec>"};
  Text long_text_;
  SHORT number_ = 5;
  VARIANT variable_ = {};
  SAFEARRAY* array_ = nullptr;
};

TEST_F(InterfacesTest, StandsAnyArguments) {
  const auto other = component_.create<IDispatch>(__uuidof(iStyle));
  const Oddities oddities(*other);
  const auto text = component_.create<IQELText>(__uuidof(QELText));
  each_object([&](const std::wstring& name, IDispatch& object) {
    const auto info = info_of(object);
    each_function(*info, [&](const FUNCDESC& function) {
      for (std::size_t i = 0; i < oddities.size(); ++i) {
        std::vector<VARIANT> values = oddities.some(i, function.cParams);
        const bool is_put = (function.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0;
        DISPID put_id = DISPID_PROPERTYPUT;
        DISPPARAMS arguments = {values.data(), is_put ? &put_id : nullptr,
                                static_cast<UINT>(values.size()), is_put ? 1U : 0U};
        VARIANT result = {};
        EXCEPINFO exception = {};
        const HRESULT done =
            object.Invoke(function.memid, IID_NULL, 0, static_cast<WORD>(function.invkind),
                          &arguments, is_put ? nullptr : &result, &exception, nullptr);
        EXPECT_TRUE(done == S_OK || done == DISP_E_EXCEPTION ||
                    (done == DISP_E_MEMBERNOTFOUND && function.memid <= 0))
            << name << L"." << name_of(*info, function.memid) << " " << i << " " << std::hex
            << done;
        if (done == DISP_E_EXCEPTION) {
          EXPECT_FALSE(taken(exception.bstrSource).empty()) << name;
          EXPECT_FALSE(taken(exception.bstrDescription).empty()) << name;
        }
        VariantClear(&result);
      }
    });
    SHORT length = 0;
    EXPECT_EQ(text->LenStr(Text(L"/b1ab/b0"), &length), S_OK);
    EXPECT_EQ(length, 2) << name;
  });
}

}  // namespace
}  // namespace qel::com::test
