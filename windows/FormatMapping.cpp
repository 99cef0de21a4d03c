#include "windows/FormatMapping.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "windows/Text.h"

namespace qel::windows {

using richtext::Alignment;
using richtext::CharFormat;

CHARFORMAT2W native_format(const CharFormat& format, const ShownColors& colors) {
  constexpr float twips_per_point = 20;
  CHARFORMAT2W native = {};
  native.cbSize = sizeof native;
  native.dwMask = CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE | CFM_UNDERLINETYPE | CFM_STRIKEOUT |
                  CFM_SMALLCAPS | CFM_OFFSET | CFM_COLOR | CFM_BACKCOLOR | CFM_FACE | CFM_CHARSET |
                  CFM_SIZE;
  native.dwEffects = CFE_AUTOBACKCOLOR;
  if (format.bold) native.dwEffects |= CFE_BOLD;
  if (format.italic) native.dwEffects |= CFE_ITALIC;
  if (format.underline) native.dwEffects |= CFE_UNDERLINE;
  if (format.strike_through) native.dwEffects |= CFE_STRIKEOUT;
  if (format.small_caps) native.dwEffects |= CFE_SMALLCAPS;
  native.bUnderlineType = format.underline ? CFU_UNDERLINE : CFU_UNDERLINENONE;
  native.yOffset = format.offset;
  native.yHeight = static_cast<LONG>(std::lround(format.size * twips_per_point));
  native.bCharSet = DEFAULT_CHARSET;
  const std::size_t length = std::min<std::size_t>(format.font_name.size(), LF_FACESIZE - 1);
  std::copy_n(wide(format.font_name), length, native.szFaceName);

  const auto color = static_cast<COLORREF>(format.color);
  const bool is_automatic = color == 0 || color == GetSysColor(COLOR_WINDOWTEXT);
  if (is_automatic && !colors.automatic) native.dwEffects |= CFE_AUTOCOLOR;
  native.crTextColor =
      is_automatic ? colors.automatic.value_or(0) : colors.text_color(format.color);
  return native;
}

Likeness likeness(const CHARFORMAT2W& shown, const CHARFORMAT2W& wanted) {
  constexpr DWORD visible =
      CFM_BOLD | CFM_ITALIC | CFM_UNDERLINE | CFM_STRIKEOUT | CFM_COLOR | CFM_FACE | CFM_SIZE;
  constexpr DWORD effects = CFE_BOLD | CFE_ITALIC | CFE_UNDERLINE | CFE_STRIKEOUT | CFE_AUTOCOLOR;
  const bool has_color = (wanted.dwEffects & CFE_AUTOCOLOR) == 0;
  const bool looks_alike = (shown.dwMask & visible) == visible &&
                           (shown.dwEffects & effects) == (wanted.dwEffects & effects) &&
                           (!has_color || shown.crTextColor == wanted.crTextColor) &&
                           shown.yHeight == wanted.yHeight &&
                           std::wstring_view(shown.szFaceName) == wanted.szFaceName;
  if (!looks_alike) return Likeness::different;
  constexpr DWORD others = CFM_OFFSET | CFM_SMALLCAPS;
  const bool is_same = (shown.dwMask & others) == others && shown.yOffset == wanted.yOffset &&
                       ((shown.dwEffects ^ wanted.dwEffects) & CFE_SMALLCAPS) == 0;
  return is_same ? Likeness::same : Likeness::looks_alike;
}

PARAFORMAT2 native_format(Alignment alignment) {
  PARAFORMAT2 native = {};
  native.cbSize = sizeof native;
  native.dwMask = PFM_ALIGNMENT;
  native.wAlignment = alignment == Alignment::center  ? PFA_CENTER
                      : alignment == Alignment::right ? PFA_RIGHT
                                                      : PFA_LEFT;
  return native;
}

}  // namespace qel::windows
