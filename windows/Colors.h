#pragma once

#include <windows.h>

#include <optional>

#include "qel/base/Color.h"

/// The colours in which a box is shown. They never get into its content.
namespace qel::windows {

/// The value of a colour, which may be a system colour.
COLORREF color_value(Color color);

/// Colours in place of the system's own.
struct Scheme {
  /// Those of a host that is dark. For a box whose background is that of windows.
  std::optional<COLORREF> background;
  std::optional<COLORREF> text;
  /// Whether the user has asked for the system's colours and for as much contrast as there can be.
  bool has_high_contrast = false;

  friend bool operator==(const Scheme&, const Scheme&) = default;
};

struct ShownColors {
  COLORREF background = 0;
  /// Of text without a colour of its own; empty for the window's own colour of text.
  std::optional<COLORREF> automatic;
  /// The least contrast that all others are brought to; 0 leaves them as they are.
  double contrast = 0;

  /// The colour of text that has one.
  COLORREF text_color(Color color) const;

  friend bool operator==(const ShownColors&, const ShownColors&) = default;
};

/// How a box with that background is shown. On a dark background all text is brought to a contrast
/// that can be read. With high contrast it is the system's background, whatever the box's.
ShownColors shown_colors(Color background, const Scheme& scheme);

/// Whether the user has switched on high contrast.
bool has_high_contrast();

/// Whether light text is easier to read on that background than dark text.
bool is_dark(COLORREF background);

}  // namespace qel::windows
