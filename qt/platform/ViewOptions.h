#pragma once

namespace qel::qt {

/// How a view shows its box. Nothing of it gets into the text, its formats or its undo history.
struct ViewOptions {
  static constexpr int least_zoom = 25;
  static constexpr int greatest_zoom = 500;

  int zoom = 100;  ///< in per cent; the nearest of 25 to 500
  /// Shows a colour that is hard to read on the background in a lightness that is not.
  bool adapts_colors = true;
  int line_spacing = 120;   ///< from line to line where there are several, in per cent of one
  int margin = 6;           ///< around the text, in pixels
  bool opens_links = true;  ///< addresses in the text are links

  friend bool operator==(const ViewOptions&, const ViewOptions&) = default;
};

}  // namespace qel::qt
