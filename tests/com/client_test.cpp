// A host in C++: creates the objects from the loaded component and calls them by their interfaces.
#include <gtest/gtest.h>
#include <objsafe.h>
#include <qelcom.h>

#include <array>
#include <functional>
#include <future>
#include <thread>

#include "com/Component.h"

namespace qel::com::test {
namespace {

class ClientTest : public testing::Test {
 protected:
  ClientTest() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  ~ClientTest() override { CoUninitialize(); }
};

TEST_F(ClientTest, LeavesNothingOfManyControls) {
  const Component component;
  const auto use = [&] {
    const auto box = component.create<IQELTextbox>(__uuidof(QELTextbox));
    ASSERT_TRUE(box);
    box->put_TextQEL(Text(L"a/b1b/b0"));
    BSTR text = nullptr;
    box->get_TextRTF(&text);
    EXPECT_NE(taken(text).find(L"\\b"), std::wstring::npos);
    OLE_HANDLE context = 0;
    box->get_hDC(&context);
  };
  use();
  const auto handles = filled_handles();
  for (int i = 0; i < 10000; ++i) use();
  EXPECT_FALSE(leaves_handles(handles));
  EXPECT_TRUE(component.is_idle());
}

TEST_F(ClientTest, CountsWhatIsInUse) {
  const Component component;
  auto text = component.create<IQELText>(__uuidof(QELText));
  Pointer<IStyleDecoder> decoder;
  Pointer<ISegmentCollection> segments;
  Pointer<IUnknown> enumerator;
  text->put_QELText(Text(L"a/b1b/b0"));
  text->get_StyleDecoderObj(decoder.put());
  text = {};
  decoder->get_Segments(segments.put());
  decoder = {};
  segments->get__NewEnum(enumerator.put());
  segments = {};
  EXPECT_FALSE(component.is_idle());
  VARIANT item = {};
  EXPECT_EQ(enumerator.as<IEnumVARIANT>()->Next(1, &item, nullptr), S_OK);
  enumerator = {};
  EXPECT_FALSE(component.is_idle());
  VariantClear(&item);
  EXPECT_TRUE(component.is_idle());

  Pointer<IClassFactory> factory;
  component.class_object(__uuidof(iStyle), IID_IClassFactory,
                         reinterpret_cast<void**>(factory.put()));
  factory->LockServer(TRUE);
  factory = {};
  EXPECT_FALSE(component.is_idle());
  component.class_object(__uuidof(iStyle), IID_IClassFactory,
                         reinterpret_cast<void**>(factory.put()));
  factory->LockServer(FALSE);
  factory = {};
  EXPECT_TRUE(component.is_idle());
}

TEST_F(ClientTest, RefusesWhatIsNotThere) {
  const Component component;
  void* result = &result;
  EXPECT_EQ(component.class_object(IID_IUnknown, IID_IClassFactory, &result),
            CLASS_E_CLASSNOTAVAILABLE);
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(component.class_object(__uuidof(iStyle), IID_IDispatch, &result), E_NOINTERFACE);
  EXPECT_EQ(component.class_object(__uuidof(iStyle), IID_IClassFactory, nullptr), E_POINTER);

  Pointer<IClassFactory> factory;
  ASSERT_EQ(component.class_object(__uuidof(iStyle), IID_IClassFactory,
                                   reinterpret_cast<void**>(factory.put())),
            S_OK);
  result = &result;
  EXPECT_EQ(factory->CreateInstance(factory.get(), IID_IDispatch, &result), CLASS_E_NOAGGREGATION);
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(factory->QueryInterface(IID_IUnknown, nullptr), E_POINTER);

  const auto style = component.create<IDispatch>(__uuidof(iStyle));
  EXPECT_EQ(style.as<IiStyle>()->get_Name(nullptr), E_POINTER);
  EXPECT_EQ(style.as<IiStyle>()->get_Bold(nullptr), E_POINTER);
  const auto decoder = component.create<IStyleDecoder>(__uuidof(StyleDecoder));
  EXPECT_EQ(decoder->get_SegmentCount(nullptr), E_POINTER);
  EXPECT_EQ(decoder->get_Segments(nullptr), E_POINTER);
  EXPECT_EQ(style->QueryInterface(__uuidof(ISegment), &result), E_NOINTERFACE);
  EXPECT_EQ(result, nullptr);
  EXPECT_EQ(style->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
  EXPECT_EQ(style->GetTypeInfo(1, 0, reinterpret_cast<ITypeInfo**>(&result)), DISP_E_BADINDEX);
  DISPID member = 0;
  std::array name = {const_cast<wchar_t*>(L"Bold")};
  EXPECT_EQ(style->GetIDsOfNames(IID_IUnknown, name.data(), 1, 0, &member),
            DISP_E_UNKNOWNINTERFACE);
  name.front() = const_cast<wchar_t*>(L"Bolder");
  EXPECT_EQ(style->GetIDsOfNames(IID_NULL, name.data(), 1, 0, &member), DISP_E_UNKNOWNNAME);
}

/// An object that has one of the component's as a part of it: it offers all that the part does.
class Whole final : public IUnknown {
 public:
  Whole(const Component& component, const CLSID& id) {
    Pointer<IClassFactory> factory;
    component.class_object(id, IID_IClassFactory, reinterpret_cast<void**>(factory.put()));
    factory->CreateInstance(this, IID_IUnknown, reinterpret_cast<void**>(part_.put()));
  }
  Whole(const Whole&) = delete;
  Whole& operator=(const Whole&) = delete;
  ~Whole() { part_ = {}; }

  STDMETHODIMP QueryInterface(REFIID id, void** result) override {
    if (id != IID_IUnknown) return part_->QueryInterface(id, result);
    *result = this;
    ++references;
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }

  ULONG references = 1;

 private:
  Pointer<IUnknown> part_;
};

TEST_F(ClientTest, IsPartOfAnotherObject) {
  const Component component;
  std::vector<CLSID> ids = {__uuidof(QELTextbox)};
  each_class(*component.type_library(),
             [&](const CLSID& id, const std::wstring&) { ids.push_back(id); });
  for (const CLSID& id : ids) {
    Whole whole(component, id);
    {
      const auto object = Pointer<IUnknown>(&whole).as<IDispatch>();
      ASSERT_TRUE(object);
      EXPECT_EQ(whole.references, 2U);
      EXPECT_EQ(object.as<IUnknown>().get(), &whole);
      EXPECT_EQ(object.as<IProvideClassInfo>().as<IUnknown>().get(), &whole);
      EXPECT_FALSE(component.is_idle());
    }
    EXPECT_EQ(whole.references, 1U) << "references are the whole's";
  }
  EXPECT_TRUE(component.is_idle()) << "an object was left behind";
  Whole form(component, __uuidof(QELTextbox));
  const Pointer<IUnknown> outside(&form);
  const auto box = outside.as<IOleObject>();
  EXPECT_EQ(box.as<IDataObject>().as<IUnknown>().get(), &form) << "so do its parts";
  const auto own = outside.as<IQELTextbox>();
  own->put_ScrollBars(sbBoth);
  BSTR shown = nullptr;
  EXPECT_EQ(box.as<IPerPropertyBrowsing>()->GetDisplayString(46, &shown), S_OK);
  EXPECT_EQ(taken(shown), L"3 - Both scroll bars");
}

TEST_F(ClientTest, IsUnloadedAndLoadedAgain) {
  const auto use = [](const Component& component) {
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const auto text = component.create<IQELText>(__uuidof(QELText));
    SHORT length = 0;
    text->LenStr(Text(L"/b1ab/b0"), &length);
    EXPECT_EQ(length, 2);
    CoUninitialize();
  };
  for (int i = 0; i < 3; ++i) {
    // One thread ends before the component goes, the other one after it.
    std::promise<void> used;
    std::promise<void> unloaded;
    std::thread late;
    {
      const Component component;
      use(component);
      std::thread(use, std::cref(component)).join();
      late = std::thread([&] {
        use(component);
        used.set_value();
        unloaded.get_future().wait();
      });
      used.get_future().wait();
      EXPECT_TRUE(component.is_idle());
    }
    EXPECT_FALSE(Component::is_loaded()) << i;
    unloaded.set_value();
    late.join();
  }
}

TEST_F(ClientTest, ReportsErrors) {
  const Component component;
  const auto labels = component.create<IQELIndexLabels>(__uuidof(QELIndexLabels));
  OLE_COLOR color = 0;
  labels->get_Color(5, &color);
  EXPECT_EQ(labels->put_Color(2, color), static_cast<HRESULT>(0x80042AFA));
  Report report = last_report();
  EXPECT_EQ(report.source, L"QELIndexLabels");
  EXPECT_EQ(report.description,
            L"You attempted to set a label color that is being used by one of the other already "
            L"defined label colors.");
  EXPECT_EQ(report.interface_id, __uuidof(IQELIndexLabels));

  EXPECT_EQ(labels->CopyFrom(nullptr), static_cast<HRESULT>(0x800A005B));
  EXPECT_EQ(last_report().source, L"QELIndexLabels");
  const auto list = component.create<ILinkedList>(__uuidof(LinkedList));
  VARIANT value = {};
  value.vt = VT_I4;
  EXPECT_EQ(list->GetData(99, &value), static_cast<HRESULT>(0x800A0009));
  EXPECT_EQ(value.vt, VT_EMPTY);
  EXPECT_EQ(last_report().source, L"LinkedList");

  const auto support = list.as<ISupportErrorInfo>();
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(ILinkedList)), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IiStyle)), S_FALSE);
}

