#include "com/control/ConnectionContainer.h"

#include <olectl.h>
#include <qelcom.h>

#include "com/automation/Errors.h"
#include "com/automation/ListEnumerator.h"

namespace qel::com {
namespace {

using PointPointer = Pointer<IConnectionPoint>;

IConnectionPoint* point_for_caller(const PointPointer& point) {
  return PointPointer(point).detach();
}

using PointEnumerator =
    ListEnumerator<IEnumConnectionPoints, PointPointer, IConnectionPoint*, point_for_caller>;

}  // namespace

ConnectionContainer::ConnectionContainer(IUnknown& whole)
    : Part(whole),
      events_(whole, *this, __uuidof(QELTextboxEvents)),
      notices_(whole, *this, IID_IPropertyNotifySink) {}

HRESULT ConnectionContainer::EnumConnectionPoints(IEnumConnectionPoints** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  return guarded(IID_IConnectionPointContainer, [&] {
    std::vector<PointPointer> points;
    points.emplace_back(&events_);
    points.emplace_back(&notices_);
    *result = new PointEnumerator(std::move(points));
  });
}

HRESULT ConnectionContainer::FindConnectionPoint(REFIID id, IConnectionPoint** result) {
  if (result == nullptr) return E_POINTER;
  *result = nullptr;
  for (Connections* const point : {&events_, &notices_}) {
    if (point->id() == id) {
      *result = PointPointer(point).detach();
      return S_OK;
    }
  }
  return CONNECT_E_NOCONNECTION;
}

}  // namespace qel::com
