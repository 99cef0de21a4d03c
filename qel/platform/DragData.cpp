#include "qel/platform/DragData.h"

namespace qel::platform {

std::optional<std::u16string> DragData::get(std::int16_t format) {
  const auto form = forms_.find(format);
  if (form == forms_.end()) return {};
  if (!form->second && supply_) {
    supply_(*this, format);
    // The supplier may have done anything to the data.
    const auto supplied = forms_.find(format);
    return supplied == forms_.end() ? std::nullopt : supplied->second;
  }
  return form->second;
}

}  // namespace qel::platform
