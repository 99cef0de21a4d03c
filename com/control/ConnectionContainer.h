#pragma once

#include <ocidl.h>

#include "com/control/Connections.h"
#include "com/control/Part.h"

namespace qel::com {

/// Where a host connects its sinks to the control: for events and for changes of properties.
class ConnectionContainer final : public Part<IConnectionPointContainer> {
 public:
  explicit ConnectionContainer(IUnknown& whole);

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** result) override;
  STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** result) override;

  Connections& events() { return events_; }
  Connections& notices() { return notices_; }

 private:
  Connections events_;
  Connections notices_;
};

}  // namespace qel::com
