#pragma once
#include "qel/base/Utf16.h"
namespace qel {
inline std::size_t cluster_after(std::u16string_view text, std::size_t at) {
  return step_after(text, at);
}
inline std::size_t cluster_before(std::u16string_view text, std::size_t at) {
  return step_before(text, at);
}
}  // namespace qel
