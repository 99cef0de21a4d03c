#include "windows/DropTarget.h"

#include <memory>
#include <utility>

#include "qel/box/Box.h"
#include "qel/platform/Keys.h"
#include "windows/DataObject.h"
#include "windows/Guard.h"
#include "windows/Modifiers.h"

namespace qel::windows {

using platform::DragData;

namespace {

std::int16_t shift_mask(DWORD keys) {
  return static_cast<std::int16_t>(((keys & MK_SHIFT) != 0 ? keys::shift_key : 0) |
                                   ((keys & MK_CONTROL) != 0 ? keys::ctrl_key : 0) |
                                   ((keys & MK_ALT) != 0 ? keys::alt_key : 0));
}

}  // namespace

class DropTarget::Target : public ComObject<IDropTarget> {
 public:
  Target(HWND window, box::Box& box, PositionAt position_at, ShowLanding show_landing)
      : window_(window),
        box_(box.weak_from_this()),
        drop_(box),
        position_at_(std::move(position_at)),
        show_landing_(std::move(show_landing)) {}

  /// Nothing can be dropped from now on.
  void disconnect() { box_.reset(); }

  HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* object, DWORD keys, POINTL at,
                                      DWORD* effect) noexcept override {
    if (object == nullptr || effect == nullptr) return E_INVALIDARG;
    return answer(effect, [&](std::int32_t allowed) {
      look_at(*object);
      return landing(drop_.enter(data(), allowed, place(keys, at)), at);
    });
  }

  HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL at, DWORD* effect) noexcept override {
    if (effect == nullptr) return E_INVALIDARG;
    return answer(effect, [&](std::int32_t allowed) {
      return landing(drop_.move(allowed, place(keys, at)), at);
    });
  }

  HRESULT STDMETHODCALLTYPE DragLeave() noexcept override {
    DWORD none = DROPEFFECT_NONE;
    const Forgotten afterwards(*this);
    return answer(&none, [&](std::int32_t allowed) {
      show_landing_({});
      drop_.leave();
      return allowed;
    });
  }

  HRESULT STDMETHODCALLTYPE Drop(IDataObject* object, DWORD keys, POINTL at,
                                 DWORD* effect) noexcept override {
    if (object == nullptr || effect == nullptr) return E_INVALIDARG;
    const Forgotten afterwards(*this);
    return answer(effect, [&](std::int32_t allowed) {
      show_landing_({});
      // Some sources complete their data only for the drop.
      look_at(*object);
      bool inserts = false;
      const std::int32_t became = drop_.drop(data(), allowed, place(keys, at), [&] {
        inserts = true;
        return position_at_(point(at));
      });
      if (inserts && became != platform::no_drop && !box_.expired()) SetFocus(window_);
      return became;
    });
  }

 private:
  /// Holds on to the target, and makes it let go of what was dragged when destroyed.
  class Forgotten {
   public:
    explicit Forgotten(Target& target) : target_(&target) {}
    Forgotten(const Forgotten&) = delete;
    Forgotten& operator=(const Forgotten&) = delete;
    ~Forgotten() {
      target_->own_ = {};
      target_->foreign_ = {};
    }

   private:
    Pointer<Target> target_;
  };

  /// Lets `act` decide what a drop does; a drop does nothing where the box is gone or `act` fails.
  template <class Act>
  HRESULT answer(DWORD* effect, Act act) noexcept {
    const auto allowed = static_cast<std::int32_t>(*effect);
    *effect = DROPEFFECT_NONE;
    // A listener may let go of both.
    const auto held = Pointer<Target>(this);
    const auto box = box_.lock();
    return guarded([&]() -> HRESULT {
      if (box) *effect = static_cast<DWORD>(act(allowed));
      return S_OK;
    });
  }

  void look_at(IDataObject& object) {
    own_ = Pointer<DataObject>(DataObject::behind(object));
    foreign_ = own_ ? DragData() : read_data_object(object);
  }
  DragData& data() { return own_ ? own_->data() : foreign_; }

  /// Shows where a drop with that effect would land; a listener may have let go of the box.
  std::int32_t landing(std::int32_t effect, POINTL at) const {
    if (!box_.expired()) {
      show_landing_(drop_.would_insert() ? std::optional(point(at)) : std::nullopt);
    }
    return effect;
  }

  POINT point(POINTL at) const {
    POINT inside = {at.x, at.y};
    ScreenToClient(window_, &inside);
    return inside;
  }
  box::DropPoint place(DWORD keys, POINTL at) const {
    const POINT inside = point(at);
    return {button_mask(keys), shift_mask(keys), static_cast<float>(inside.x),
            static_cast<float>(inside.y)};
  }

  HWND window_;
  std::weak_ptr<box::Box> box_;
  box::Drop drop_;
  PositionAt position_at_;
  ShowLanding show_landing_;
  Pointer<DataObject> own_;  // what is over the box comes from one of ours,
  DragData foreign_;         // or from elsewhere
};

DropTarget::DropTarget(HWND window, box::Box& box, PositionAt position_at, ShowLanding show_landing)
    : window_(window),
      target_(Pointer<Target>::adopted(
          new Target(window, box, std::move(position_at), std::move(show_landing)))) {
  if (!session_) return;
  if (RegisterDragDrop(window, target_.get()) != DRAGDROP_E_ALREADYREGISTERED) return;
  RevokeDragDrop(window);
  RegisterDragDrop(window, target_.get());
}

DropTarget::~DropTarget() {
  target_->disconnect();
  if (session_) RevokeDragDrop(window_);
}

IDropTarget& DropTarget::target() const { return *target_; }

}  // namespace qel::windows
