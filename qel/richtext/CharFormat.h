#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "qel/base/Color.h"

namespace qel::richtext {

/// The format of one character in a rich edit box.
struct CharFormat {
  bool bold = false;
  bool italic = false;
  bool underline = false;
  bool strike_through = false;
  bool small_caps = false;
  std::int16_t offset = 0;  ///< in twips above the base line; negative below
  Color color = 0;          ///< a plain value: a system colour is resolved before it gets here
  std::u16string font_name = u"Arial";
  float size = 8;  ///< in points

  friend bool operator==(const CharFormat&, const CharFormat&) = default;
};

/// The fields of a format, each of which may be empty.
struct FormatFields {
  std::optional<bool> bold;
  std::optional<bool> italic;
  std::optional<bool> underline;
  std::optional<bool> strike_through;
  std::optional<bool> small_caps;
  std::optional<std::int16_t> offset;
  std::optional<Color> color;
  std::optional<std::u16string> font_name;
  std::optional<float> size;

  friend bool operator==(const FormatFields&, const FormatFields&) = default;
};

/// The format of a selection: each field is empty where the selection holds more than one value.
struct MixedFormat : FormatFields {
  MixedFormat() = default;
  /// The format of a selection in which every character has `format`.
  explicit MixedFormat(const CharFormat& format);
  /// Adds `format` to the selection: empties the fields in which it differs.
  void merge(const CharFormat& format);
};

/// What to change in the format of a selection: empty fields are left alone.
struct FormatChange : FormatFields {
  /// A size must be above 0 and at most 16383; any other leaves the size as it was.
  void apply_to(CharFormat& format) const;
  /// Whether all of a selection with that format has these values already.
  bool is_in(const MixedFormat& format) const;
};

}  // namespace qel::richtext
