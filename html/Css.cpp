#include "Css.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "Ascii.h"
#include "qel/base/Utf8.h"

namespace qel::html {
namespace {

constexpr std::array<std::pair<std::string_view, Property>, 16> properties = {{
    {"color", Property::color},
    {"display", Property::display},
    {"font-family", Property::font_family},
    {"font-size", Property::font_size},
    {"font-style", Property::font_style},
    {"font-variant", Property::font_variant},
    {"font-variant-caps", Property::font_variant},
    {"font-weight", Property::font_weight},
    {"list-style", Property::list_style},
    {"list-style-type", Property::list_style},
    {"mso-spacerun", Property::spacerun},
    {"text-align", Property::text_align},
    {"text-decoration", Property::text_decoration},
    {"text-decoration-line", Property::text_decoration},
    {"vertical-align", Property::vertical_align},
    {"white-space", Property::white_space},
}};

/// Position of the first of the characters that stands in no string and no brackets.
std::size_t find_outside(std::string_view text, std::string_view wanted, std::size_t from) {
  int depth = 0;
  for (std::size_t i = from; i < text.size(); ++i) {
    const char c = text[i];
    if (depth <= 0 && wanted.find(c) != wanted.npos) return i;
    if (c == '\\') {
      ++i;
    } else if (c == '"' || c == '\'') {
      // A string that is not closed ends with its line.
      while (i + 1 < text.size() && text[i + 1] != c && text[i + 1] != '\n') {
        i += text[i + 1] == '\\' ? 2U : 1U;
      }
      ++i;
    } else if (c == '(') {
      ++depth;
    } else if (c == ')') {
      --depth;
    }
  }
  return text.size();
}

std::string without_comments(std::string_view text) {
  std::string kept;
  while (!text.empty()) {
    const std::size_t begin = std::min(text.find("/*"), text.size());
    kept.append(text.substr(0, begin));
    const std::size_t end = begin == text.size() ? text.npos : text.find("*/", begin + 2);
    text.remove_prefix(end == text.npos ? text.size() : end + 2);
  }
  return kept;
}

/// Behind the brace that closes a block with others in it.
std::size_t end_of_block(std::string_view text, std::size_t at) {
  for (int depth = 1; depth > 0 && at < text.size(); ++at) {
    at = find_outside(text, "{}", at);
    if (at < text.size()) depth += text[at] == '{' ? 1 : -1;
  }
  return at;
}

bool is_weight(std::string_view word) {
  return equals(word, "bold") || equals(word, "bolder") || equals(word, "lighter") ||
         (word.size() == 3 && word.substr(1) == "00" && is_digit(word.front()));
}

}  // namespace

Declarations::Declarations(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = find_outside(text, ";", at);
    const std::string_view declaration = text.substr(at, end - at);
    at = end + 1;
    const std::size_t colon = declaration.find(':');
    if (colon == declaration.npos) continue;
    std::string_view value = declaration.substr(colon + 1);
    value = trimmed(value.substr(0, value.rfind('!')));
    // No value that makes sense is longer, and every element may have it.
    constexpr std::size_t longest = 256;
    declare(trimmed(declaration.substr(0, colon)), value.substr(0, longest));
  }
}

void Declarations::declare(std::string_view name, std::string_view value) {
  if (value.empty()) return;
  if (equals(name, "font")) return declare_font(value);
  for (const auto& [known, property] : properties) {
    if (equals(name, known)) set(property, value);
  }
}

/// "italic bold 12pt/14pt Arial, sans-serif"
void Declarations::declare_font(std::string_view value) {
  set(Property::font_style, "normal");
  set(Property::font_variant, "normal");
  set(Property::font_weight, "normal");
  while (!value.empty()) {
    const std::string_view word = take_word(value);
    if (equals(word, "italic") || equals(word, "oblique")) {
      set(Property::font_style, word);
    } else if (equals(word, "small-caps")) {
      set(Property::font_variant, word);
    } else if (is_weight(word)) {
      set(Property::font_weight, word);
    } else if (!equals(word, "normal")) {
      set(Property::font_size, word.substr(0, word.find('/')));
      set(Property::font_family, trimmed(value));
      return;
    }
  }
}

void Declarations::add(const Declarations& later) {
  for (std::size_t i = 0; i < property_count; ++i) {
    if (!later.values_[i].empty()) values_[i] = later.values_[i];
  }
}

