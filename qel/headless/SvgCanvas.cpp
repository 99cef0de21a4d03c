#include "qel/headless/SvgCanvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "qel/base/Bidi.h"
#include "qel/base/CaseMapping.h"
#include "qel/base/Graphemes.h"
#include "qel/base/Utf16.h"
#include "qel/base/Utf8.h"
#include "qel/headless/FontMetrics.h"

namespace qel::headless {
namespace {

/// The families as a style sheet names them, best first.
struct FamilyList {
  std::u16string_view first;
  std::string_view all;
};

/// Fonts named Symbol are left out: where a viewer has one, it would read the text in that font's
/// own encoding.
const FamilyList& families(FontFamily family) {
  static constexpr std::string_view serif = "'Times New Roman', 'Liberation Serif', Times, serif";
  static constexpr std::array<FamilyList, 4> lists = {
      {{u"Arial", "Arial, 'Liberation Sans', Helvetica, sans-serif"},
       {u"Times New Roman", serif},
       {u"Courier New", "'Courier New', 'Liberation Mono', Courier, monospace"},
       {u"Symbol", serif}}};
  return lists[static_cast<std::size_t>(family)];
}

bool is_forbidden(char16_t unit) { return unit < u' ' || unit == 0xFFFE || unit == 0xFFFF; }

/// Text for XML: without forbidden characters and with the special ones escaped.
std::string escaped(std::u16string text) {
  std::replace_if(text.begin(), text.end(), is_forbidden, u'\uFFFD');
  std::string out;
  for (const char byte : to_utf8(text)) {
    switch (byte) {
      case '&':
        out.append("&amp;");
        break;
      case '<':
        out.append("&lt;");
        break;
      case '>':
        out.append("&gt;");
        break;
      case '"':
        out.append("&quot;");
        break;
      default:
        out.push_back(byte);
    }
  }
  return out;
}

/// The text with the characters that it stands for in its font.
std::u16string shown(std::u16string_view text, FontFamily family) {
  std::u16string out;
  out.reserve(text.size());
  for (const char16_t unit : text) {
    const char16_t visible = unit == u'\t' ? u' ' : unit;
    out.push_back(family == FontFamily::symbol ? static_cast<char16_t>(symbol_character(visible))
                                               : visible);
  }
  return out;
}

/// The font by its name, then those that can replace it.
std::string font_families(const std::u16string& name, FontFamily family) {
  const FamilyList& list = families(family);
  // Longer than the name of any font; it is repeated with each text.
  constexpr std::size_t longest_name = 64;
  const bool named = !name.empty() && name.size() <= longest_name && family != FontFamily::symbol &&
                     !equal_ignoring_case(name, list.first);
  if (!named) return std::string(list.all);
  std::u16string quoted = u"'";
  for (const char16_t unit : name) {
    if (unit == u'\'' || unit == u'\\') quoted.push_back(u'\\');
    quoted.push_back(unit);
  }
  return escaped(quoted.append(u"', ")).append(list.all);
}

/// The value with three decimals at most.
std::string number(float value) {
  constexpr float limit = 1e9F;
  constexpr std::int64_t scale = 1000;
  if (std::isnan(value)) return "0";
  const std::int64_t scaled = std::llround(static_cast<double>(std::clamp(value, -limit, limit)) *
                                           static_cast<double>(scale));
  std::string digits = std::to_string(std::abs(scaled) % scale + scale).substr(1);
  digits.erase(digits.find_last_not_of('0') + 1);
  std::string out = scaled < 0 ? "-" : "";
  out.append(std::to_string(std::abs(scaled) / scale));
  if (!digits.empty()) out.append(".").append(digits);
  return out;
}

std::string hex(Color color) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string out = "#";
  for (const int part : {red_of(color), green_of(color), blue_of(color)}) {
    out.push_back(digits[static_cast<std::size_t>(part / 16)]);
    out.push_back(digits[static_cast<std::size_t>(part % 16)]);
  }
  return out;
}

std::string attribute(std::string_view name, std::string_view value) {
  return std::string(" ").append(name).append("=\"").append(value).append("\"");
}

std::string rectangle_element(const platform::CanvasRectangle& rectangle, Color color) {
  return "<rect" + attribute("x", number(rectangle.left)) + attribute("y", number(rectangle.top)) +
         attribute("width", number(rectangle.width)) +
         attribute("height", number(rectangle.height)) + attribute("fill", hex(color)) + "/>\n";
}

std::string font_attributes(const platform::TextFont& font, FontFamily family) {
  std::string out = attribute("font-family", font_families(font.name, family)) +
                    attribute("font-size", number(font.size));
  if (font.bold) out += attribute("font-weight", "bold");
  if (font.italic) out += attribute("font-style", "italic");
  return out;
}

/// Glyphs are stretched too: spacing alone could not fit a single character, and would tear joined
/// letters apart.
std::string length_attributes(float width) {
  const std::string length = number(width);
  if (!(width > 0) || length == "0") return {};
  return attribute("textLength", length) + attribute("lengthAdjust", "spacingAndGlyphs");
}

constexpr std::u16string_view blanks = u" \t\u00A0";

bool is_blank(std::u16string_view text) {
  return text.find_first_not_of(blanks) == std::u16string_view::npos;
}

/// Pictographs, which may be joined to one, and other characters beyond the first 65,536.
bool may_be_joined(char32_t character) {
  return character > 0xFFFF || (character >= 0x2600 && character <= 0x27BF);
}

/// How sure the width of a text is. Blanks and what has no width are as sure as what is beside
/// them.
enum class Sureness : std::uint8_t { either, known, guessed };

Sureness sureness_of(std::u16string_view text, const FontFace& face) {
  constexpr char32_t as_emoji = 0xFE0F;
  Sureness sureness = Sureness::either;
  for (std::size_t at = 0; at < text.size();) {
    const bool is_replaced = is_forbidden(text[at]) && text[at] != u'\t';
    const char32_t character = next_character(text, at);
    if (!is_replaced && (character == as_emoji || !face.covers(character))) {
      return Sureness::guessed;
    }
    const bool is_letter = face.advance(character) > 0 && !is_blank(text.substr(at - 1, 1));
    if (is_letter || is_replaced) sureness = Sureness::known;
  }
  return sureness;
}

/// A part of a text: whole clusters whose widths are all known or all guessed.
struct TextPart {
  std::size_t end;
  bool is_known;
};

TextPart part_at(std::u16string_view text, std::size_t begin, const FontFace& face) {
  Sureness sureness = Sureness::either;
  std::size_t at = begin;
  while (at < text.size()) {
    const std::size_t next = cluster_after(text, at);
    const Sureness of_next = sureness_of(text.substr(at, next - at), face);
    if (sureness == Sureness::either) sureness = of_next;
    if (of_next != Sureness::either && of_next != sureness) break;
    at = next;
  }
  return {at, sureness != Sureness::guessed};
}

}  // namespace

