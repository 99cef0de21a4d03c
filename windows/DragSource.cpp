#include "windows/DragSource.h"

#include <ole2.h>

#include <utility>

#include "windows/DataObject.h"
#include "windows/Guard.h"
#include "windows/OleSession.h"
#include "windows/Pointer.h"

namespace qel::windows {
namespace {

constexpr DWORD all_effects = DROPEFFECT_COPY | DROPEFFECT_MOVE;
static_assert(platform::copy_drop == DROPEFFECT_COPY && platform::move_drop == DROPEFFECT_MOVE);

class DropSource : public ComObject<IDropSource> {
 public:
  explicit DropSource(windows::GiveFeedback feedback) : feedback_(std::move(feedback)) {}

  HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escape, DWORD keys) noexcept override {
    const DWORD buttons = keys & (MK_LBUTTON | MK_RBUTTON | MK_MBUTTON);
    const bool has_several = (buttons & (buttons - 1)) != 0;
    if (escape != FALSE || has_several) return DRAGDROP_S_CANCEL;
    return buttons == 0 ? DRAGDROP_S_DROP : S_OK;
  }

  HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD effect) noexcept override {
    return guarded([&]() -> HRESULT {
      auto told = static_cast<std::int32_t>(effect & all_effects);
      bool default_cursors = true;
      if (feedback_) feedback_(told, default_cursors);
      return default_cursors ? DRAGDROP_S_USEDEFAULTCURSORS : S_OK;
    });
  }

 private:
  windows::GiveFeedback feedback_;
};

}  // namespace

std::int32_t drag(platform::DragData data, std::int32_t allowed_effects, GiveFeedback feedback) {
  const OleSession session;
  const auto allowed = static_cast<DWORD>(allowed_effects) & all_effects;
  if (!session || allowed == 0) return platform::no_drop;
  const auto object = Pointer<DataObject>::adopted(new DataObject(std::move(data)));
  const auto source = Pointer<DropSource>::adopted(new DropSource(std::move(feedback)));
  DWORD effect = DROPEFFECT_NONE;
  const HRESULT result = DoDragDrop(object.get(), source.get(), allowed, &effect);
  object->end_supply();
  return result == DRAGDROP_S_DROP ? static_cast<std::int32_t>(effect & allowed)
                                   : platform::no_drop;
}

}  // namespace qel::windows