StyleSheet::StyleSheet(std::string_view text) : text_(without_comments(text)) {
  const std::string_view sheet = text_;
  for (std::size_t at = 0; at < sheet.size();) {
    const std::size_t open = find_outside(sheet, "{;}", at);
    const std::string_view selectors = trimmed(sheet.substr(at, open - at));
    at = open + 1;
    if (open >= sheet.size() || sheet[open] != '{') continue;
    if (selectors.starts_with('@')) {
      at = end_of_block(sheet, at);
      continue;
    }
    const std::size_t close = find_outside(sheet, "}", at);
    add_rule(selectors, Declarations(sheet.substr(at, close - at)));
    at = close + 1;
  }
}

void StyleSheet::add_rule(std::string_view selectors, const Declarations& declarations) {
  // Old pages hide a sheet in a comment of HTML.
  if (selectors.starts_with("<!--")) selectors.remove_prefix(4);
  while (!selectors.empty()) {
    const std::size_t comma = std::min(selectors.find(','), selectors.size());
    const std::string_view selector = trimmed(selectors.substr(0, comma));
    selectors.remove_prefix(std::min(comma + 1, selectors.size()));
    const std::size_t dot = std::min(selector.find('.'), selector.size());
    if (selector.empty() || selector.find_first_of(" \t\n>+~:[#*", 0) != selector.npos) continue;
    if (dot < selector.size() && selector.find('.', dot + 1) != selector.npos) continue;
    std::string key;
    for (const char c : selector.substr(0, dot)) key.push_back(lower(c));
    rules_[key.append(selector.substr(dot))].add(declarations);
  }
}

const Declarations* StyleSheet::find(std::string_view selector) const {
  const auto found = rules_.find(std::string(selector));
  return found == rules_.end() ? nullptr : &found->second;
}

namespace {

std::optional<int> hex_value(char c) {
  if (is_digit(c)) return c - '0';
  if (lower(c) >= 'a' && lower(c) <= 'f') return lower(c) - 'a' + 10;
  return {};
}

/// Three or six digits, or as many and those of the opacity.
std::optional<Color> parse_digits(std::string_view digits) {
  if (!std::all_of(digits.begin(), digits.end(), [](char c) { return hex_value(c).has_value(); })) {
    return {};
  }
  const auto value = [&](std::size_t i) { return *hex_value(digits[i]); };
  if (digits.size() == 3 || digits.size() == 4) {
    return rgb(value(0) * 17, value(1) * 17, value(2) * 17);
  }
  if (digits.size() != 6 && digits.size() != 8) return {};
  return rgb(value(0) * 16 + value(1), value(2) * 16 + value(3), value(4) * 16 + value(5));
}

/// The number that a text begins with, and what stands behind it.
std::optional<std::pair<double, std::string_view>> parse_number(std::string_view text) {
  if (text.starts_with('+')) text.remove_prefix(1);
  const bool is_negative = text.starts_with('-');
  if (is_negative) text.remove_prefix(1);
  double number = 0;
  double unit = 1;
  bool has_digits = false;
  bool has_point = false;
  for (; !text.empty(); text.remove_prefix(1)) {
    if (is_digit(text.front())) {
      number = number * 10 + (text.front() - '0');
      unit = has_point ? unit * 10 : 1;
      has_digits = true;
    } else if (text.front() == '.' && !has_point) {
      has_point = true;
    } else {
      break;
    }
  }
  if (!has_digits || !std::isfinite(number) || !std::isfinite(unit)) return {};
  return std::pair((is_negative ? -number : number) / unit, text);
}

/// "255, 0, 0" or "100% 0% 0% / 50%"
std::optional<Color> parse_components(std::string_view text) {
  std::array<int, 3> parts = {};
  for (int& part : parts) {
    text.remove_prefix(std::min(text.find_first_not_of(", \t\n"), text.size()));
    const auto number = parse_number(text);
    if (!number) return {};
    const bool is_percentage = number->second.starts_with('%');
    const double value = is_percentage ? number->first * 2.55 : number->first;
    part = static_cast<int>(std::lround(std::clamp(value, 0.0, 255.0)));
    text = number->second.substr(is_percentage ? 1 : 0);
  }
  return rgb(parts[0], parts[1], parts[2]);
}

}  // namespace

std::optional<Color> parse_color(std::string_view text) {
  if (text.starts_with('#')) return parse_digits(text.substr(1));
  for (const std::string_view function : {"rgb(", "rgba("}) {
    if (begins_with(text, function)) return parse_components(text.substr(function.size()));
  }
  return color_named(text);
}

