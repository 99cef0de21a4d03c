#include "qel/convert/HtmlTags.h"

#include <cstddef>

#include "qel/base/Records.h"
#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"

namespace qel::convert {
namespace {

constexpr char16_t hex_digit(int value) { return u"0123456789abcdef"[value & 0xF]; }

std::u16string css_color(Color color) {
  std::u16string text = u"color:#";
  for (const int part : {red_of(color), green_of(color), blue_of(color)}) {
    text.push_back(hex_digit(part >> 4));
    text.push_back(hex_digit(part));
  }
  return text;
}

/// A declaration for a place where `&`, `<` and `>` are text, as in a style sheet.
std::u16string css_font(std::u16string_view name) {
  std::u16string text = u"font-family:'";
  for (std::size_t at = 0; at < name.size();) {
    const char32_t character = next_character(name, at);
    const bool is_plain = character >= U' ' && character != U'\'' && character != U'\\' &&
                          character != U'<' && (character < 0x7F || character >= 0xA0);
    if (!is_plain) {
      text.append({u'\\', hex_digit(static_cast<int>(character >> 4)),
                   hex_digit(static_cast<int>(character)), u' '});
    } else if (units_of(character) == 2) {
      text.append(name.substr(at - 2, 2));
    } else {
      text.push_back(static_cast<char16_t>(character));
    }
  }
  return text.append(u"'");
}

std::u16string css_defaults(const QELIndexFonts& fonts, const QELIndexColors& colors) {
  return css_font(fonts.get_DefaultFont())
      .append(u";font-size:")
      .append(records::write(fonts.get_FontSize()))
      .append(u"pt;")
      .append(css_color(colors.get_DefaultColor()));
}

std::u16string tag_with(std::u16string_view beginning, std::u16string_view value) {
  std::u16string tag(beginning);
  tag.append(u"=\"");
  for (const char16_t c : value) {
    const std::u16string_view entity = entity_of(c);
    entity.empty() ? tag.push_back(c) : void(tag.append(entity));
  }
  return tag.append(u"\">");
}

std::u16string class_of(char16_t letter, std::size_t index) {
  return {u'q', u'e', u'l', u'-', letter, static_cast<char16_t>(u'0' + index)};
}

/// Whether an entry of the table is used.
bool has_name(const QELIndexFonts& fonts, std::size_t index) {
  const std::u16string name = fonts.get_Font(static_cast<std::int16_t>(index));
  return !name.empty() && name != QELIndexFonts::unused;
}

std::u16string head_of(const QELIndexFonts& fonts, const QELIndexColors& colors, bool has_classes) {
  std::u16string head = u"<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n";
  if (!has_classes) {
    head.append(u"</head>\n");
    return head.append(tag_with(u"<body style", css_defaults(fonts, colors)));
  }
  const auto names = fonts.distinct_names();
  head.append(u"<style>\nbody{").append(css_defaults(fonts, colors)).append(u"}\n");
  for (std::size_t i = 1; i < names.size(); ++i) {
    const Color color = colors.get_Color(static_cast<std::int16_t>(i));
    if (has_name(fonts, i)) {
      head.append(u".").append(class_of(u'f', i)).append(u"{");
      head.append(css_font(names[i])).append(u"}\n");
    }
    head.append(u".").append(class_of(u'y', i)).append(u"{").append(css_color(color));
    head.append(u"}\n");
  }
  return head.append(u"</style>\n</head>\n<body>");
}

constexpr std::array<std::u16string_view, html_elements::attribute_count> attribute_tags = {
    {u"<b>", u"<i>", u"<u>", u"<span style=\"font-variant:small-caps\">", u"<s>", u"<sub>",
     u"<sup>"}};

void assign(std::string& to, std::u16string_view text) { to = to_utf8(text); }
void assign(std::u16string& to, std::u16string_view text) { to = text; }

}  // namespace

template <class Char>
HtmlTags<Char>::HtmlTags(const QELIndexFonts& font_table, const QELIndexColors& color_table,
                         const HtmlOptions& options) {
  const auto names = font_table.distinct_names();
  const std::u16string_view span = options.classes ? u"<span class" : u"<span style";
  for (std::size_t i = 0; i < attribute_tags.size(); ++i) assign(begin[i], attribute_tags[i]);
  for (std::size_t i = 0; i < html_elements::index_count; ++i) {
    const Color color = color_table.get_Color(static_cast<std::int16_t>(i));
    assign(begin[html_elements::first_color_tag + i],
           tag_with(span, options.classes ? class_of(u'y', i) : css_color(color)));
    assign(begin[html_elements::first_font_tag + i],
           tag_with(span, options.classes ? class_of(u'f', i) : css_font(names[i])));
    if (!options.classes && !has_name(font_table, i)) nameless_fonts |= 1U << i;
  }
  if (options.whole_document) assign(head, head_of(font_table, color_table, options.classes));
}

template struct HtmlTags<char>;
template struct HtmlTags<char16_t>;

std::u16string_view entity_of(char16_t c) {
  switch (c) {
    case u'&':
      return u"&amp;";
    case u'<':
      return u"&lt;";
    case u'>':
      return u"&gt;";
    case u'"':
      return u"&quot;";
    default:
      return {};
  }
}

}  // namespace qel::convert
