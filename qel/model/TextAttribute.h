#pragma once

#include <cstdint>

#include "qel/model/iStyle.h"

namespace qel {

/// What can be switched on a span of text, by number. A font or colour N adds N - 1 to its first.
enum TextAttribute : std::int32_t {
  taPlain = 0,  ///< the default style
  taBold = 1,
  taItalic = 2,
  taUnderline = 3,
  taStrikeThru = 4,
  taSuperscript = 5,
  taSubscript = 6,
  taSmallCaps = 7,
  taFont1 = 8,
  taFont9 = 16,
  taColor1 = 17,
  taColor9 = 25,
};

/// Switches the attribute of `style` on or off. Off, a font or colour becomes index 0 whatever it
/// was; `taPlain` resets the style either way. Any other number changes nothing.
void set_attribute(iStyle& style, std::int32_t attribute, bool on);

}  // namespace qel
