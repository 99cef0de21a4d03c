#pragma once

#include <string>
#include <string_view>

namespace qel::richtext {

/// A font in which the numbers of letters stand for pictures, most of which have a number of their
/// own in Unicode.
class SymbolFont {
 public:
  constexpr SymbolFont(std::u16string_view name, std::u32string_view characters)
      : name_(name), characters_(characters) {}

  /// The font with this name, whatever its case; null for a font of letters, and for one whose
  /// pictures are not known.
  static const SymbolFont* find(std::u16string_view name);

  /// The characters that look like `text` in this font. Its pictures have the numbers 0x20 to 0xFF,
  /// or U+F020 to U+F0FF; all else stays, and so does a picture that Unicode does not have.
  std::u16string in_unicode(std::u16string_view text) const;

 private:
  std::u16string_view name_;  // in lower case
  std::u32string_view characters_;
};

/// The character for which a field stands whose instruction is of the kind
/// `SYMBOL 163 \f "Symbol"`; empty for other fields.
std::u16string symbol_of_field(std::u16string_view instruction);

}  // namespace qel::richtext
