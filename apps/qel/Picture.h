#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Tables.h"
#include "qel/model/QELCode.h"

namespace qel::command {

/// How to draw a picture of markup; lengths are in points.
struct Picture {
  float width = 450;  ///< of the lines
  float margin = 10;  ///< around the text
  float indent = 0;   ///< how much further right all lines but the first begin
  std::int16_t align = 0;
  std::int16_t label = 0;
  bool transparent = false;
  bool reveal_codes = false;
  bool hides_hidden = false;
  bool one_color = false;
  bool wraps = true;
  Way way = Way::lossless;
};

/// The markup as an SVG document.
std::string drawn(const Picture& picture, const Tables& tables, std::u16string_view markup);

}  // namespace qel::command