TEST_F(ClientTest, TellsItsClass) {
  const Component component;
  int classes = 0;
  each_class(*component.type_library(), [&](const CLSID& id, const std::wstring& name) {
    ++classes;
    const auto object = component.create<IDispatch>(id);
    Pointer<ITypeInfo> info;
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(object.as<IProvideClassInfo>()->GetClassInfo(info.put()), S_OK) << name;
    info->GetTypeAttr(&attributes);
    EXPECT_EQ(attributes->guid, id) << name;
    info->ReleaseTypeAttr(attributes);
    EXPECT_EQ(object.as<IProvideClassInfo>()->GetClassInfo(nullptr), E_POINTER);
    EXPECT_EQ(object.as<IUnknown>().get(), object.as<ISupportErrorInfo>().as<IUnknown>().get());
  });
  EXPECT_EQ(classes, 12);
  EXPECT_TRUE(component.is_idle()) << "an object was left behind";
}

Pointer<IObjectSafety> safety_of(IUnknown& object) {
  Pointer<IObjectSafety> safety;
  object.QueryInterface(IID_IObjectSafety, reinterpret_cast<void**>(safety.put()));
  return safety;
}

TEST_F(ClientTest, IsSafeForPagesOfOthers) {
  const Component component;
  constexpr DWORD caller = INTERFACESAFE_FOR_UNTRUSTED_CALLER;
  constexpr DWORD data = INTERFACESAFE_FOR_UNTRUSTED_DATA;
  const auto distrust = [&](const Pointer<IDispatch>& object) {
    const auto safety = safety_of(*object);
    ASSERT_TRUE(safety);
    DWORD supported = 0;
    DWORD enabled = 99;
    EXPECT_EQ(safety->GetInterfaceSafetyOptions(IID_IDispatch, &supported, &enabled), S_OK);
    EXPECT_EQ(supported, caller | data);
    EXPECT_EQ(enabled, 0U);
    EXPECT_EQ(safety->SetInterfaceSafetyOptions(IID_IDispatch, 0x80, 0x80), E_FAIL);
    EXPECT_EQ(safety->SetInterfaceSafetyOptions(IID_IStorage, data, data), E_NOINTERFACE);
    EXPECT_EQ(safety->SetInterfaceSafetyOptions(IID_IDispatch, caller | data, caller), S_OK);
    safety->GetInterfaceSafetyOptions(IID_IDispatch, &supported, &enabled);
    EXPECT_EQ(enabled, caller);
  };
  each_class(*component.type_library(), [&](const CLSID& id, const std::wstring&) {
    distrust(component.create<IDispatch>(id));
  });

  const auto box = component.create<IDispatch>(__uuidof(QELTextbox));
  const auto text = component.create<IDispatch>(__uuidof(QELText));
  const auto layout = component.create<IDispatch>(__uuidof(TextAndFormatting));
  for (const auto& object : {box, text, layout}) distrust(object);
  constexpr auto refused = static_cast<HRESULT>(0x800A0046);
  EXPECT_EQ(box.as<IQELTextbox>()->PasteClipboardContents(), refused);
  EXPECT_EQ(box.as<IQELTextbox>()->OLEDrag(), refused);
  EXPECT_EQ(text.as<IQELText>()->SetCanvas(box.get()), refused);
  EXPECT_EQ(text.as<IQELText>()->SetCanvas(nullptr), S_OK);
  const auto parser = component.create<IDispatch>(__uuidof(RTFParser));
  distrust(parser);
  EXPECT_EQ(parser.as<IRTFParser>()->ConvertFile(Text(L"a"), Text(L"b.qel"), cfRTF, cfRTF, {}, {}),
            refused);
  EXPECT_EQ(layout.as<ITextAndFormatting>()->putref_Canvas(box.get()), refused);
  safety_of(*text)->SetInterfaceSafetyOptions(IID_IDispatch, caller, 0);
  EXPECT_EQ(text.as<IQELText>()->SetCanvas(box.get()), S_OK);
}

