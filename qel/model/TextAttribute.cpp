#include "qel/model/TextAttribute.h"

#include <array>
#include <cstddef>

namespace qel {
namespace {

constexpr std::array flags = {&iStyle::Bold,       &iStyle::Italic,      &iStyle::Underline,
                              &iStyle::StrikeThru, &iStyle::Superscript, &iStyle::Subscript,
                              &iStyle::SmallCaps};

}  // namespace

void set_attribute(iStyle& style, std::int32_t attribute, bool on) {
  const auto index_from = [&](std::int32_t first) {
    return on ? static_cast<std::int16_t>(attribute - first + 1) : std::int16_t{0};
  };
  if (attribute == taPlain) {
    style.Initialize();
  } else if (attribute >= taBold && attribute <= taSmallCaps) {
    style.*flags[static_cast<std::size_t>(attribute - taBold)] = on;
  } else if (attribute >= taFont1 && attribute <= taFont9) {
    style.FontID = index_from(taFont1);
  } else if (attribute >= taColor1 && attribute <= taColor9) {
    style.ColorID = index_from(taColor1);
  }
}

}  // namespace qel
