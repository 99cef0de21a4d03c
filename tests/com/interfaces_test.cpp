// What the type library says of the interfaces, and that the objects do it.
#include <gtest/gtest.h>
#include <qelcom.h>

#include <functional>
#include <map>
#include <vector>

#include "com/Component.h"

namespace qel::com::test {
namespace {

/// One line for each class, in the order of the interface: `Name:type` is a property that is read
/// and written, `Name.type` one that is only read, `Name=type` one that is only written, with its
/// indexes in brackets; `Name(types)type` is a method. The types: s text, i 16 bits, l 32 bits,
/// f single, b Boolean, c colour, e enumeration, v variant, V variant by reference, d any object,
/// u enumerator, <Class>; "?" may be left out, "?-1" has that default.
const std::map<std::wstring, std::wstring> interfaces = {
    {L"IiStyle",
     L"Name:s Size:f Bold:b Italic:b Underline:b SmallCaps:b StrikeThru:b Superscript:b "
     L"Subscript:b FontID:i ColorID:i TitleCase:b Unicode:b Ignored:b Hidden:b Note:b "
     L"OnCodes(<iStyle>)s OffCodes(<iStyle>)s DifferentOnCodes(<iStyle><iStyle>)s "
     L"DifferentOffCodes(<iStyle><iStyle>)s All:s Initialize() v6OnCodes(<iStyle>)s "
     L"v6OffCodes(<iStyle>)s v6DifferentOnCodes(<iStyle><iStyle>)s "
     L"v6DifferentOffCodes(<iStyle><iStyle>)s"},
    {L"ISegment", L"Text:s Style.<iStyle>"},
    {L"ISegmentCollection",
     L"Add(s<iStyle>)<Segment> Count.l IndexOf(<Segment>)l InsertBefore(s<iStyle>l)<Segment> "
     L"InsertAfter(s<iStyle>l)<Segment> Clear() Item(l).<Segment> Remove(l) _NewEnum.u"},
    {L"IStyleDecoder",
     L"QELText:s SetQELText(sl) Segments.<SegmentCollection> SegmentCount.l SegmentText(l)s "
     L"SegmentStyle(l)<iStyle> IsQELCode(se?0)b GetQELText(lbb)s GetQELTextv6(lbb)s QELTextv6.s "
     L"QELTextWithoutIgnored.s Text.s SetCustomCodes(s) TextCustom.s OnCodes(<iStyle>s?)s "
     L"OffCodes(<iStyle>s?)s CustomOffCodes(<iStyle>s?)s DivideSegmentsGivenSelStartAndLength(ii) "
     L"GetSegmentIndexGivenStartAndLength(iiV)i GetSegmentGivenStartAndLength(ii)<Segment> "
     L"ApplyStyleToText(ii<iStyle>) ApplyAttributeToSegmentedText(iilb) Words.<WordCollection> "
     L"WordCount.l WordText(l)s WordSegmentCount(l)l WordSegment(ll)<Segment> "
     L"WordSegmentIndex(ll)l TrimStr(s)s LTrimStr(s)s RTrimStr(s)s RemoveLeadingPunctuation(s)s "
     L"RemoveTrailingPunctuation(s)s"},
    {L"IWord", L"Text.s SegmentCount()l Segment(l)<Segment> SegmentIndex(l)l"},
    {L"IWordCollection", L"Count.l Item(l).<Word> _NewEnum.u"},
    {L"IcReplaceData",
     L"DontChangeStyle:b DontChangeFont:b DontChangeColor:b Bold:b Italic:b Underline:b "
     L"StrikeOut:b Superscript:b Subscript:b FontID:i ColorID:i All:s Initialize() Ignored:b "
     L"Hidden:b Note:b"},
    {L"IQELIndexLabels",
     L"All:s ActiveLabelIndex:i ActiveLabelColor.c CopyFrom(<QELIndexLabels>) "
     L"CopyTo(<QELIndexLabels>) Color(i):c Name(i):s"},
    {L"IQELIndexColors",
     L"ColorIndexGivenColor(c)i ConvertSystemColor(c)c All:s ColorTable.s Labels.<QELIndexLabels> "
     L"ActiveLabelIndex:i ActiveLabelColor.c CopyFrom(<QELIndexColors>) CopyTo(<QELIndexColors>) "
     L"Color(i):c DefaultColor:c LabelColor(i):c LabelName(i):s IgnoredColor:c HiddenColor:c "
     L"NoteColor:c"},
    {L"IQELIndexFonts",
     L"FontIndexGivenFontName(s)i FontTable(d?)s All:s CopyFrom(<QELIndexFonts>) Font(i):s "
     L"DefaultFont:s FontSize:f"},
    {L"IRTFParser",
     L"QELToRTF(s<QELIndexFonts><QELIndexColors>)s QELToRTFWithoutTables(s)s IsQELCode(s)b "
     L"ConvertSystemColor(c)c ConvertNLToSpace:b ConvertTabsToSpace:b RecognizeCRLF:b "
     L"RecognizeTabs:b RTFToQEL(s<QELIndexFonts><QELIndexColors>)s "
     L"SimpleRTF(s<QELIndexFonts><QELIndexColors>)s RTFToText(s)s PreprocessRTF(s)s"},
    {L"ITextCase",
     L"TextCase:e IgnoredWordList:s LowerCase(sii)s UpperCase(sii)s ChangeCase(sii)s "
     L"TitleCase(siib)s InitialCap(sii)s FirstToLower(sii)s FirstToUpper(sii)s AutoTitleCase(s)s "
     L"AutoTitleCaseRTF(s)s AutoInitialCap(s)s AutoInitialCapRTF(s)s UpperCaseRTF(s)s "
     L"LowerCaseRTF(s)s IsAlphabet(s)b IsQuote(s)b IsWhitespace(s)b IsLeftQuote(s)b"},
    {L"ITextAndFormatting",
     L"Canvas:d SetFonts(<QELIndexFonts>) SetColors(<QELIndexColors>) "
     L"SetFontAndColors(<QELIndexFonts><QELIndexColors>) Fonts.<QELIndexFonts> "
     L"Colors.<QELIndexColors> DefaultFont:s DefaultFontSize:f ForeColor:c IgnoredColor:c "
     L"HiddenColor:c NoteColor:c Align:i WordWrap:b RevealCodes:b ShowHiddenText:b IgnoreColors:b "
     L"LabelID:i fmtTextWidth(s)f TextHeight(s)f LineCount(sff)i GetLine(sffi)s "
     L"WriteParagraph(sffff?0)f LinesPrinted.i fmtLen(s)i fmtInStr(ss)i fmtRevInStr(ss)i "
     L"fmtLeft(si)s fmtRight(si)s fmtMid(sii)s IsSortCode(s)b IsEscapeCode(s)b RomanToArabic(s)s"},
    {L"IQELText",
     L"NewiStyleObject()<iStyle> NewStyleDecoderObject()<StyleDecoder> "
     L"StyleDecoderObj.<StyleDecoder> InString(ssi?-1)i InStringRev(ssi?-1)i LenStr(s)i "
     L"PlainText(s)s LeftStr(sV)s RightStr(sV)s MidStr(sii?-1)s Stuff(siis<iStyle>?)s "
     L"StuffWithStyleData(siisd)s Split(ss)v Compare(ssi?0)b ToggleTextAttribute(lii) QELText:s "
     L"SetQELText(sl) QELTextv6.s GetQELText(lbb)s GetQELTextv6(lbb)s SetCustomCodes(s) "
     L"TextCustom.s IsQELCode(se?0)b Segments.<SegmentCollection> SegmentText(l)s "
     L"SegmentStyle(l)<iStyle> ApplyStyleToText(ii<iStyle>) "
     L"DivideSegmentsGivenSelStartAndLength(ii) GetSegmentGivenStartAndLength(ii)<Segment> "
     L"GetSegmentIndexGivenStartAndLength(iiV)i WordCount.l WordText(l)s WordSegmentCount(l)l "
     L"WordSegment(ll)<Segment> WordSegmentIndex(ll)l TrimStr(s)s LTrimStr(s)s RTrimStr(s)s "
     L"RemoveLeadingPunctuation(s)s RemoveTrailingPunctuation(s)s SetFonts(<QELIndexFonts>) "
     L"SetColors(<QELIndexColors>) SetFontAndColors(<QELIndexFonts><QELIndexColors>) "
     L"Fonts.<QELIndexFonts> Colors.<QELIndexColors> Align:i IgnoredColor:c HiddenColor:c "
     L"NoteColor:c IgnoreColors:b DefaultFont:s FontName:s DefaultFontSize:f FontSize=f WordWrap:b "
     L"RevealCodes:b ForeColor:c Labeled:i ShowHiddenText:b SetCanvas(d) fmtTextWidth(s)f "
     L"TextHeight(s)f LineCount(sff)i GetLine(sffi)s WriteParagraph(sffff?0)f LinesPrinted.i "
     L"RomanToArabic(s)s IgnoredWordList:s LowerCase(sii)s UpperCase(sii)s ChangeCase(sii)s "
     L"TitleCase(siib)s InitialCap(sii)s FirstLetterToLowercase(sii)s FirstLetterToUppercase(sii)s "
     L"AutoTitleCase(s)s AutoTitleCaseRTF(s)s AutoInitialCap(s)s AutoInitialCapRTF(s)s "
     L"UpperCaseRTF(s)s LowerCaseRTF(s)s"},
    {L"ILinkedList",
     L"AddToTop(v)l AddToBottom(v)l AddBeforeCurrent(v)l AddAfterCurrent(v)l DeleteCurrent()v "
     L"RemoveCurrentLink()v Clear() Compress() Current()l First()l Last()l GetData(l)v SetData(v)l "
     L"GotoFirst()l GotoLast()l GotoNext()l GotoPrevious()l GotoID(l) SetCurrent(l)l Count()l "
     L"ListIndex()l MoveCurrentToTop()l MoveCurrentToBottom()l MoveCurrentUpOne()l "
     L"MoveCurrentDownOne()l"},
};

/// A description of a user's own type: an enumeration, or an interface by its class.
std::wstring shown_reference(ITypeInfo& info, HREFTYPE reference) {
  Pointer<ITypeInfo> target;
  TYPEATTR* attributes = nullptr;
  info.GetRefTypeInfo(reference, target.put());
  target->GetTypeAttr(&attributes);
  const TYPEKIND kind = attributes->typekind;
  target->ReleaseTypeAttr(attributes);
  return kind == TKIND_ENUM ? L"e" : L"<" + name_of(*target).substr(1) + L">";
}

std::wstring shown(ITypeInfo& info, const TYPEDESC& type) {
  static const std::map<VARTYPE, std::wstring> names = {
      {VT_BSTR, L"s"}, {VT_I2, L"i"},      {VT_I4, L"l"},       {VT_R4, L"f"},      {VT_BOOL, L"b"},
      {VT_UI4, L"c"},  {VT_VARIANT, L"v"}, {VT_DISPATCH, L"d"}, {VT_UNKNOWN, L"u"}, {VT_VOID, L""}};
  if (type.vt == VT_USERDEFINED) return shown_reference(info, type.hreftype);
  if (type.vt == VT_PTR) {
    return type.lptdesc->vt == VT_VARIANT ? L"V" : shown(info, *type.lptdesc);
  }
  const auto name = names.find(type.vt);
  return name == names.end() ? L"#" + std::to_wstring(type.vt) : name->second;
}

std::wstring shown_argument(ITypeInfo& info, const ELEMDESC& argument) {
  std::wstring text = shown(info, argument.tdesc);
  const USHORT flags = argument.paramdesc.wParamFlags;
  if ((flags & (PARAMFLAG_FOPT | PARAMFLAG_FHASDEFAULT)) != 0) text += L"?";
  if ((flags & PARAMFLAG_FHASDEFAULT) == 0) return text;
  VARIANT value;
  VariantInit(&value);
  VARIANT& given = argument.paramdesc.pparamdescex->varDefaultValue;
  const bool is_number = argument.tdesc.vt != VT_PTR && argument.tdesc.vt != VT_DISPATCH;
  if (is_number && SUCCEEDED(VariantChangeType(&value, &given, 0, VT_BSTR))) {
    text += taken(value.bstrVal);
  }
  return text;
}

/// Calls `visit(function)` for each member that is no part of `IDispatch`.
template <class Visit>
void each_function(ITypeInfo& info, Visit visit) {
  FUNCDESC* function = nullptr;
  for (UINT i = 0; SUCCEEDED(info.GetFuncDesc(i, &function)); ++i) {
    if (function->memid < 0x60000000) visit(*function);
    info.ReleaseFuncDesc(function);
  }
}

std::wstring shown_interface(ITypeInfo& info) {
  std::vector<MEMBERID> order;
  std::map<MEMBERID, std::wstring> texts;
  each_function(info, [&](const FUNCDESC& function) {
    std::wstring arguments;
    for (SHORT i = 0; i < function.cParams; ++i) {
      arguments += shown_argument(info, function.lprgelemdescParam[i]);
    }
    const bool is_put = (function.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0;
    const bool is_get = function.invkind == INVOKE_PROPERTYGET;
    std::wstring type = shown(info, function.elemdescFunc.tdesc);
    if (is_put) {
      type = arguments.substr(arguments.size() - 1);
      arguments.pop_back();
    }
    std::wstring& text = texts[function.memid];
    if (text.empty()) order.push_back(function.memid);
    const bool is_second = !text.empty();
    const bool is_method = !is_put && !is_get;
    text = name_of(info, function.memid);
    if (is_method || !arguments.empty()) text += L"(" + arguments + L")";
    if (!is_method) text += is_second ? L":" : is_put ? L"=" : L".";
    text += type;
  });
  std::wstring all;
  for (const MEMBERID member : order) all += (all.empty() ? L"" : L" ") + texts[member];
  return all;
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

TEST_F(InterfacesTest, HasTheMembersInTheirOrder) {
  std::map<std::wstring, std::wstring> found;
  each_type(*component_.type_library(), [&](ITypeInfo& info, const TYPEATTR& attributes) {
    if (attributes.typekind == TKIND_DISPATCH && (attributes.wTypeFlags & TYPEFLAG_FDUAL) != 0) {
      found[name_of(info)] = shown_interface(info);
    }
  });
  for (const auto& [name, members] : interfaces) EXPECT_EQ(found[name], members);
}

TEST_F(InterfacesTest, NamesTheLibrary) {
  BSTR name = nullptr;
  BSTR text = nullptr;
  component_.type_library()->GetDocumentation(-1, &name, &text, nullptr, nullptr);
  EXPECT_EQ(taken(name), L"QEL");
  EXPECT_EQ(taken(text),
            L"QEL Textbox - A Rich Textbox that reads/writes QEL Software text coding");
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

/// Calls a member by its place in the table of the interface, with nothing for all arguments.
HRESULT call_with_nothing(IDispatch& object, ITypeInfo& info, const FUNCDESC& function) {
  const std::vector<VARIANT> values(static_cast<std::size_t>(function.cParams));
  std::vector<VARTYPE> types;
  std::vector<VARIANTARG*> arguments;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const TYPEDESC& type = function.lprgelemdescParam[i].tdesc;
    const bool is_plain = type.vt != VT_PTR && type.vt != VT_USERDEFINED;
    types.push_back(is_plain ? type.vt : static_cast<VARTYPE>(sizeof(void*) == 8 ? VT_I8 : VT_I4));
    arguments.push_back(const_cast<VARIANT*>(&values[i]));
  }
  Pointer<IUnknown> target;
  TYPEATTR* attributes = nullptr;
  info.GetTypeAttr(&attributes);
  object.QueryInterface(attributes->guid, reinterpret_cast<void**>(target.put()));
  info.ReleaseTypeAttr(attributes);
  VARIANT result = {};
  DispCallFunc(target.get(), static_cast<ULONG_PTR>(function.oVft), CC_STDCALL, VT_ERROR,
               static_cast<UINT>(values.size()), types.data(), arguments.data(), &result);
  return result.scode;
}

TEST_F(InterfacesTest, AnswersWhereThereIsNoPlaceForTheResult) {
  each_object([](const std::wstring& name, IDispatch& object) {
    Pointer<ITypeInfo> table;
    HREFTYPE reference = 0;
    const auto info = info_of(object);
    ASSERT_EQ(info->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference), S_OK);
    ASSERT_EQ(info->GetRefTypeInfo(reference, table.put()), S_OK);
    each_function(*table, [&](const FUNCDESC& function) {
      if (function.cParams == 0) return;
      const PARAMDESC& last = function.lprgelemdescParam[function.cParams - 1].paramdesc;
      if ((last.wParamFlags & PARAMFLAG_FRETVAL) == 0) return;
      EXPECT_EQ(call_with_nothing(object, *table, function), E_POINTER)
          << name << L"." << name_of(*table, function.memid);
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