std::wstring text_of_segment(const VARIANT& item) {
  const auto segment = Pointer<IDispatch>(item.pdispVal).as<ISegment>();
  BSTR text = nullptr;
  segment->get_Text(&text);
  return taken(text);
}

TEST_F(ClientTest, WalksCollections) {
  const Component component;
  const auto decoder = component.create<IStyleDecoder>(__uuidof(StyleDecoder));
  decoder->put_QELText(Text(L"a/b1b/b0c/i1d/i0"));
  Pointer<ISegmentCollection> segments;
  Pointer<IUnknown> unknown;
  decoder->get_Segments(segments.put());
  segments->get__NewEnum(unknown.put());
  const auto walk = unknown.as<IEnumVARIANT>();
  Pointer<IEnumVARIANT> copy;
  // The calls, what they answer, and the segments they give.
  std::array<VARIANT, 5> items = {};
  const auto next = [&](IEnumVARIANT& from, ULONG count, HRESULT expected) {
    ULONG fetched = 99;
    EXPECT_EQ(from.Next(count, items.data(), &fetched), expected);
    std::wstring texts;
    for (ULONG i = 0; i < fetched; ++i) {
      texts += text_of_segment(items[i]);
      VariantClear(&items[i]);
    }
    return texts;
  };
  EXPECT_EQ(next(*walk, 2, S_OK), L"ab");
  EXPECT_EQ(walk->Clone(copy.put()), S_OK);
  EXPECT_EQ(next(*walk, 5, S_FALSE), L"cd");
  EXPECT_EQ(copy->Skip(1), S_OK);
  EXPECT_EQ(next(*copy, 1, S_OK), L"d");
  EXPECT_EQ(copy->Skip(1), S_FALSE);
  EXPECT_EQ(copy->Reset(), S_OK);
  EXPECT_EQ(copy->Skip(0xFFFFFFFF), S_FALSE);
  EXPECT_EQ(walk->Next(2, items.data(), nullptr), E_POINTER);
  EXPECT_EQ(walk->Next(1, nullptr, nullptr), E_POINTER);
  EXPECT_EQ(walk->Clone(nullptr), E_POINTER);

  walk->Reset();
  segments->Clear();
  EXPECT_EQ(next(*walk, 1, S_FALSE), L"");
}

