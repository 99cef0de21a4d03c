#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

#include "qel/model/QELCode.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel::convert {

/// Something in markup that may not be what its author meant.
struct Finding {
  enum class Kind : std::uint8_t {
    /// A code that no text shows: what it says holds already, or another code comes before any text
    /// that says otherwise, or no text follows. Line breaks have no format. A code of no effect
    /// that
    /// keeps characters apart ("//b0c1" is the text "/c1") is none of these.
    no_effect,
    /// A code that ends a format before one that began later has ended, as the "/b0" in
    /// "/b1a/i1b/b0c/i0". The order of codes without text between them does not matter.
    overlap,
    /// A code that a tilde makes text.
    escaped_code,
    /// "/r1", "/r0", "/l1" or "/l0": a code to conversions to RTF and to boxes, text to all else.
    code_of_rtf,
    /// A slash, a letter from A to Z or a to z, and a digit that are no code, as "/z1" or "/b2".
    unknown_code,
    /// The code of a format that stays on behind the last text.
    not_closed,
    /// The code of a font whose name is empty or that of an unused entry, in any case.
    missing_font,
    /// The code of a colour with the value of colour 0: its text looks like text without a colour,
    /// and becomes such text on the way to RTF and back. No entry of the table is ever unset.
    missing_color,
  };

  Kind kind = Kind::no_effect;
  std::size_t position = 0;  ///< of the first character, in UTF-16 code units, from 0
  std::size_t length = 0;    ///< in UTF-16 code units
  /// Where an editor shows it: the line, and the UTF-16 code units up to it in the line, both
  /// from 1. Lines end with CR LF, CR or LF; "/nl" begins none.
  std::size_t line = 1;
  std::size_t column = 1;
};

struct LintOptions {
  const QELIndexFonts* fonts = nullptr;    ///< null leaves `missing_font` out
  const QELIndexColors* colors = nullptr;  ///< null leaves `missing_color` out
  Way way = Way::lossless;                 ///< in the stated way CR and LF are text
};

/// Calls `report` with each finding: in the order of their positions, but for those of formats that
/// are not closed, which come last. Takes linear time.
void lint(std::u16string_view markup, const LintOptions& options,
          const std::function<void(const Finding&)>& report);

}  // namespace qel::convert
