#pragma once

#include <cstdint>

#include "qel/richtext/Alignment.h"

namespace qel::richtext {

/// Where the text of an RTF group goes.
enum class Destination : std::uint8_t {
  text,
  skipped,
  font_table,
  color_table,
  /// The mark of a list item, which is examined as a whole.
  list_text,
  /// What a field shows, as an expression.
  field_instruction,
  /// A group that holds a text twice: in the code page, and in Unicode in a "\ud" group.
  unicode_pair,
  /// A drawing or an embedded object: of all it holds, one part may be text.
  shape,
  object,
  /// A picture, one of whose properties may be wanted.
  picture,
  /// The name and the value of a property of a picture or a shape.
  property_name,
  property_value,
};

/// Whether text in a group counts only in a part that a word of its own begins.
constexpr bool has_text_parts(Destination destination) {
  return destination == Destination::unicode_pair || destination == Destination::shape ||
         destination == Destination::object || destination == Destination::picture;
}

/// The character properties of RTF, small enough to copy at every brace.
struct CharState {
  static constexpr std::uint8_t bold = 1;
  static constexpr std::uint8_t italic = 2;
  static constexpr std::uint8_t underline = 4;
  static constexpr std::uint8_t strike_through = 8;
  static constexpr std::uint8_t hidden = 16;
  static constexpr std::uint8_t deleted = 32;
  static constexpr std::uint8_t small_caps = 64;
  static constexpr std::int32_t default_font = -1;
  static constexpr std::uint16_t default_size = 0;

  std::int32_t font = default_font;
  std::int32_t color = 0;
  std::uint16_t half_points = default_size;
  std::int16_t offset = 0;  ///< in half-points
  std::uint8_t flags = 0;

  friend bool operator==(const CharState&, const CharState&) = default;
};

/// What a group restores when it ends.
struct GroupState {
  CharState character;
  /// Number of characters after "\u" for readers without Unicode.
  std::uint8_t replacement_length = 1;
  Destination destination = Destination::text;
  Alignment alignment = Alignment::left;
  /// Whether the field being read has been shown already, so that its result would repeat it.
  bool is_field_shown = false;
  /// How many notes, headers and links the group lies in.
  std::uint8_t asides = 0;
};

}  // namespace qel::richtext
