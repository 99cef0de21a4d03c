#include "com/control/Ambients.h"

#include <optional>

namespace qel::com {
namespace {

std::optional<COLORREF> color_in(const Value& value) {
  if (value.type() != VT_I4 && value.type() != VT_UI4) return {};
  return windows::color_value(static_cast<Color>(value.get().lVal));
}

bool flag_in(const Value& value, bool otherwise) {
  return value.type() == VT_BOOL ? value.get().boolVal != VARIANT_FALSE : otherwise;
}

}  // namespace

Value ambient(const Pointer<IOleClientSite>& site, DISPID property) {
  const Pointer<IDispatch> host = site.as<IDispatch>();
  Value value;
  if (!host) return value;
  DISPPARAMS none = {};
  const HRESULT done = host->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                    &none, value.put(), nullptr, nullptr);
  return FAILED(done) ? Value() : value;
}

void Ambients::read_colors(const Pointer<IOleClientSite>& site) {
  const auto background = color_in(ambient(site, DISPID_AMBIENT_BACKCOLOR));
  const auto text = color_in(ambient(site, DISPID_AMBIENT_FORECOLOR));
  const bool is_scheme =
      background && text && windows::is_dark(*background) && !windows::is_dark(*text);
  scheme_ = {};
  if (!is_scheme) return;
  scheme_.background = background;
  scheme_.text = text;
}

void Ambients::read(const Pointer<IOleClientSite>& site, DISPID property) {
  const auto asks_for = [&](DISPID id) { return property == id || property == DISPID_UNKNOWN; };
  if (asks_for(DISPID_AMBIENT_USERMODE)) {
    is_run_time_ = flag_in(ambient(site, DISPID_AMBIENT_USERMODE), true);
  }
  if (asks_for(DISPID_AMBIENT_UIDEAD)) {
    is_ui_dead_ = flag_in(ambient(site, DISPID_AMBIENT_UIDEAD), false);
  }
  if (asks_for(DISPID_AMBIENT_BACKCOLOR) || asks_for(DISPID_AMBIENT_FORECOLOR)) read_colors(site);
  if (asks_for(DISPID_AMBIENT_DISPLAYNAME)) {
    const Value name = ambient(site, DISPID_AMBIENT_DISPLAYNAME);
    name_ = name.type() == VT_BSTR ? text_of(name.get().bstrVal) : std::u16string_view();
  }
}

}  // namespace qel::com
