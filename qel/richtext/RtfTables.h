#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qel/base/Color.h"

namespace qel::richtext {

/// The name of a font without its ending for a code page, as in "Arial CE".
std::u16string_view family_of(std::u16string_view name);

/// The fonts of an RTF document, collected while its font table is read. Of a name that is longer
/// than any font's the beginning is kept, and of more fonts than any document has the first ones.
class RtfFontTable {
 public:
  struct Font {
    std::u16string name;
    std::optional<int> code_page;  ///< of its bytes; empty for that of the document
  };

  /// Each sets a part of the entry being read: its number, character set or code page, and name.
  void begin_font(std::int32_t number) { number_ = number; }
  void set_character_set(std::int32_t character_set);
  void set_code_page(std::int32_t code_page) { font_.code_page = code_page; }
  void add_to_name(std::u16string_view text);
  /// Text of the table: names, each ended by a semicolon.
  void read_text(std::u16string_view text);
  /// Ends the entry. One without a name is dropped. An ending that names the entry's own code page,
  /// as in "Arial CE", is dropped from the name: the font is the one without it. So is any where
  /// the entry has the character set of Western, or no certain one, and symbols are symbols there.
  /// An entry that has no character set at all is left as it is.
  void end_font();
  /// The code page of the name of the entry being read; empty for that of the document.
  std::optional<int> name_code_page() const;

  /// The font with this number; null when there is none.
  const Font* find(std::int32_t number) const;

 private:
  std::int32_t number_ = 0;
  bool has_character_set_ = false;
  Font font_;
  std::map<std::int32_t, Font> fonts_;  // no hash table: the input chooses the numbers
};

/// The colours of an RTF document, collected while its colour table is read; of more than any
/// document has, the first ones.
class RtfColorTable {
 public:
  /// Sets a component of the entry being read: 0 red, 1 green, 2 blue. A value outside 0 to 255
  /// becomes the nearest within.
  void set_component(std::int32_t component, std::int32_t value);
  /// Text of the table: each semicolon ends an entry. One without any component is the automatic
  /// colour.
  void read_text(std::u16string_view text);

  /// The colour with this number; empty for the automatic colour and for a number out of range.
  std::optional<Color> find(std::int32_t number) const;

 private:
  void end_color();

  std::optional<std::uint32_t> color_;
  std::vector<std::optional<Color>> colors_;
};

}  // namespace qel::richtext
