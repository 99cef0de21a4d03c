#include "Style.h"

#include <algorithm>
#include <array>
#include <string>

#include "Ascii.h"

namespace qel::html {

using richtext::Alignment;
using richtext::CharFormat;

namespace {

constexpr std::int16_t raised = 45;  // as text that RTF raises without saying by how much

/// What elements look like without any style.
struct Look {
  bool is_block = false;
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strike_through = false;
  bool is_monospaced = false;
  bool keeps_white_space = false;
  std::int16_t offset = 0;
  float size = 1;  // times that of the element around
};

constexpr Look block{.is_block = true};
constexpr Look bold{.bold = true};
constexpr Look italic{.italic = true};
constexpr Look underlined{.underline = true};
constexpr Look struck{.strike_through = true};
constexpr Look monospaced{.is_monospaced = true};
constexpr Look heading(float size) { return {.is_block = true, .bold = true, .size = size}; }

using Looks = std::array<Look, GUMBO_TAG_LAST + 1>;

constexpr Looks make_looks() {
  Looks looks = {};
  for (const GumboTag tag :
       {GUMBO_TAG_P,          GUMBO_TAG_DIV,        GUMBO_TAG_ARTICLE, GUMBO_TAG_ASIDE,
        GUMBO_TAG_BLOCKQUOTE, GUMBO_TAG_CENTER,     GUMBO_TAG_DETAILS, GUMBO_TAG_DIR,
        GUMBO_TAG_DL,         GUMBO_TAG_FIGCAPTION, GUMBO_TAG_FIGURE,  GUMBO_TAG_FOOTER,
        GUMBO_TAG_HEADER,     GUMBO_TAG_HGROUP,     GUMBO_TAG_LI,      GUMBO_TAG_MAIN,
        GUMBO_TAG_MENU,       GUMBO_TAG_NAV,        GUMBO_TAG_OL,      GUMBO_TAG_SECTION,
        GUMBO_TAG_SUMMARY,    GUMBO_TAG_UL,         GUMBO_TAG_TABLE,   GUMBO_TAG_CAPTION,
        GUMBO_TAG_TR,         GUMBO_TAG_HR}) {
    looks[tag] = block;
  }
  looks[GUMBO_TAG_ADDRESS] = {.is_block = true, .italic = true};
  looks[GUMBO_TAG_PRE] = {.is_block = true, .is_monospaced = true, .keeps_white_space = true};
  for (const GumboTag tag : {GUMBO_TAG_B, GUMBO_TAG_STRONG, GUMBO_TAG_TH}) looks[tag] = bold;
  for (const GumboTag tag :
       {GUMBO_TAG_I, GUMBO_TAG_EM, GUMBO_TAG_CITE, GUMBO_TAG_DFN, GUMBO_TAG_VAR}) {
    looks[tag] = italic;
  }
  looks[GUMBO_TAG_U] = looks[GUMBO_TAG_INS] = underlined;
  looks[GUMBO_TAG_S] = looks[GUMBO_TAG_STRIKE] = looks[GUMBO_TAG_DEL] = struck;
  for (const GumboTag tag : {GUMBO_TAG_CODE, GUMBO_TAG_TT, GUMBO_TAG_KBD, GUMBO_TAG_SAMP}) {
    looks[tag] = monospaced;
  }
  looks[GUMBO_TAG_SUB] = {.offset = -raised};
  looks[GUMBO_TAG_SUP] = {.offset = raised};
  looks[GUMBO_TAG_BIG] = {.size = 1.2F};
  looks[GUMBO_TAG_SMALL] = {.size = 1 / 1.2F};
  looks[GUMBO_TAG_H1] = heading(2);
  looks[GUMBO_TAG_H2] = heading(1.5F);
  looks[GUMBO_TAG_H3] = heading(1.17F);
  looks[GUMBO_TAG_H4] = heading(1);
  looks[GUMBO_TAG_H5] = heading(0.83F);
  looks[GUMBO_TAG_H6] = heading(0.67F);
  return looks;
}

constexpr Looks looks = make_looks();

void put_size(CharFormat& format, std::optional<float> size) {
  if (size) format.size = *size;
}

void apply_look(Style& style, GumboTag tag) {
  const Look& look = looks[tag];
  CharFormat& format = style.format;
  style.is_block = look.is_block;
  format.bold |= look.bold;
  format.italic |= look.italic;
  format.underline |= look.underline;
  format.strike_through |= look.strike_through;
  if (look.is_monospaced) format.font_name = first_font("monospace");
  style.keeps_blanks |= look.keeps_white_space;
  style.keeps_lines |= look.keeps_white_space;
  if (look.offset != 0) format.offset = look.offset;
  if (look.size != 1)
    put_size(format, parse_size(std::to_string(look.size * 100) + "%", format.size, format.size));
  if (tag == GUMBO_TAG_CENTER) style.alignment = Alignment::center;
}

void apply_alignment(Style& style, std::string_view value) {
  if (equals(value, "center")) style.alignment = Alignment::center;
  if (equals(value, "right") || equals(value, "end")) style.alignment = Alignment::right;
  if (equals(value, "left") || equals(value, "start") || equals(value, "justify")) {
    style.alignment = Alignment::left;
  }
}

/// Sizes 1 to 7 of a "font" element, to that of the page; 3 is the page's.
std::optional<float> old_size(std::string_view text, float medium) {
  constexpr std::array<float, 7> factors = {0.625F, 0.8125F, 1, 1.125F, 1.5F, 2, 3};
  text = trimmed(text);
  const bool is_more = text.starts_with('+');
  const bool is_less = text.starts_with('-');
  if (is_more || is_less) text.remove_prefix(1);
  if (text.empty() || !is_digit(text.front())) return {};
  const int number = text.front() - '0';
  const int size = is_more ? 3 + number : (is_less ? 3 - number : number);
  const float points = medium * factors[static_cast<std::size_t>(std::clamp(size, 1, 7) - 1)];
  return parse_size(std::to_string(points) + "pt", medium, medium);
}

bool has_word(std::string_view text, std::string_view wanted) {
  while (!text.empty()) {
    if (equals(take_word(text), wanted)) return true;
  }
  return false;
}

}  // namespace

std::string_view attribute(const GumboElement& element, const char* name) {
  const GumboAttribute* const found = gumbo_get_attribute(&element.attributes, name);
  return found == nullptr ? std::string_view() : std::string_view(found->value);
}

Style StyleRules::style_of(const GumboElement& element, const Style& outer) const {
  Style style = outer;
  apply_look(style, element.tag);
  if (element.attributes.length > 0) apply_attributes(style, element);
  if (element.attributes.length > 0 || !sheet_.empty()) {
    apply(style, declarations_for(element), outer);
  }
  if (style.format != outer.format) style.format_id.reset();
  return style;
}

void StyleRules::apply_attributes(Style& style, const GumboElement& element) const {
  style.is_hidden = gumbo_get_attribute(&element.attributes, "hidden") != nullptr;
  if (element.tag == GUMBO_TAG_FONT) {
    if (const auto color = parse_old_color(attribute(element, "color")))
      style.format.color = *color;
    const std::u16string font = first_font(attribute(element, "face"));
    if (!font.empty()) style.format.font_name = font;
    put_size(style.format, old_size(attribute(element, "size"), base_.size));
  }
  if (style.is_block) apply_alignment(style, attribute(element, "align"));
  if (has_word(attribute(element, "class"), "apple-converted-space")) {
    style.has_marked_blanks = true;
  }
}

Declarations StyleRules::declarations_for(const GumboElement& element) const {
  Declarations all;
  const auto add = [&](std::string_view selector) {
    if (const Declarations* const found = sheet_.find(selector)) all.add(*found);
  };
  if (!sheet_.empty()) {
    const std::string name = gumbo_normalized_tagname(element.tag);
    add(name);
    for (const std::string_view prefix : {std::string_view(), std::string_view(name)}) {
      for (std::string_view classes = attribute(element, "class"); !classes.empty();) {
        add(std::string(prefix).append(".").append(take_word(classes)));
      }
    }
  }
  all.add(Declarations(attribute(element, "style")));
  return all;
}

void StyleRules::apply(Style& style, const Declarations& declarations, const Style& outer) const {
  apply_font(style.format, declarations, outer);
  const std::string_view display = declarations[Property::display];
  if (!display.empty()) {
    style.is_hidden = equals(display, "none");
    style.is_block = !begins_with(display, "inline") && !equals(display, "contents") &&
                     (style.is_block || !begins_with(display, "table-cell"));
  }
  const std::string_view white_space = declarations[Property::white_space];
  if (!white_space.empty()) {
    style.keeps_lines = begins_with(white_space, "pre") || equals(white_space, "break-spaces");
    style.keeps_blanks = style.keeps_lines && !equals(white_space, "pre-line");
  }
  if (equals(declarations[Property::spacerun], "yes")) style.has_marked_blanks = true;
  apply_alignment(style, declarations[Property::text_align]);
  std::string_view list_style = declarations[Property::list_style];
  if (!list_style.empty()) style.list_style = take_word(list_style);
}

void StyleRules::apply_font(CharFormat& format, const Declarations& declarations,
                            const Style& outer) const {
  if (const auto color = parse_color(declarations[Property::color])) format.color = *color;
  const std::u16string font = first_font(declarations[Property::font_family]);
  if (!font.empty()) format.font_name = font;
  put_size(format, parse_size(declarations[Property::font_size], outer.format.size, base_.size));

  const std::string_view slant = declarations[Property::font_style];
  if (!slant.empty()) format.italic = equals(slant, "italic") || begins_with(slant, "oblique");
  const std::string_view weight = declarations[Property::font_weight];
  if (!weight.empty()) {
    const bool is_number = is_digit(weight.front());
    format.bold = is_number ? weight.size() > 3 || (weight.size() == 3 && weight.front() >= '6')
                            : begins_with(weight, "bold");
  }
  const std::string_view variant = declarations[Property::font_variant];
  if (!variant.empty()) format.small_caps = has_word(variant, "small-caps");

  const std::string_view lines = declarations[Property::text_decoration];
  if (!lines.empty()) {
    // The lines of elements around cannot be taken away.
    format.underline = outer.format.underline || has_word(lines, "underline");
    format.strike_through = outer.format.strike_through || has_word(lines, "line-through");
  }
  const std::string_view level = declarations[Property::vertical_align];
  if (equals(level, "super")) format.offset = raised;
  if (equals(level, "sub")) format.offset = -raised;
  if (equals(level, "baseline")) format.offset = outer.format.offset;
}

}  // namespace qel::html
