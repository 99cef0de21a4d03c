#include "com/control/EventSource.h"

#include <olectl.h>

#include <array>
#include <functional>
#include <tuple>
#include <utility>

#include "com/automation/Values.h"
#include "com/control/Hold.h"
#include "com/objects/DragDataObject.h"

namespace qel::com {
namespace {

// The members of the events interface whose numbers are not the system's own.
enum Event : DISPID {
  change = 1,
  start_drag = 2,
  set_data = 3,
  give_feedback = 4,
  drag_over = 5,
  drag_drop = 6,
  complete_drag = 7,
};

VARIANT typed(VARTYPE type) {
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = type;
  return variant;
}

VARIANT argument(std::int16_t value) {
  VARIANT variant = typed(VT_I2);
  variant.iVal = value;
  return variant;
}
VARIANT argument(float value) {
  VARIANT variant = typed(VT_R4);
  variant.fltVal = value;
  return variant;
}
VARIANT argument(IDispatch* object) {
  VARIANT variant = typed(VT_DISPATCH);
  variant.pdispVal = object;
  return variant;
}
VARIANT argument(std::reference_wrapper<std::int16_t> value) {
  VARIANT variant = typed(VT_BYREF | VT_I2);
  variant.piVal = &value.get();
  return variant;
}
VARIANT argument(std::reference_wrapper<LONG> value) {
  VARIANT variant = typed(VT_BYREF | VT_I4);
  variant.plVal = &value.get();
  return variant;
}
/// An argument that is an automation Boolean, not a 16-bit number.
struct Boolean {
  VARIANT_BOOL value;
};
VARIANT argument(std::reference_wrapper<Boolean> boolean) {
  VARIANT variant = typed(VT_BYREF | VT_BOOL);
  variant.pboolVal = &boolean.get().value;
  return variant;
}

/// A 32-bit argument by reference, for which the host has another type of the same width.
class LongReference {
 public:
  explicit LongReference(std::int32_t& value) : value_(value), shown_(value) {}
  LongReference(const LongReference&) = delete;
  LongReference& operator=(const LongReference&) = delete;
  ~LongReference() { value_ = shown_; }
  std::reference_wrapper<LONG> shown() { return shown_; }

 private:
  std::int32_t& value_;
  LONG shown_;
};

/// Dragged data as the host sees it. The host may keep the object: later changes to it have no
/// effect on the drag.
class SharedData {
 public:
  explicit SharedData(platform::DragData& data)
      : data_(data),
        shared_(std::make_shared<platform::DragData>(data)),
        object_(Pointer<IDispatch>::adopted(adapter_of(shared_))) {}
  SharedData(const SharedData&) = delete;
  SharedData& operator=(const SharedData&) = delete;
  ~SharedData() { data_ = *shared_; }

  IDispatch* object() const { return object_.get(); }

 private:
  platform::DragData& data_;
  std::shared_ptr<platform::DragData> shared_;
  Pointer<IDispatch> object_;
};

}  // namespace

template <class... Arguments>
void EventSource::raise(DISPID event, Arguments&&... arguments) {
  if (frozen_ > 0 || connections_.is_empty()) return;
  const Hold hold(whole_, release_later_);
  // The last argument comes first.
  std::array<VARIANT, sizeof...(Arguments) + 1> list = {};
  [[maybe_unused]] std::size_t place = sizeof...(Arguments);
  ((list[--place] = argument(arguments)), ...);
  DISPPARAMS parameters = {list.data(), nullptr, sizeof...(Arguments), 0};
  connections_.each([&](IUnknown& sink) {
    // The interface of the events is IDispatch with an id of its own.
    Value result;
    static_cast<IDispatch&>(sink).Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                         &parameters, result.put(), nullptr, nullptr);
  });
}

void EventSource::Change() {
  const Hold hold(whole_, release_later_);
  on_change_();
  raise(Event::change);
}

void EventSource::Click() { raise(DISPID_CLICK); }
void EventSource::DblClick() { raise(DISPID_DBLCLICK); }

void EventSource::KeyDown(std::int16_t& KeyCode, std::int16_t& Shift) {
  const std::pair pressed(KeyCode, Shift);
  raise(DISPID_KEYDOWN, std::ref(KeyCode), std::ref(Shift));
  if (!trusts_ && KeyCode != 0) std::tie(KeyCode, Shift) = pressed;
}
void EventSource::KeyPress(std::int16_t& KeyAscii) { raise(DISPID_KEYPRESS, std::ref(KeyAscii)); }
void EventSource::KeyUp(std::int16_t& KeyCode, std::int16_t& Shift) {
  raise(DISPID_KEYUP, std::ref(KeyCode), std::ref(Shift));
}

void EventSource::MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y) {
  raise(DISPID_MOUSEDOWN, Button, Shift, X, Y);
}
void EventSource::MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y) {
  raise(DISPID_MOUSEMOVE, Button, Shift, X, Y);
}
void EventSource::MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y) {
  raise(DISPID_MOUSEUP, Button, Shift, X, Y);
}

void EventSource::OLEStartDrag(platform::DragData& Data, std::int32_t& AllowedEffects) {
  const SharedData data(Data);
  LongReference effects(AllowedEffects);
  raise(Event::start_drag, data.object(), effects.shown());
}
void EventSource::OLESetData(platform::DragData& Data, std::int16_t DataFormat) {
  const SharedData data(Data);
  raise(Event::set_data, data.object(), DataFormat);
}
void EventSource::OLEGiveFeedback(std::int32_t& Effect, bool& DefaultCursors) {
  LongReference effect(Effect);
  Boolean cursors = {DefaultCursors ? VARIANT_TRUE : VARIANT_FALSE};
  raise(Event::give_feedback, effect.shown(), std::ref(cursors));
  DefaultCursors = cursors.value != VARIANT_FALSE;
}
void EventSource::OLEDragOver(platform::DragData& Data, std::int32_t& Effect, std::int16_t Button,
                              std::int16_t Shift, float X, float Y, std::int16_t State) {
  const SharedData data(Data);
  LongReference effect(Effect);
  raise(Event::drag_over, data.object(), effect.shown(), Button, Shift, X, Y, State);
}
void EventSource::OLEDragDrop(platform::DragData& Data, std::int32_t& Effect, std::int16_t Button,
                              std::int16_t Shift, float X, float Y) {
  const SharedData data(Data);
  LongReference effect(Effect);
  raise(Event::drag_drop, data.object(), effect.shown(), Button, Shift, X, Y);
}
void EventSource::OLECompleteDrag(std::int32_t& Effect) {
  LongReference effect(Effect);
  raise(Event::complete_drag, effect.shown());
}

}  // namespace qel::com
