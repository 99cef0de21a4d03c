#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "qel/convert/HtmlWriter.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::convert {

/// Elements are numbered in the order in which they are opened: the attributes by their bits, then
/// colour and font.
namespace html_elements {

inline constexpr std::size_t attribute_count = 7;
inline constexpr std::size_t color = 7;
inline constexpr std::size_t font = 8;
inline constexpr std::size_t count = 9;
/// Colours, or fonts, of a table.
inline constexpr std::size_t index_count = 10;
/// The places of the tags of colours and of fonts among all tags.
inline constexpr std::size_t first_color_tag = attribute_count;
inline constexpr std::size_t first_font_tag = first_color_tag + index_count;
inline constexpr std::size_t tag_count = first_font_tag + index_count;

}  // namespace html_elements

/// What HTML makes of the tables, in UTF-16 or UTF-8.
template <class Char>
struct HtmlTags {
  HtmlTags(const QELIndexFonts& font_table, const QELIndexColors& color_table,
           const HtmlOptions& options);

  /// What opens an element of each attribute, colour and font.
  std::array<std::basic_string<Char>, html_elements::tag_count> begin;
  unsigned nameless_fonts = 0;   ///< as bits: unused entries, for which there is no element
  std::basic_string<Char> head;  ///< what stands before the text: nothing in a fragment
};

/// The entity for the character; empty for one that stands for itself.
std::u16string_view entity_of(char16_t c);

}  // namespace qel::convert