TEST_F(ClientTest, IsCreatedByItsManifest) {
  const std::wstring manifest =
      Component::path().replace(Component::path().rfind(L'.'), 4, L".manifest");
  const std::wstring folder = manifest.substr(0, manifest.rfind(L'\\'));
  ACTCTXW wanted = {};
  wanted.cbSize = sizeof wanted;
  wanted.dwFlags = ACTCTX_FLAG_ASSEMBLY_DIRECTORY_VALID;
  wanted.lpSource = manifest.c_str();
  wanted.lpAssemblyDirectory = folder.c_str();
  HANDLE context = CreateActCtxW(&wanted);
  ASSERT_NE(context, INVALID_HANDLE_VALUE) << GetLastError();
  ULONG_PTR cookie = 0;
  ASSERT_TRUE(ActivateActCtx(context, &cookie));
  const Component component;
  each_class(*component.type_library(), [&](const CLSID& id, const std::wstring& name) {
    std::array<CLSID, 3> ids = {id};
    CLSIDFromProgID((L"QEL." + name).c_str(), &ids[1]);
    CLSIDFromProgID((L"QEL." + name + L".1").c_str(), &ids[2]);
    for (const CLSID& created : ids) {
      Pointer<IDispatch> object;
      EXPECT_EQ(CoCreateInstance(created, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                                 reinterpret_cast<void**>(object.put())),
                S_OK)
          << name;
    }
  });
  DeactivateActCtx(0, cookie);
  ReleaseActCtx(context);
  CoFreeUnusedLibraries();
}

}  // namespace
}  // namespace qel::com::test
