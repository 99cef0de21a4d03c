#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "qel/model/iStyle.h"

namespace qel {

/// A run of plain text with one style. Its text may be a slice of a buffer that many segments share,
/// so cutting a text into segments copies no characters.
class Segment {
 public:
  Segment() = default;
  /// A segment with `style` in all but `TitleCase`, which is off.
  Segment(std::u16string_view text, const iStyle& style);
  /// A segment in the default style whose text is `slice`, a part of `buffer`.
  Segment(std::shared_ptr<const std::u16string> buffer, std::u16string_view slice);

  /// The characters of the run, without codes; the view holds until the text is next changed.
  std::u16string_view get_Text() const { return text_; }
  void put_Text(std::u16string_view text);

  /// The segment's own record: changing it changes the segment. It lives as long as the segment.
  iStyle& get_Style() { return style_; }
  const iStyle& get_Style() const { return style_; }

  /// Length of the text in code units.
  std::int32_t length() const { return static_cast<std::int32_t>(text_.size()); }

  /// Cuts the text after `count` code units (0 to `length`) and returns the rest as a new segment
  /// in the same style.
  std::shared_ptr<Segment> split_off(std::int32_t count);

  /// How many line codes stood right before this run when it was decoded. Line codes are no
  /// characters and no part of the style; only output that asks for them writes them back.
  std::int32_t line_codes_before() const { return line_codes_before_; }
  void set_line_codes_before(std::int32_t count) { line_codes_before_ = count; }

 private:
  std::shared_ptr<const std::u16string> buffer_;
  std::u16string_view text_;
  iStyle style_;
  std::int32_t line_codes_before_ = 0;
};

}  // namespace qel
