#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/model/QELCode.h"
#include "qel/platform/MeasuringSurface.h"

namespace qel {

/// The numbered table of the ten font names that "/f0" to "/f9" refer to, and the default size.
/// Index 0 is the default font.
class QELIndexFonts {
 public:
  /// The name of an unused entry.
  static constexpr std::u16string_view unused = u"<none>";

  /// 0 when font 0 has this name, else the lowest of 1 to 9 that has it, ignoring case; -1 when
  /// none has.
  std::int16_t FontIndexGivenFontName(std::u16string_view Name) const;
  /// The font table of an RTF document. Fonts that the surface reports as symbol fonts are marked;
  /// a font that it cannot try out is not. Raises an error when there is no surface (null).
  std::u16string FontTable(platform::MeasuringSurface* Surface) {
    return font_table(Surface, Way::stated);
  }
  /// The same; in the lossless way with names that tell all entries apart.
  std::u16string font_table(platform::MeasuringSurface* surface, Way way);
  /// The names as RTF has them, so that each stands for one entry: a name that an entry before has,
  /// too, has some of its letters in the other case (fonts are known whatever the case of their
  /// names), and an empty one is that of an unused entry.
  std::array<std::u16string, 10> distinct_names() const;

  /// The table as text: the ten names joined by TAB, then "<Fonts:Rec>" and the size.
  std::u16string get_All() const;
  /// Reads such a text. Never raises: missing names become empty, and a size that is not a number
  /// leaves the size as it was.
  void put_All(std::u16string_view Value);

  void CopyFrom(const QELIndexFonts& Source);

  /// Name at `Index` (0 to 9); empty for any other index.
  std::u16string get_Font(std::int16_t Index) const;
  /// Stores `Value` at `Index`; an index outside 0 to 9 is ignored.
  void put_Font(std::int16_t Index, std::u16string_view Value);
  /// Font 0.
  std::u16string get_DefaultFont() const { return names_.front(); }
  void put_DefaultFont(std::u16string_view Value) { put_Font(0, Value); }
  /// The default size in points.
  float get_FontSize() const { return size_; }
  void put_FontSize(float Value) { size_ = Value; }

 private:
  using Names = std::array<std::u16string, 10>;

  void mark_symbol_fonts(platform::MeasuringSurface& surface);

  static constexpr std::size_t count = 10;

  Names names_ = {u"Arial",  u"Symbol", u"Courier New", u"Times New Roman", u"<none>",
                  u"<none>", u"<none>", u"<none>",      u"<none>",          u"<none>"};
  std::array<bool, count> is_symbol_ = {};
  float size_ = 10;
};

}  // namespace qel