SvgCanvas::SvgCanvas(float width, float margin, std::optional<Color> background)
    : width_(width), margin_(margin), background_(background) {}

float SvgCanvas::text_width(std::u16string_view text, const platform::TextFont& font) const {
  const FontFace face(font);
  std::uint64_t units = 0;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t begin = at;
    const char32_t character = next_character(text, at);
    units += face.advance(character);
    if (may_be_joined(character)) at = cluster_after(text, begin);
  }
  return static_cast<float>(static_cast<double>(units) / FontFace::units_per_em *
                            static_cast<double>(std::max(0.0F, font.size)));
}

platform::FontExtent SvgCanvas::font_extent(const platform::TextFont& font) const {
  const LineMetrics& lines = FontFace(font).lines();
  const float unit = std::max(0.0F, font.size) / static_cast<float>(FontFace::units_per_em);
  return {static_cast<float>(lines.ascent) * unit, static_cast<float>(lines.descent) * unit,
          static_cast<float>(lines.leading) * unit};
}

void SvgCanvas::draw_text(const platform::CanvasText& text) {
  if (text.text.empty() || !(text.font.size > 0)) return;
  height_ = std::max(height_, text.y + font_extent(text.font).descent);
  const FontFace face(text.font);
  // What reads from right to left is one part, as only the viewer knows its order.
  const bool is_whole = text.right_to_left || has_right_to_left(text.text);
  platform::CanvasText part = text;
  for (std::size_t begin = 0; begin < text.text.size();) {
    const auto [end, is_known] =
        is_whole ? TextPart{text.text.size(), false} : part_at(text.text, begin, face);
    part.text = text.text.substr(begin, end - begin);
    const bool is_all = part.text.size() == text.text.size();
    part.width = is_all ? text.width : text_width(part.text, text.font);
    draw_part(part, is_known);
    part.x += part.width;
    begin = end;
  }
}

/// Draws a part whose width is known, or guessed: then it is not the viewer's to keep.
void SvgCanvas::draw_part(const platform::CanvasText& text, bool is_known) {
  if (is_blank(text.text)) return;
  const std::size_t end = text.text.find_last_not_of(u' ') + 1;
  const bool ends_in_blanks = end < text.text.size();
  right_ = std::max(
      right_,
      text.x + (ends_in_blanks ? text_width(text.text.substr(0, end), text.font) : text.width));
  const FontFamily family = family_named(text.font.name);
  // Text is anchored where it begins. Browsers do not let it inherit how its blanks are treated.
  const float x = text.right_to_left ? text.x + text.width : text.x;
  elements_ += "<text" + attribute("x", number(x)) + attribute("y", number(text.y)) +
               (text.right_to_left ? attribute("direction", "rtl") : std::string()) +
               (is_known ? length_attributes(text.width) : std::string()) +
               font_attributes(text.font, family) + attribute("fill", hex(text.color)) +
               attribute("xml:space", "preserve") + ">" + escaped(shown(text.text, family)) +
               "</text>\n";
}

void SvgCanvas::fill_rectangle(const platform::CanvasRectangle& rectangle, Color color) {
  if (!(rectangle.width > 0) || !(rectangle.height > 0)) return;
  height_ = std::max(height_, rectangle.top + rectangle.height);
  right_ = std::max(right_, rectangle.left + rectangle.width);
  elements_ += rectangle_element(rectangle, color);
}

std::string SvgCanvas::svg() const {
  // Viewers do not show a page without any extent.
  constexpr float least = 1;
  const platform::CanvasRectangle page = {-margin_, -margin_,
                                          std::max(std::max(width_, right_) + 2 * margin_, least),
                                          std::max(height_ + 2 * margin_, least)};
  const std::string width = number(page.width);
  const std::string height = number(page.height);
  std::string out = "<svg" + attribute("xmlns", "http://www.w3.org/2000/svg") +
                    attribute("width", width + "pt") + attribute("height", height + "pt") +
                    attribute("viewBox", number(page.left) + " " + number(page.top) + " " + width +
                                             " " + height) +
                    attribute("style", "font-kerning: none; font-variant-ligatures: none") + ">\n";
  if (background_) out += rectangle_element(page, *background_);
  return out.append(elements_).append("</svg>\n");
}

}  // namespace qel::headless
