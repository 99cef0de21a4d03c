#pragma once

#include <cstdint>
#include <string_view>

#include "qel/platform/Canvas.h"

/// How wide and how high text is in the default fonts, the same on every system. The numbers come
/// from fonts that were made as wide as the defaults: Liberation Sans for Arial, Liberation Serif
/// for Times New Roman, Liberation Mono for Courier New, and Standard Symbols PS for Symbol
/// (`scripts/generate-font-metrics` reads them).
namespace qel::headless {

enum class FontFamily : std::uint8_t { sans, serif, mono, symbol };

/// The family that stands for the font of this name, ignoring case and whatever follows the name
/// after a blank ("Arial CE"). An unknown font is sans.
FontFamily family_named(std::u16string_view name);

/// The character that `character` stands for in the font Symbol: alpha for "a" and for U+F061. A
/// character that is not in the font's encoding stands for itself.
char32_t symbol_character(char32_t character);

/// Vertical extent of a family, in the units of `FontFace`.
struct LineMetrics {
  int ascent;
  int descent;
  int leading;
};

/// A family in regular, bold, italic or both. Symbol is the same in all four.
class FontFace {
 public:
  static constexpr int units_per_em = 2048;

  explicit FontFace(const platform::TextFont& font);

  FontFamily family() const { return family_; }
  const LineMetrics& lines() const;

  /// Whether the character's advance is known, not a guess.
  bool covers(char32_t character) const;
  /// The advance width of the character, in units. Kerning is not applied, so a text is as wide as
  /// its characters together. Combining marks and formatting characters are 0 wide, and a TAB is as
  /// wide as a blank. A character that the face lacks is as wide as its average character, an
  /// East Asian wide character or a pictograph one em; in Symbol it is as wide as in sans.
  std::uint32_t advance(char32_t character) const {
    const char32_t index = character - U' ';
    return index <= U'~' - U' ' ? ascii_advances_[index] : other_advance(character);
  }

 private:
  std::uint32_t other_advance(char32_t character) const;

  FontFamily family_;
  unsigned style_;                       // 1 bold, 2 italic
  const std::uint16_t* ascii_advances_;  // from the blank to the tilde
};

}  // namespace qel::headless
