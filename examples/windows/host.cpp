// Markup to RTF, back to markup, and the runs of the text, by the component's interfaces. Compile
// with qelcom.h, the header of its type library, and register the component before: regsvr32
// qelcom.dll
#include <comdef.h>
#include <qelcom.h>

#include <iostream>

namespace {

/// A new object of the component; raises where it is not registered.
template <class Interface>
_com_ptr_t<_com_IIID<Interface, &__uuidof(Interface)>> create(const CLSID& id) {
  _com_ptr_t<_com_IIID<Interface, &__uuidof(Interface)>> object;
  _com_util::CheckError(object.CreateInstance(id));
  return object;
}

/// What a member gave, now ours.
_bstr_t taken(BSTR text) { return {text, false}; }

void round_trip() {
  const auto fonts = create<IQELIndexFonts>(__uuidof(QELIndexFonts));
  const auto colors = create<IQELIndexColors>(__uuidof(QELIndexColors));
  const auto parser = create<IRTFParser>(__uuidof(RTFParser));
  parser->put_Lossless(VARIANT_TRUE);
  BSTR text = nullptr;
  _com_util::CheckError(parser->QELToRTF(_bstr_t(L"Hello /b1world/b0/nl"), fonts, colors, &text));
  const _bstr_t rtf = taken(text);
  _com_util::CheckError(parser->RTFToQEL(rtf, fonts, colors, &text));
  const _bstr_t markup = taken(text);
  std::wcout << static_cast<const wchar_t*>(markup) << L'\n';

  const auto decoder = create<IStyleDecoder>(__uuidof(StyleDecoder));
  decoder->put_QELText(markup);
  LONG count = 0;
  decoder->get_SegmentCount(&count);
  for (LONG i = 1; i <= count; ++i) {
    IiStyle* style = nullptr;
    VARIANT_BOOL is_bold = VARIANT_FALSE;
    decoder->SegmentText(i, &text);
    decoder->SegmentStyle(i, &style);
    style->get_Bold(&is_bold);
    style->Release();
    std::wcout << static_cast<const wchar_t*>(taken(text))
               << (is_bold != VARIANT_FALSE ? L": True\n" : L": False\n");
  }
}

}  // namespace

int main() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  int status = 0;
  try {
    round_trip();
  } catch (const _com_error& error) {
    std::cerr << "host: error " << std::hex << error.Error() << '\n';
    status = 1;
  }
  CoUninitialize();
  return status;
}
