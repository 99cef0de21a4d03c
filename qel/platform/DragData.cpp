#include "qel/platform/DragData.h"

namespace qel::platform {

bool DragData::has_text_of(const DragData& other) const {
  const auto is_same = [&](std::int16_t format) {
    const auto own = values_.find(format);
    const auto others = other.values_.find(format);
    if (own == values_.end() || others == other.values_.end())
      return has(format) == other.has(format);
    return own->second == others->second;
  };
  return is_same(text_format) && is_same(rtf_format) && is_same(html_format);
}

std::optional<std::u16string> DragData::get(std::int16_t format) {
  const auto found = values_.find(format);
  if (found == values_.end()) return {};
  if (!found->second && supply_) {
    supply_(*this, format);
    // The supplier may have done anything to the data.
    const auto supplied = values_.find(format);
    return supplied == values_.end() ? std::nullopt : supplied->second;
  }
  return found->second;
}

}  // namespace qel::platform
