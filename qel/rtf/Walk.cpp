#include "qel/rtf/Walk.h"

namespace qel::rtf {

const Spelling markup_spelling = {{{{u"/b1", u"/b0"},
                                    {u"/i1", u"/i0"},
                                    {u"/u1", u"/u0"},
                                    {u"/k1", u"/k0"},
                                    {u"/p1", u"/p0"},
                                    {u"/s1", u"/s0"},
                                    {u"/c1", u"/c0"}}},
                                  u"/f",
                                  u"/y",
                                  u""};

const Spelling rtf_spelling = {{{{u"\\b1 ", u"\\b0 "},
                                 {u"\\i1 ", u"\\i0 "},
                                 {u"\\ul1 ", u"\\ul0 "},
                                 {u"\\strike1 ", u"\\strike0 "},
                                 {u"\\up4 ", u"\\up0 "},
                                 {u"\\dn4 ", u"\\dn0 "},
                                 {u"\\scaps1 ", u"\\scaps0 "}}},
                               u"\\f",
                               u"\\cf",
                               u" "};

void FormatWalk::enter(const style_codes::CodeState& state) {
  constexpr std::array<style_codes::AttributeBit, 7> bits = {
      style_codes::bold_bit,           style_codes::italic_bit,      style_codes::underline_bit,
      style_codes::strike_through_bit, style_codes::superscript_bit, style_codes::subscript_bit,
      style_codes::small_caps_bit};
  const std::size_t count = way_ == Way::lossless ? bits.size() : bits.size() - 1;
  for (std::size_t toggle = 0; toggle < count; ++toggle) {
    set_toggle(toggle, (state.attributes & bits[toggle]) != 0);
  }
  set_font(state.font);
  set_color(state.color);
}

void FormatWalk::close() {
  for (std::size_t toggle = 0; toggle < open_.size(); ++toggle) set_toggle(toggle, false);
  set_color(0);
  set_font(0);
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
