#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/platform/RichEdit.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::rtf {

/// How a walk's codes are spelt in one format.
struct Spelling {
  struct Toggle {
    std::u16string_view on;
    std::u16string_view off;
  };
  /// Bold, italic, underline, strike-through, superscript, subscript.
  std::array<Toggle, 6> toggles;
  std::u16string_view font;   ///< before the digit of a font
  std::u16string_view color;  ///< before the digit of a colour
  std::u16string_view end;    ///< after that digit
};

/// Markup: "/b1", "/f2".
extern const Spelling markup_spelling;
/// Reduced RTF: "\b1 ", "\f2 ".
extern const Spelling rtf_spelling;

/// Where the text of a walk comes from.
enum class Origin : std::uint8_t {
  rtf,  ///< a box that was loaded with RTF: taken as it is
  box,  ///< any other box: only what its RTF would say counts
};

/// Writes a code wherever the format of a text changes. It tells only fonts 1 to 3 and colours 1 to
/// 3 of the tables apart; all others count as the default.
class FormatWalk {
 public:
  FormatWalk(const Spelling& spelling, const QELIndexFonts& fonts, const QELIndexColors& colors,
             Origin origin, std::u16string& out);

  /// The codes before a character in this format.
  void enter(const richtext::CharFormat& format);
  /// The codes that close what is open.
  void close();

  bool wrote_font() const { return wrote_font_; }
  bool wrote_color() const { return wrote_color_; }

 private:
  std::int32_t offset_of(const richtext::CharFormat& format) const;
  int font_index(std::u16string_view name) const;
  int color_index(Color color) const;
  void set_toggle(std::size_t toggle, bool on);
  void set_font(int index);
  void set_color(int index);
  void write_index(std::u16string_view prefix, int index);

  const Spelling& spelling_;
  Origin origin_;
  std::u16string& out_;
  std::array<std::u16string, 4> fonts_;  // names of fonts 0 to 3
  std::array<Color, 4> colors_;          // colours 0 to 3
  std::array<bool, 6> open_ = {};
  int font_ = 0;   // index of the open font code, 0 when none is open
  int color_ = 0;  // likewise for the colour code
  bool wrote_font_ = false;
  bool wrote_color_ = false;
};

}  // namespace qel::rtf
