#include "qel/model/TextAttribute.h"

#include <array>
#include <cstddef>

namespace qel {
namespace {

constexpr std::array flags = {&iStyle::Bold,       &iStyle::Italic,      &iStyle::Underline,
                              &iStyle::StrikeThru, &iStyle::Superscript, &iStyle::Subscript,
                              &iStyle::SmallCaps};

bool is_between(std::int32_t attribute, TextAttribute first, TextAttribute last) {
  return attribute >= first && attribute <= last;
}

}  // namespace

bool has_attribute(const iStyle& style, std::int32_t attribute) {
  if (is_between(attribute, taBold, taSmallCaps)) {
    return style.*flags[static_cast<std::size_t>(attribute - taBold)];
  }
  if (is_between(attribute, taFont1, taFont9)) return style.FontID == attribute - taFont1 + 1;
  if (is_between(attribute, taColor1, taColor9)) return style.ColorID == attribute - taColor1 + 1;
  return false;
}

void set_attribute(iStyle& style, std::int32_t attribute, bool on) {
  const auto index_from = [&](std::int32_t first) {
    return on ? static_cast<std::int16_t>(attribute - first + 1) : std::int16_t{0};
  };
  if (attribute == taPlain) {
    style.Initialize();
  } else if (is_between(attribute, taBold, taSmallCaps)) {
    style.*flags[static_cast<std::size_t>(attribute - taBold)] = on;
  } else if (is_between(attribute, taFont1, taFont9)) {
    style.FontID = index_from(taFont1);
  } else if (is_between(attribute, taColor1, taColor9)) {
    style.ColorID = index_from(taColor1);
  }
}

}  // namespace qel
