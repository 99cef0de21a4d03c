#include "qel/model/StyleCodes.h"

#include <algorithm>
#include <array>

namespace qel::style_codes {
namespace {

struct Attribute {
  bool iStyle::*field;
  char16_t letter;
  bool in_v6;
};

/// In the order in which attributes are switched on; they are switched off in reverse.
constexpr std::array attributes = {
    Attribute{&iStyle::Bold, u'b', true},        Attribute{&iStyle::Italic, u'i', true},
    Attribute{&iStyle::Underline, u'u', true},   Attribute{&iStyle::SmallCaps, u'c', true},
    Attribute{&iStyle::StrikeThru, u'k', false}, Attribute{&iStyle::Subscript, u's', true},
    Attribute{&iStyle::Superscript, u'p', true}, Attribute{&iStyle::Unicode, u't', false},
};

bool in_set(const Attribute& attribute, CodeSet set) {
  return attribute.in_v6 || set == CodeSet::current;
}

bool is_index(std::int16_t index) { return index >= 1 && index <= 9; }

void append_code(std::u16string& out, char16_t letter, int digit) {
  const std::array code = {u'/', letter, static_cast<char16_t>(u'0' + digit)};
  out.append(code.data(), code.size());
}

void append_color_on(std::u16string& out, std::int16_t color, CodeSet set) {
  if (!is_index(color)) return;
  if (set == CodeSet::current || color == 1) {
    append_code(out, u'y', color);
  } else if (color == 2) {
    append_code(out, u'z', 1);
  }
}

void append_color_off(std::u16string& out, std::int16_t color, CodeSet set) {
  if (!is_index(color)) return;
  if (set == CodeSet::current || color == 1) {
    append_code(out, u'y', 0);
  } else if (color == 2) {
    append_code(out, u'z', 0);
  }
}

void append_font_on(std::u16string& out, std::int16_t font, CodeSet set) {
  if (!is_index(font) || (set == CodeSet::v6 && font > 2)) return;
  append_code(out, u'f', font);
}

// Fonts 3 to 9 have no v6 code that switches them on, yet they are switched off there too.
void append_font_off(std::u16string& out, std::int16_t font) {
  if (is_index(font)) append_code(out, u'f', 0);
}

}  // namespace

void append_on(std::u16string& out, const iStyle& style, CodeSet set) {
  for (const Attribute& attribute : attributes) {
    if (in_set(attribute, set) && style.*attribute.field) append_code(out, attribute.letter, 1);
  }
  append_color_on(out, style.ColorID, set);
  append_font_on(out, style.FontID, set);
}

void append_off(std::u16string& out, const iStyle& style, CodeSet set) {
  append_font_off(out, style.FontID);
  append_color_off(out, style.ColorID, set);
  std::for_each(attributes.rbegin(), attributes.rend(), [&](const Attribute& attribute) {
    if (in_set(attribute, set) && style.*attribute.field) append_code(out, attribute.letter, 0);
  });
}

void append_different_on(std::u16string& out, const iStyle& style, const iStyle& last,
                         CodeSet set) {
  for (const Attribute& attribute : attributes) {
    if (in_set(attribute, set) && style.*attribute.field && !(last.*attribute.field)) {
      append_code(out, attribute.letter, 1);
    }
  }
  // The font goes off where a colour is on and the font stays, and is not switched on again. Only
  // indexes that have codes count: one out of range never writes anything.
  if (set == CodeSet::current && style.ColorID != 0 && is_index(last.FontID) &&
      style.FontID == last.FontID) {
    append_code(out, u'f', 0);
  }
  if (style.ColorID != last.ColorID) append_color_on(out, style.ColorID, set);
  if (style.FontID != last.FontID) append_font_on(out, style.FontID, set);
}

void append_different_off(std::u16string& out, const iStyle& style, const iStyle* next,
                          CodeSet set) {
  if (next == nullptr) {
    append_off(out, style, set);
    return;
  }
  if (style.FontID != next->FontID) append_font_off(out, style.FontID);
  if (style.ColorID != next->ColorID) append_color_off(out, style.ColorID, set);
  std::for_each(attributes.rbegin(), attributes.rend(), [&](const Attribute& attribute) {
    if (in_set(attribute, set) && style.*attribute.field && !(next->*attribute.field)) {
      append_code(out, attribute.letter, 0);
    }
  });
}

}  // namespace qel::style_codes
