#pragma once

#include <cstddef>
#include <cstdint>

#include "qel/richtext/RtfTokens.h"

namespace qel::richtext {

/// What a control word does. The number that goes with it is in `KnownWord::argument`. Those that
/// set properties come first.
enum class WordAction : std::uint8_t {
  set_flag,          ///< of the character state
  clear_flag,        ///< whatever the parameter
  set_offset,        ///< sign of the parameter, which counts half-points
  set_fixed_offset,  ///< in half-points
  set_font,
  set_size,
  set_color,
  set_plain,
  set_alignment,
  set_default_font,
  set_code_page,  ///< its number, or 0 for the parameter's
  set_character_set,
  set_font_code_page,
  set_color_component,  ///< 0 red, 1 green, 2 blue
  set_replacement_length,
  set_destination,
  begin_text_part,  ///< of the destination that holds it; elsewhere without effect
  begin_field,
  begin_field_result,
  add_character,
  add_unicode,
  add_break,  ///< 1 where it only ends a line that has text
  end_cell,
  end_row,
  begin_aside,  ///< `Aside` that it is
  begin_object,
  begin_picture,
  begin_property_part,       ///< destination
  begin_picture_properties,  ///< which are of interest where the picture is
  skip_binary,
  none
};

constexpr auto property_count = static_cast<std::size_t>(WordAction::add_character);
constexpr bool sets_property(WordAction action) {
  return static_cast<std::size_t>(action) < property_count;
}

/// Text beside the text, dropped unless it is asked for.
enum class Aside : std::uint8_t { note, header, link };

struct KnownWord {
  WordKey key = no_word;
  WordAction action = WordAction::none;
  std::int32_t argument = 0;
};

/// The control word with this key; null for one that means nothing to the reader.
const KnownWord* find_word(WordKey key);

}  // namespace qel::richtext
