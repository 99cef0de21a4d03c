#pragma once

#include <cstdint>

#include "qel/model/iStyle.h"

namespace qel {

/// What can be toggled on a span of text, by number.
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
  taFont2,
  taFont3,
  taFont4,
  taFont5,
  taFont6,
  taFont7,
  taFont8,
  taFont9 = 16,
  taColor1 = 17,
  taColor2,
  taColor3,
  taColor4,
  taColor5,
  taColor6,
  taColor7,
  taColor8,
  taColor9 = 25,
  // Changes of case, which are not part of a style.
  taUpperCase = 26,
  taLowerCase = 27,
  taChangeCase = 28,
  taTitleCase = 29,
  taFirstToUpper = 30,
  taFirstToLower = 31,
};

/// Whether the style has the attribute: the flag is set, or the font or colour is that one. No
/// style has `taPlain` or a change of case.
bool has_attribute(const iStyle& style, std::int32_t attribute);

/// Switches the attribute of `style` on or off. Switching off a font or colour gives index 0,
/// whatever it was; `taPlain` resets the style either way. Changes of case, and any other number,
/// do nothing.
void set_attribute(iStyle& style, std::int32_t attribute, bool on);

}  // namespace qel
