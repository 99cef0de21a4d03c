// The classes called by name, without their header: an argument by reference, an array, an error.
// The component has to be registered: regsvr32 qelcom.dll
#include <comdef.h>

#include <algorithm>
#include <iostream>
#include <vector>

namespace {

const wchar_t* shown(const _bstr_t& text) {
  const wchar_t* const characters = text;
  return characters == nullptr ? L"" : characters;
}

/// Calls a member by its name. Arguments may be changed where the member takes them by reference.
_variant_t call(IDispatch* object, const wchar_t* name, std::vector<VARIANT> arguments,
                WORD kind = DISPATCH_METHOD | DISPATCH_PROPERTYGET) {
  auto* member_name = const_cast<wchar_t*>(name);
  DISPID member = DISPID_UNKNOWN;
  _com_util::CheckError(object->GetIDsOfNames(IID_NULL, &member_name, 1, 0, &member));
  // The last argument comes first. The new value of a property has a name of its own.
  std::reverse(arguments.begin(), arguments.end());
  DISPID new_value = DISPID_PROPERTYPUT;
  const bool is_put = kind == DISPATCH_PROPERTYPUT;
  DISPPARAMS parameters = {arguments.data(), is_put ? &new_value : nullptr,
                           static_cast<UINT>(arguments.size()), is_put ? 1U : 0U};
  _variant_t result;
  EXCEPINFO failure = {};
  const HRESULT done = object->Invoke(member, IID_NULL, 0, kind, &parameters,
                                      is_put ? nullptr : &result, &failure, nullptr);
  if (done == DISP_E_EXCEPTION) {
    std::wcout << L"error " << LOWORD(failure.scode) << L" from "
               << shown({failure.bstrSource, false}) << L": "
               << shown({failure.bstrDescription, false}) << L'\n';
    SysFreeString(failure.bstrHelpFile);
  } else {
    _com_util::CheckError(done);
  }
  return result;
}

void show_arguments() {
  _com_ptr_t<_com_IIID<IDispatch, &IID_IDispatch>> text;
  _com_util::CheckError(text.CreateInstance(L"QEL.QELText"));
  call(text, L"Lossless", {_variant_t(true)}, DISPATCH_PROPERTYPUT);

  // By reference: a variant that holds the number, or one that refers to a variable.
  short length = 20;
  VARIANT reference = {};
  reference.vt = VT_BYREF | VT_I2;
  reference.piVal = &length;
  const _variant_t markup(L"/b1abc/b0def");
  const _bstr_t left(call(text, L"LeftStr", {markup, reference}));
  std::wcout << shown(left) << L", " << length << L" characters\n";

  // An array of variants, counted from 0.
  const _variant_t parts = call(text, L"Split", {_variant_t(L"/b1a,b/b0"), _variant_t(L",")});
  VARIANT* part = nullptr;
  _com_util::CheckError(SafeArrayAccessData(parts.parray, reinterpret_cast<void**>(&part)));
  for (ULONG i = 0; i < parts.parray->rgsabound[0].cElements; ++i) {
    std::wcout << part[i].bstrVal << L'\n';
  }
  SafeArrayUnaccessData(parts.parray);

  call(text, L"MidStr", {markup, _variant_t(70000L)});
}

}  // namespace

int main() {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  int status = 0;
  try {
    show_arguments();
  } catch (const _com_error& error) {
    std::cerr << "arguments: error " << std::hex << error.Error() << '\n';
    status = 1;
  }
  CoUninitialize();
  return status;
}
