#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "qel/model/QELCode.h"
#include "qel/model/StyleCodes.h"

namespace qel::rtf {

/// How a walk's codes are spelt in one format.
struct Spelling {
  struct Toggle {
    std::u16string_view on;
    std::u16string_view off;
  };
  /// Bold, italic, underline, strike-through, superscript, subscript, small capitals.
  std::array<Toggle, 7> toggles;
  std::u16string_view font;   ///< before the digit of a font
  std::u16string_view color;  ///< before the digit of a colour
  std::u16string_view end;    ///< after that digit
};

/// Markup: "/b1", "/f2".
extern const Spelling markup_spelling;
/// Reduced RTF: "\b1 ", "\f2 ".
extern const Spelling rtf_spelling;

/// Writes a code wherever the format of a text changes, and small capitals in the lossless way
/// only.
class FormatWalk {
 public:
  FormatWalk(const Spelling& spelling, Way way, std::u16string& out)
      : spelling_(spelling), way_(way), out_(out) {}

  /// The codes before a character in this format.
  void enter(const style_codes::CodeState& state);
  /// The codes that close what is open.
  void close();

  bool wrote_font() const { return wrote_font_; }
  bool wrote_color() const { return wrote_color_; }

 private:
  void set_toggle(std::size_t toggle, bool on);
  void set_font(int index);
  void set_color(int index);
  void write_index(std::u16string_view prefix, int index);

  const Spelling& spelling_;
  Way way_;
  std::u16string& out_;
  std::array<bool, 7> open_ = {};
  int font_ = 0;   // index of the open font code, 0 when none is open
  int color_ = 0;  // likewise for the colour code
  bool wrote_font_ = false;
  bool wrote_color_ = false;
};

}  // namespace qel::rtf
