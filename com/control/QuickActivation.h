#pragma once

#include <ocidl.h>

#include "com/control/ConnectionContainer.h"
#include "com/control/HostedControl.h"
#include "com/control/Part.h"
#include "com/control/View.h"

namespace qel::com {

/// Takes everything that a host would otherwise pass in a call each.
class QuickActivation final : public Part<IQuickActivate> {
 public:
  QuickActivation(IUnknown& whole, HostedControl& control, ConnectionContainer& connections,
                  View& view)
      : Part(whole), control_(control), connections_(connections), view_(view) {}

  STDMETHODIMP QuickActivate(QACONTAINER* host, QACONTROL* answer) override;
  STDMETHODIMP SetContentExtent(LPSIZEL size) override;
  STDMETHODIMP GetContentExtent(LPSIZEL size) override;

 private:
  HostedControl& control_;
  ConnectionContainer& connections_;
  View& view_;
};

}  // namespace qel::com
