#pragma once

#include <ocidl.h>

#include "com/control/Part.h"

namespace qel::com {

/// Names the property page to hosts.
class Pages final : public Part<ISpecifyPropertyPages> {
 public:
  using Part::Part;

  STDMETHODIMP GetPages(CAUUID* pages) override;
};

/// Shows the properties of a control: the host does, or else the system.
HRESULT show_properties(IUnknown& control, IOleClientSite* host, HWND parent);

}  // namespace qel::com
