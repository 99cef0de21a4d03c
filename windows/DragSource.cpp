#include "windows/DragSource.h"

#include <ole2.h>

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
  explicit DropSource(box::Drag& drag) : drag_(drag) {}

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
      drag_.give_feedback(told, default_cursors);
      return default_cursors ? DRAGDROP_S_USEDEFAULTCURSORS : S_OK;
    });
  }

 private:
  box::Drag& drag_;
};

}  // namespace

void carry(box::Drag& drag) {
  const OleSession session;
  const auto allowed = static_cast<DWORD>(drag.allowed_effects()) & all_effects;
  if (!session || allowed == 0) return;
  const auto object = Pointer<DataObject>::adopted(new DataObject(drag.data()));
  const auto source = Pointer<DropSource>::adopted(new DropSource(drag));
  DWORD effect = DROPEFFECT_NONE;
  const HRESULT result = DoDragDrop(object.get(), source.get(), allowed, &effect);
  object->end_supply();
  if (result == DRAGDROP_S_DROP) drag.end(static_cast<std::int32_t>(effect));
}

}  // namespace qel::windows
