#include "com/control/Choices.h"

#include <olectl.h>
#include <qelcom.h>

#include <algorithm>

#include "com/automation/Errors.h"
#include "com/automation/TypeLibrary.h"
#include "com/automation/Values.h"
#include "com/control/CallerString.h"
#include "qel/base/Error.h"

namespace qel::com {
namespace {

Choice choice_of(ITypeInfo& enumeration, const VARDESC& value) {
  BSTR help = nullptr;
  enumeration.GetDocumentation(value.memid, nullptr, &help, nullptr, nullptr);
  const LONG number = value.lpvarValue->lVal;
  Choice choice = {number, std::to_wstring(number) + L" - " + (help == nullptr ? L"" : help)};
  SysFreeString(help);
  return choice;
}

std::vector<Choice> choices_in(ITypeInfo& enumeration) {
  std::vector<Choice> choices;
  VARDESC* value = nullptr;
  for (UINT i = 0; SUCCEEDED(enumeration.GetVarDesc(i, &value)); ++i) {
    choices.push_back(choice_of(enumeration, *value));
    enumeration.ReleaseVarDesc(value);
  }
  return choices;
}

/// The type of a property as the type library names it; none for the types that need no name.
Pointer<ITypeInfo> named_type(ITypeInfo& info, DISPID property) {
  Pointer<ITypeInfo> type;
  FUNCDESC* function = nullptr;
  for (UINT i = 0; !type && SUCCEEDED(info.GetFuncDesc(i, &function)); ++i) {
    const TYPEDESC& given = function->elemdescFunc.tdesc;
    if (function->memid == property && function->invkind == INVOKE_PROPERTYGET &&
        given.vt == VT_USERDEFINED) {
      info.GetRefTypeInfo(given.hreftype, type.put());
    }
    info.ReleaseFuncDesc(function);
  }
  return type;
}

LONG value_of_property(IDispatch& control, DISPID property) {
  Value value;
  DISPPARAMS none = {};
  control.Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value.put(),
                 nullptr, nullptr);
  return value.as_integer();
}

template <class List>
void make(List& list, std::size_t count) {
  list.cElems = static_cast<ULONG>(count);
  list.pElems = static_cast<decltype(list.pElems)>(CoTaskMemAlloc(count * sizeof *list.pElems));
  if (list.pElems == nullptr) throw std::bad_alloc();
}

}  // namespace

std::vector<Choice> choices_of(DISPID property) {
  Pointer<ITypeInfo> info;
  if (FAILED(type_info(__uuidof(IQELTextbox), info.put()))) return {};
  const Pointer<ITypeInfo> type = named_type(*info, property);
  return type ? choices_in(*type) : std::vector<Choice>();
}

HRESULT Choices::GetDisplayString(DISPID property, BSTR* text) {
  if (text == nullptr) return E_POINTER;
  *text = nullptr;
  const HRESULT done = guarded(IID_IPerPropertyBrowsing, [&] {
    const std::vector<Choice> choices = choices_of(property);
    if (choices.empty()) return;
    const LONG value = value_of_property(control_, property);
    const auto place = std::find_if(choices.begin(), choices.end(),
                                    [&](const Choice& choice) { return choice.value == value; });
    if (place != choices.end()) *text = SysAllocString(place->text.c_str());
  });
  return done == S_OK && *text == nullptr ? S_FALSE : done;
}

HRESULT Choices::MapPropertyToPage(DISPID property, CLSID* page) {
  if (page == nullptr) return E_POINTER;
  constexpr DISPID font_name = 44;
  const bool is_on_page = property == font_name;
  *page = is_on_page ? __uuidof(::QELTextboxPage) : CLSID_NULL;
  return is_on_page ? S_OK : PERPROP_E_NOPAGEAVAILABLE;
}

HRESULT Choices::GetPredefinedStrings(DISPID property, CALPOLESTR* texts, CADWORD* cookies) {
  if (texts == nullptr || cookies == nullptr) return E_POINTER;
  *texts = {};
  *cookies = {};
  const HRESULT done = guarded(IID_IPerPropertyBrowsing, [&] {
    const std::vector<Choice> choices = choices_of(property);
    if (choices.empty()) return;
    make(*cookies, choices.size());
    make(*texts, choices.size());
    for (std::size_t i = 0; i < choices.size(); ++i) {
      cookies->pElems[i] = static_cast<DWORD>(choices[i].value);
      texts->pElems[i] = for_caller(choices[i].text.c_str());
    }
  });
  return done == S_OK && texts->cElems == 0 ? S_FALSE : done;
}

HRESULT Choices::GetPredefinedValue(DISPID property, DWORD cookie, VARIANT* value) {
  if (value == nullptr) return E_POINTER;
  VariantInit(value);
  return guarded(IID_IPerPropertyBrowsing, [&] {
    for (const Choice& choice : choices_of(property)) {
      if (choice.value != static_cast<LONG>(cookie)) continue;
      value->vt = VT_I4;
      value->lVal = choice.value;
    }
    if (value->vt == VT_EMPTY)
      throw Error(static_cast<std::uint32_t>(E_INVALIDARG), "QELTextbox",
                  "the property has no such value");
  });
}

}  // namespace qel::com
