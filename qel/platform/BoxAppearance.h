#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "qel/base/Color.h"

namespace qel::platform {

/// Who starts drags from a box.
enum DragMode : std::int32_t { host_drags = 0, box_drags = 1 };
/// Who handles drops on a box.
enum DropMode : std::int32_t { drops_are_refused = 0, host_drops = 1, box_drops = 2 };

/// How a box looks and what it lets the user do. Positions and sizes are in the scale units of the
/// surface that the box lies on.
struct BoxAppearance {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  bool visible = true;
  bool enabled = true;
  bool read_only = false;
  bool multiline = true;     ///< wraps lines
  bool takes_breaks = true;  ///< with `multiline`: where not, breaks of the user become blanks
  bool tab_stop = true;
  std::int32_t scroll_bars = 0;  ///< 0 none, 1 horizontal, 2 vertical, 3 both
  std::int32_t drag_mode = host_drags;
  std::int32_t drop_mode = host_drops;
  Color back_color = system_color(5);
  std::u16string font_name = u"Arial";  ///< for text that names no font
  float font_size = 8;                  ///< in points
  /// What text in a font gets instead of a new `font_name` of the box.
  std::vector<std::pair<std::u16string, std::u16string>> fonts_of_text;

  friend bool operator==(const BoxAppearance&, const BoxAppearance&) = default;
};

}  // namespace qel::platform
