#include "windows/DropTarget.h"

#include "qel/platform/Keys.h"
#include "windows/DataObject.h"
#include "windows/Guard.h"

namespace qel::windows {

using namespace platform;

namespace {

constexpr std::int32_t refuses = 0;
constexpr std::int32_t box_acts = 2;

std::int16_t button_mask(DWORD keys) {
  return static_cast<std::int16_t>(((keys & MK_LBUTTON) != 0 ? 1 : 0) |
                                   ((keys & MK_RBUTTON) != 0 ? 2 : 0) |
                                   ((keys & MK_MBUTTON) != 0 ? 4 : 0));
}

std::int16_t shift_mask(DWORD keys) {
  return static_cast<std::int16_t>(((keys & MK_SHIFT) != 0 ? keys::shift_key : 0) |
                                   ((keys & MK_CONTROL) != 0 ? keys::ctrl_key : 0) |
                                   ((keys & MK_ALT) != 0 ? keys::alt_key : 0));
}

/// What a listener has left as the effect: one of those allowed.
std::int32_t one_of(std::int32_t effect, std::int32_t allowed) {
  const std::int32_t left = effect & allowed & (copy_drop | move_drop);
  return left == (copy_drop | move_drop) ? copy_drop : left;
}

}  // namespace

class DropTarget::Target : public ComObject<IDropTarget> {
 public:
  Target(HWND window, DropClient& client) : window_(window), client_(&client) {}

  /// The box is gone: nothing can be dropped from now on.
  void disconnect() { client_ = nullptr; }

  HRESULT STDMETHODCALLTYPE DragEnter(IDataObject* object, DWORD keys, POINTL at,
                                      DWORD* effect) noexcept override {
    if (object == nullptr || effect == nullptr) return E_INVALIDARG;
    return answer(effect, [&](std::int32_t allowed) {
      look_at(*object);
      note(keys, at);
      return tell(allowed, drag_enters);
    });
  }

  HRESULT STDMETHODCALLTYPE DragOver(DWORD keys, POINTL at, DWORD* effect) noexcept override {
    if (effect == nullptr) return E_INVALIDARG;
    return answer(effect, [&](std::int32_t allowed) {
      note(keys, at);
      return tell(allowed, drag_moves);
    });
  }

  HRESULT STDMETHODCALLTYPE DragLeave() noexcept override {
    return guarded([&]() -> HRESULT {
      const Forgotten afterwards(*this);
      if (data_ == nullptr || client_ == nullptr) return S_OK;
      client_->hide_drop_place();
      if (!is_open()) return S_OK;
      std::int32_t effect = no_drop;
      client_->drop_listener().on_drag_over(*data_, effect, buttons_, shift_,
                                            static_cast<float>(at_.x), static_cast<float>(at_.y),
                                            drag_leaves);
      return S_OK;
    });
  }

  HRESULT STDMETHODCALLTYPE Drop(IDataObject* object, DWORD keys, POINTL at,
                                 DWORD* effect) noexcept override {
    if (object == nullptr || effect == nullptr) return E_INVALIDARG;
    return answer(effect, [&](std::int32_t allowed) {
      const bool was_over = data_ != nullptr;
      // Some sources make their data complete for the drop only.
      look_at(*object);
      const Forgotten afterwards(*this);
      // The button that was let go is the one that dropped.
      const std::int16_t buttons = buttons_;
      note(keys, at);
      buttons_ = static_cast<std::int16_t>(buttons_ | buttons);
      if (!was_over) effect_ = suggested_effect(allowed);
      client_->hide_drop_place();
      return drop(allowed);
    });
  }

 private:
  /// Lets go of what was dragged when it goes.
  class Forgotten {
   public:
    explicit Forgotten(Target& target) : target_(target) {}
    Forgotten(const Forgotten&) = delete;
    Forgotten& operator=(const Forgotten&) = delete;
    ~Forgotten() { target_.forget(); }

   private:
    Target& target_;
  };

  /// Lets `act` say what a drop does; nothing where the box is closed to drops, or it fails.
  template <class Act>
  HRESULT answer(DWORD* effect, Act act) noexcept {
    const auto allowed = static_cast<std::int32_t>(*effect);
    *effect = DROPEFFECT_NONE;
    // Whoever is told may close the box.
    const auto held = Pointer<Target>(this);
    return guarded([&]() -> HRESULT {
      if (is_open()) *effect = static_cast<DWORD>(act(allowed));
      return S_OK;
    });
  }

  bool is_open() const {
    if (client_ == nullptr) return false;
    const BoxAppearance& appearance = client_->drop_appearance();
    return appearance.drop_mode != refuses && appearance.enabled;
  }

  /// Whether the box itself puts in what is dropped on it.
  bool takes() const {
    if (!is_open()) return false;
    const BoxAppearance& appearance = client_->drop_appearance();
    return appearance.drop_mode == box_acts && !appearance.read_only;
  }

  void look_at(IDataObject& object) {
    own_ = Pointer<DataObject>(DataObject::behind(object));
    foreign_ = own_ ? DragData() : read_data_object(object);
    data_ = own_ ? &own_->data() : &foreign_;
  }

  void forget() {
    data_ = nullptr;
    own_ = {};
    foreign_ = {};
    effect_ = no_drop;
    buttons_ = 0;
  }

  void note(DWORD keys, POINTL at) {
    buttons_ = button_mask(keys);
    shift_ = shift_mask(keys);
    at_ = {at.x, at.y};
    ScreenToClient(window_, &at_);
  }

  std::int32_t suggested_effect(std::int32_t allowed) const {
    if (!takes() || !data_->is_text()) return no_drop;
    return usual_drop(allowed & (copy_drop | move_drop), (shift_ & keys::ctrl_key) != 0);
  }

  std::int32_t tell(std::int32_t allowed, DragState state) {
    if (data_ == nullptr) return no_drop;
    std::int32_t effect = suggested_effect(allowed);
    client_->drop_listener().on_drag_over(*data_, effect, buttons_, shift_,
                                          static_cast<float>(at_.x), static_cast<float>(at_.y),
                                          state);
    effect_ = one_of(effect, allowed);
    if (effect_ != no_drop && takes()) {
      client_->show_drop_place(at_);
    } else if (client_ != nullptr) {
      client_->hide_drop_place();
    }
    return effect_;
  }

  std::int32_t drop(std::int32_t allowed) {
    const bool by_box = takes();
    std::int32_t effect = effect_;
    client_->drop_listener().on_drag_drop(*data_, effect, buttons_, shift_,
                                          static_cast<float>(at_.x), static_cast<float>(at_.y));
    effect = one_of(effect, allowed);
    if (!by_box || effect == no_drop || client_ == nullptr) return effect;
    return client_->take_drop(*data_, at_, effect) ? effect : no_drop;
  }

  HWND window_;
  DropClient* client_;
  Pointer<DataObject> own_;   // what is over the box comes from one of ours,
  DragData foreign_;          // or from elsewhere
  DragData* data_ = nullptr;  // the one of both; null while nothing is over the box
  std::int32_t effect_ = no_drop;
  std::int16_t buttons_ = 0;
  std::int16_t shift_ = 0;
  POINT at_ = {};
};

DropTarget::DropTarget(HWND window, DropClient& client)
    : window_(window), target_(Pointer<Target>::adopted(new Target(window, client))) {
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
