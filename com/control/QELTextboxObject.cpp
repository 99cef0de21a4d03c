#include "com/control/QELTextboxObject.h"

namespace qel::com {

void* QELTextboxObject::extra_interface(const IID& id) {
  struct Entry {
    const IID& id;
    void* part;
  };
  auto* const stream = static_cast<IPersistStreamInit*>(&stream_storage_);
  auto* const view = static_cast<IViewObjectEx*>(&view_);
  auto* const in_place = static_cast<IOleInPlaceObject*>(&in_place_);
  const Entry entries[] = {
      {IID_IOleObject, static_cast<IOleObject*>(&embedding_)},
      {IID_IOleWindow, in_place},
      {IID_IOleInPlaceObject, in_place},
      {IID_IOleInPlaceActiveObject, static_cast<IOleInPlaceActiveObject*>(&active_)},
      {IID_IOleControl, static_cast<IOleControl*>(&steering_)},
      {IID_IViewObject, view},
      {IID_IViewObject2, view},
      {IID_IViewObjectEx, view},
      {IID_IDataObject, static_cast<IDataObject*>(&transfer_)},
      {IID_IQuickActivate, static_cast<IQuickActivate*>(&quick_activation_)},
      {IID_IPerPropertyBrowsing, static_cast<IPerPropertyBrowsing*>(&choices_)},
      {IID_ISpecifyPropertyPages, static_cast<ISpecifyPropertyPages*>(&pages_)},
      {IID_IPersist, stream},
      {IID_IPersistStreamInit, stream},
      {IID_IPersistStorage, static_cast<IPersistStorage*>(&document_storage_)},
      {IID_IPersistPropertyBag, static_cast<IPersistPropertyBag*>(&bag_storage_)},
      {IID_IConnectionPointContainer, static_cast<IConnectionPointContainer*>(&connections_)},
  };
  for (const Entry& entry : entries) {
    if (entry.id == id) return entry.part;
  }
  return nullptr;
}

}  // namespace qel::com
