#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "qel/base/Color.h"

namespace qel::html {

/// The properties that make formats.
enum class Property : std::uint8_t {
  color,
  display,
  font_family,
  font_size,
  font_style,
  font_variant,
  font_weight,
  list_style,
  spacerun,  ///< text processors: no-break spaces stand for blanks
  text_align,
  text_decoration,
  vertical_align,
  white_space,
};
constexpr std::size_t property_count = 13;

/// The values that a block of declarations gives these properties; empty for those that it does not
/// mention. The values are parts of the text.
class Declarations {
 public:
  Declarations() = default;
  explicit Declarations(std::string_view text);

  std::string_view operator[](Property property) const {
    return values_[static_cast<std::size_t>(property)];
  }
  /// Takes over what later declarations mention.
  void add(const Declarations& later);

 private:
  void declare(std::string_view name, std::string_view value);
  void declare_font(std::string_view value);
  void set(Property property, std::string_view value) {
    values_[static_cast<std::size_t>(property)] = value;
  }

  std::array<std::string_view, property_count> values_;
};

/// The rules of a style sheet for elements ("p"), classes (".note") and both ("p.note"). All others
/// are ignored.
class StyleSheet {
 public:
  explicit StyleSheet(std::string_view text);
  StyleSheet(const StyleSheet&) = delete;
  StyleSheet& operator=(const StyleSheet&) = delete;

  /// The declarations for a selector in lower case, classes aside; null when there are none.
  const Declarations* find(std::string_view selector) const;
  bool empty() const { return rules_.empty(); }

 private:
  void add_rule(std::string_view selectors, const Declarations& declarations);

  std::string text_;
  std::unordered_map<std::string, Declarations> rules_;
};

/// A colour in any spelling but those by hue.
std::optional<Color> parse_color(std::string_view text);
/// As attributes have it: digits may stand without "#".
std::optional<Color> parse_old_color(std::string_view text);
/// A colour by its name.
std::optional<Color> color_named(std::string_view name);

/// The first name of a list of fonts; empty for one that says nothing.
std::u16string first_font(std::string_view list);

/// A size in points; `outer` is that of the element around, `medium` that of the page.
std::optional<float> parse_size(std::string_view text, float outer, float medium);

}  // namespace qel::html
