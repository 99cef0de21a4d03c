#pragma once

#include <gumbo.h>

#include <optional>
#include <string_view>

#include "Css.h"
#include "LineWriter.h"
#include "qel/richtext/CharFormat.h"

namespace qel::html {

/// What holds in an element.
struct Style {
  richtext::CharFormat format;
  std::optional<LineWriter::FormatId> format_id;  ///< once the sink has been told of the format
  richtext::Alignment alignment = richtext::Alignment::left;
  bool keeps_blanks = false;
  bool keeps_lines = false;
  bool has_marked_blanks = false;
  std::string_view list_style;  ///< as CSS names it; empty where the list decides
  int list_depth = 0;

  // Not handed down.
  bool is_block = false;
  bool is_hidden = false;
};

/// The style of elements by what they are, style sheet and attributes.
class StyleRules {
 public:
  /// The arguments must outlive this object.
  StyleRules(const StyleSheet& sheet, const richtext::CharFormat& base)
      : sheet_(sheet), base_(base) {}

  Style style_of(const GumboElement& element, const Style& outer) const;

 private:
  void apply_attributes(Style& style, const GumboElement& element) const;
  Declarations declarations_for(const GumboElement& element) const;
  void apply(Style& style, const Declarations& declarations, const Style& outer) const;
  void apply_font(richtext::CharFormat& format, const Declarations& declarations,
                  const Style& outer) const;

  const StyleSheet& sheet_;
  const richtext::CharFormat& base_;
};

/// Empty where the element does not have it.
std::string_view attribute(const GumboElement& element, const char* name);

}  // namespace qel::html
