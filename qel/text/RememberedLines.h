#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qel/platform/Canvas.h"
#include "qel/tables/QELIndexFonts.h"
#include "qel/text/MarkupLines.h"
#include "qel/text/Typesetter.h"

namespace qel {

/// What the lines of a markup paragraph depend on, apart from the canvas itself.
struct LineSettings {
  LineSettings(const platform::Canvas& canvas, const QELIndexFonts& index_fonts, float width_in,
               float indent_in, bool reveals_codes, bool has_hidden, Way read_in);

  std::u16string font;
  float size = 0;
  std::array<std::u16string, 10> fonts;
  float width = 0;
  float indent = 0;
  bool reveal_codes = false;
  bool with_hidden = false;
  Way way = Way::stated;

  friend bool operator==(const LineSettings&, const LineSettings&) = default;
};

/// The lines of the paragraph that was last asked about, found as far as somebody has asked: a host
/// that asks for one after the other does not have them all broken each time.
class RememberedLines {
 public:
  /// `canvas` has to outlive this object.
  RememberedLines(std::u16string_view text, LineSettings settings, const platform::Canvas& canvas,
                  const QELIndexFonts& fonts);
  // The lines are parts of the text.
  RememberedLines(const RememberedLines&) = delete;
  RememberedLines& operator=(const RememberedLines&) = delete;

  /// Whether this text would still have these lines, also if the canvas has come to measure its
  /// fonts in another way.
  bool are_of(std::u16string_view text, const LineSettings& settings) const;

  /// The line with this one-based number.
  std::optional<std::u16string_view> line(std::size_t number);
  const std::vector<std::u16string_view>& all();

 private:
  /// Finds so many lines, or all that there are.
  void find(std::size_t count);

  std::u16string text_;
  LineSettings settings_;
  Typesetter typesetter_;
  MarkupLines rest_;
  std::vector<std::u16string_view> found_;
  std::vector<float> sample_widths_;  // when the lines were found
};

}  // namespace qel
