#pragma once

#include <ocidl.h>

#include <string>
#include <vector>

#include "com/control/Part.h"

namespace qel::com {

/// A value of an enumeration.
struct Choice {
  LONG value;
  std::wstring text;
};

/// The values that a property of a text box may have; none where it may have any.
std::vector<Choice> choices_of(DISPID property);

/// What a grid of properties offers for those that are enumerations: "0 - No line", ...
class Choices final : public Part<IPerPropertyBrowsing> {
 public:
  /// `control` is the control itself, even where it is a part of another object.
  Choices(IUnknown& whole, IDispatch& control) : Part(whole), control_(control) {}

  /// S_FALSE for a property that may have any value.
  STDMETHODIMP GetDisplayString(DISPID property, BSTR* text) override;
  /// The page is for what a grid cannot edit by itself.
  STDMETHODIMP MapPropertyToPage(DISPID property, CLSID* page) override;
  /// S_FALSE for a property that may have any value.
  STDMETHODIMP GetPredefinedStrings(DISPID property, CALPOLESTR* texts, CADWORD* cookies) override;
  STDMETHODIMP GetPredefinedValue(DISPID property, DWORD cookie, VARIANT* value) override;

 private:
  IDispatch& control_;
};

}  // namespace qel::com
