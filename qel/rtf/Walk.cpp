#include "qel/rtf/Walk.h"

#include <algorithm>
#include <cstddef>

#include "qel/richtext/RtfFormats.h"

namespace qel::rtf {

const Spelling markup_spelling = {{{{u"/b1", u"/b0"},
                                    {u"/i1", u"/i0"},
                                    {u"/u1", u"/u0"},
                                    {u"/k1", u"/k0"},
                                    {u"/p1", u"/p0"},
                                    {u"/s1", u"/s0"}}},
                                  u"/f",
                                  u"/y",
                                  u""};

const Spelling rtf_spelling = {{{{u"\\b1 ", u"\\b0 "},
                                 {u"\\i1 ", u"\\i0 "},
                                 {u"\\ul1 ", u"\\ul0 "},
                                 {u"\\strike1 ", u"\\strike0 "},
                                 {u"\\up4 ", u"\\up0 "},
                                 {u"\\dn4 ", u"\\dn0 "}}},
                               u"\\f",
                               u"\\cf",
                               u" "};

FormatWalk::FormatWalk(const Spelling& spelling, const QELIndexFonts& fonts,
                       const QELIndexColors& colors, Origin origin, std::u16string& out)
    : spelling_(spelling),
      origin_(origin),
      out_(out),
      fonts_{fonts.get_DefaultFont(), fonts.get_Font(1), fonts.get_Font(2), fonts.get_Font(3)},
      colors_{colors.get_DefaultColor(), colors.get_IgnoredColor(), colors.get_HiddenColor(),
              colors.get_NoteColor()} {}

void FormatWalk::enter(const richtext::CharFormat& format) {
  const std::int32_t offset = offset_of(format);
  const std::array<bool, 6> wanted = {format.bold,           format.italic, format.underline,
                                      format.strike_through, offset > 0,    offset < 0};
  for (std::size_t toggle = 0; toggle < wanted.size(); ++toggle) {
    set_toggle(toggle, wanted[toggle]);
  }
  set_font(font_index(format.font_name));
  set_color(color_index(format.color));
}

void FormatWalk::close() {
  for (std::size_t toggle = 0; toggle < open_.size(); ++toggle) set_toggle(toggle, false);
  set_color(0);
  set_font(0);
}

std::int32_t FormatWalk::offset_of(const richtext::CharFormat& format) const {
  return origin_ == Origin::box ? richtext::offset_in_rtf(format.offset) : format.offset;
}

int FormatWalk::font_index(std::u16string_view name) const {
  if (origin_ == Origin::box) {
    // The blanks before a name are not part of it, and without a name there is no font.
    name.remove_prefix(std::min(name.find_first_not_of(u' '), name.size()));
    if (name.empty()) return 0;
  }
  const auto found = std::find(fonts_.begin(), fonts_.end(), name);
  return found == fonts_.end() ? 0 : static_cast<int>(found - fonts_.begin());
}

int FormatWalk::color_index(Color color) const {
  if (origin_ == Origin::box) color = rgb(red_of(color), green_of(color), blue_of(color));
  const auto found = std::find(colors_.begin(), colors_.end(), color);
  return found == colors_.end() ? 0 : static_cast<int>(found - colors_.begin());
}

void FormatWalk::set_toggle(std::size_t toggle, bool on) {
  if (open_[toggle] == on) return;
  open_[toggle] = on;
  out_.append(on ? spelling_.toggles[toggle].on : spelling_.toggles[toggle].off);
}

void FormatWalk::set_font(int index) {
  if (index == font_) return;
  if (font_ != 0) write_index(spelling_.font, 0);
  if (index != 0) write_index(spelling_.font, index);
  font_ = index;
  wrote_font_ = true;
}

void FormatWalk::set_color(int index) {
  if (index == color_) return;
  if (color_ != 0) write_index(spelling_.color, 0);
  if (index != 0) write_index(spelling_.color, index);
  color_ = index;
  wrote_color_ = true;
}

void FormatWalk::write_index(std::u16string_view prefix, int index) {
  out_.append(prefix).push_back(static_cast<char16_t>(u'0' + index));
  out_.append(spelling_.end);
}

}  // namespace qel::rtf
