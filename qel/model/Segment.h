#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "qel/model/StyleCodes.h"
#include "qel/model/iStyle.h"

namespace qel {

/// A run of plain text with one style. The segments of a decoded text share its characters; a
/// segment that is changed gets characters of its own.
class Segment {
 public:
  Segment() = default;
  /// A segment with a copy of `style`, except that `TitleCase` is off.
  Segment(std::u16string_view text, const iStyle& style);
  Segment(const Segment&) = delete;
  Segment& operator=(const Segment&) = delete;
  ~Segment() = default;

  /// The characters of the run, without codes. An escaped code appears as its placeholder (see
  /// `restore_escaped_codes`).
  std::u16string get_Text() const { return std::u16string(text_); }
  void put_Text(std::u16string_view text);
  /// The same for other characters of the same text: what is known of it stays true.
  void put_characters(std::u16string text);

  /// The segment's own record, created on first use: changing it changes the segment. It lives as
  /// long as the segment.
  iStyle& get_Style();

  /// The part of the style that has codes, whether or not the record exists yet.
  style_codes::CodeState code_state() const;

  /// The characters without a copy, valid as long as the segment lives and its text is not changed.
  std::u16string_view text() const { return text_; }
  /// Length of the text in code units.
  std::int32_t length() const { return static_cast<std::int32_t>(text_.size()); }

  /// Cuts the text after `count` code units (0 to `length`) and returns the rest as a new segment
  /// in the same style.
  std::shared_ptr<Segment> split_off(std::size_t count);
  /// A new segment in the same style.
  std::shared_ptr<Segment> with_text(std::u16string_view text);
  /// Keeps the first `count` code units of the text.
  void keep_first(std::size_t count) { text_ = text_.substr(0, count); }

  /// What is known of the text beyond its characters.
  struct Origin {
    bool begins_with_code = false;  ///< a cut took the tilde before it: it is text all the same
    bool ends_with_tilde = false;   ///< of an escaped code that was cut
    bool is_markup = false;         ///< stood in markup as it is
  };
  Origin origin() const { return origin_; }
  void put_origin(Origin origin) { origin_ = origin; }

  /// How many line codes stood right before this run when it was decoded. Line codes are neither
  /// characters nor part of the style; only output that asks for them writes them back.
  std::int32_t line_codes_before() const { return line_codes_before_; }

  void put_line_codes_before(std::int32_t count) { line_codes_before_ = count; }

  /// Makes this a run of a decoded text. `text` is a view of characters that have to outlive it.
  void set_decoded(std::u16string_view text, const style_codes::CodeState& state,
                   std::int32_t line_codes_before);

 private:
  std::u16string_view text_;
  std::unique_ptr<const std::u16string> own_text_;
  std::unique_ptr<iStyle> style_;
  style_codes::CodeState decoded_state_;  // valid until there is a record
  std::int32_t line_codes_before_ = 0;
  Origin origin_;
};

}  // namespace qel