std::optional<Color> parse_old_color(std::string_view text) {
  text = trimmed(text);
  const auto color = parse_color(text);
  return color ? color : parse_digits(text);
}

namespace {

/// A name in quotes, or as words; "\" spells characters by their numbers.
std::u16string unescaped_name(std::string_view text) {
  const bool is_quoted = text.starts_with('"') || text.starts_with('\'');
  const char quote = is_quoted ? text.front() : '\0';
  std::string name;
  for (std::size_t i = is_quoted ? 1 : 0; i < text.size(); ++i) {
    if (is_quoted && text[i] == quote) break;
    if (text[i] != '\\') {
      name.push_back(text[i]);
      continue;
    }
    const std::size_t begin = i + 1;
    char32_t number = 0;
    while (i + 1 < text.size() && i < begin + 5 && hex_value(text[i + 1])) {
      number = number * 16 + static_cast<char32_t>(*hex_value(text[++i]));
    }
    if (i < begin) continue;
    if (i + 1 < text.size() && is_space(text[i + 1])) ++i;
    const bool is_unit = number > 0 && number < 0x10000;
    name.append(to_utf8(std::u16string(1, is_unit ? static_cast<char16_t>(number) : u'\uFFFD')));
  }
  return from_utf8(name, [](std::uint8_t byte) { return char16_t{byte}; });
}

constexpr std::array<std::pair<std::string_view, std::u16string_view>, 6> generic_fonts = {{
    {"monospace", u"Courier New"},
    {"sans-serif", u"Arial"},
    {"serif", u"Times New Roman"},
    {"ui-monospace", u"Courier New"},
    {"ui-sans-serif", u"Arial"},
    {"ui-serif", u"Times New Roman"},
}};

constexpr std::array<std::string_view, 9> no_fonts = {"inherit", "initial",   "unset",
                                                      "revert",  "system-ui", "-apple-system",
                                                      "cursive", "fantasy",   "blinkmacsystemfont"};

constexpr std::array<std::pair<std::string_view, float>, 9> named_sizes = {{
    {"xx-small", 0.5625F},
    {"x-small", 0.625F},
    {"small", 0.8125F},
    {"medium", 1.0F},
    {"large", 1.125F},
    {"x-large", 1.5F},
    {"xx-large", 2.0F},
    {"xxx-large", 3.0F},
    {"initial", 1.0F},
}};

/// Points, except for those that depend on a size.
constexpr std::array<std::pair<std::string_view, double>, 6> units = {
    {{"pt", 1}, {"px", 0.75}, {"pc", 12}, {"in", 72}, {"cm", 72 / 2.54}, {"mm", 7.2 / 2.54}}};

std::optional<double> in_points(double number, std::string_view unit, float outer, float medium) {
  if (equals(unit, "em")) return number * outer;
  if (equals(unit, "rem")) return number * medium;
  if (equals(unit, "ex")) return number * outer / 2;
  if (unit == "%") return number * outer / 100;
  for (const auto& [name, points] : units) {
    if (equals(unit, name)) return number * points;
  }
  return {};
}

}  // namespace

std::u16string first_font(std::string_view list) {
  const std::string_view first = trimmed(list.substr(0, find_outside(list, ",", 0)));
  for (const auto& [name, font] : generic_fonts) {
    if (equals(first, name)) return std::u16string(font);
  }
  const bool says_nothing =
      std::any_of(no_fonts.begin(), no_fonts.end(),
                  [first](std::string_view name) { return equals(first, name); });
  return says_nothing ? std::u16string() : unescaped_name(first);
}

std::optional<float> parse_size(std::string_view text, float outer, float medium) {
  constexpr float step = 1.2F;
  if (equals(text, "larger")) return outer * step;
  if (equals(text, "smaller")) return outer / step;
  for (const auto& [name, factor] : named_sizes) {
    if (equals(text, name)) return medium * factor;
  }
  const auto number = parse_number(text);
  if (!number) return {};
  const auto points = in_points(number->first, trimmed(number->second), outer, medium);
  constexpr double largest = 1638;
  if (!points || *points <= 0 || *points > largest) return {};
  // Documents count in half-points.
  return static_cast<float>(std::max(1.0, std::round(*points * 2) / 2));
}

}  // namespace qel::html
