#include "qel/rtf/TableIndexes.h"

#include <algorithm>

#include "qel/base/CaseMapping.h"
#include "qel/richtext/RtfFormats.h"
#include "qel/richtext/RtfTables.h"

namespace qel::rtf {
namespace {

/// The blanks before a name are not part of it in RTF.
std::u16string_view without_blanks(std::u16string_view name) {
  name.remove_prefix(std::min(name.find_first_not_of(u' '), name.size()));
  return name;
}

}  // namespace

TableIndexes::TableIndexes(const QELIndexFonts& fonts, const QELIndexColors& colors, Origin origin,
                           Way way)
    : origin_(origin), way_(way) {
  if (way == Way::lossless) names_ = fonts.distinct_names();
  for (std::size_t i = 0; i < count(); ++i) {
    const auto index = static_cast<std::int16_t>(i);
    names_[i] = way == Way::lossless ? without_blanks(names_[i]) : fonts.get_Font(index);
    colors_[i] = colors.get_Color(index);
  }
}

int TableIndexes::find_font(std::u16string_view name) const {
  const bool is_rtf = origin_ == Origin::box || way_ == Way::lossless;
  if (is_rtf) name = without_blanks(name);
  if (is_rtf && name.empty()) return 0;
  const auto end = names_.begin() + static_cast<std::ptrdiff_t>(count());
  auto found = std::find(names_.begin(), end, name);
  if (found == end && way_ == Way::lossless) {
    found = std::find_if(names_.begin(), end, [name](const std::u16string& candidate) {
      return equal_ignoring_case(candidate, name);
    });
  }
  if (found != end) return static_cast<int>(found - names_.begin());
  // "Arial CE" is not a font of its own, but the name of one for a code page.
  const std::u16string_view family = richtext::family_of(name);
  const bool may_have = way_ == Way::lossless && family.size() < name.size();
  return may_have ? find_font(family) : -1;
}

int TableIndexes::find_color(Color color) const {
  if (origin_ == Origin::box || way_ == Way::lossless) {
    color = rgb(red_of(color), green_of(color), blue_of(color));
  }
  const auto end = colors_.begin() + static_cast<std::ptrdiff_t>(count());
  const auto found = std::find(colors_.begin(), end, color);
  return found == end ? -1 : static_cast<int>(found - colors_.begin());
}

std::int32_t TableIndexes::offset(const richtext::CharFormat& format) const {
  return origin_ == Origin::box ? richtext::offset_in_rtf(format.offset) : format.offset;
}

style_codes::CodeState TableIndexes::state(const richtext::CharFormat& format) const {
  const std::int32_t up = offset(format);
  unsigned bits = 0;
  if (format.bold) bits |= style_codes::bold_bit;
  if (format.italic) bits |= style_codes::italic_bit;
  if (format.underline) bits |= style_codes::underline_bit;
  if (format.small_caps) bits |= style_codes::small_caps_bit;
  if (format.strike_through) bits |= style_codes::strike_through_bit;
  if (up > 0) bits |= style_codes::superscript_bit;
  if (up < 0) bits |= style_codes::subscript_bit;
  return {static_cast<std::uint8_t>(bits), static_cast<std::int16_t>(font(format.font_name)),
          static_cast<std::int16_t>(color(format.color))};
}

}  // namespace qel::rtf
