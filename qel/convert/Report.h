#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/convert/Formats.h"
#include "qel/richtext/DroppedParts.h"

namespace qel::convert {

/// How much of the input the output lacks. Of RTF and HTML everything counts that reading drops.
/// Formats count where the output has formats by their numbers in the tables, so not in plain text,
/// nor in RTF that is rewritten as RTF, which keeps them all. Of markup, whose formats are those
/// numbers, they count where it becomes RTF, HTML, or markup in the older code set.
struct Dropped : richtext::DroppedParts {
  std::uint64_t fonts = 0;    ///< distinct ones of text or breaks that the table lacks
  std::uint64_t colors = 0;   ///< likewise
  std::uint64_t sizes = 0;    ///< distinct ones besides one: all text gets the size of the table
  std::uint64_t formats = 0;  ///< distinct ones of other kinds that the output has no code for

  bool operator==(const Dropped&) const = default;
};

/// What a conversion did.
struct Report {
  InputFormat from = InputFormat::qel;  ///< what the input was read as
  std::uint64_t bytes_in = 0;           ///< what follows the end of an RTF document does not count
  std::uint64_t bytes_out = 0;
  bool is_stopped = false;     ///< the caller ended it: the output is a beginning
  bool is_broken_off = false;  ///< the last brace of the RTF never came
  Dropped dropped;
};

/// The counts with their names, for records, and what one and several are called in messages.
struct DroppedKind {
  std::string_view name;
  std::uint64_t Dropped::*count;
  std::string_view one;
  std::string_view several;
};
inline constexpr std::array<DroppedKind, 14> dropped_kinds = {
    {{"pictures", &Dropped::pictures, "picture", "pictures"},
     {"objects", &Dropped::objects, "object", "objects"},
     {"cells", &Dropped::cells, "cell", "cells"},
     {"rows", &Dropped::rows, "row", "rows"},
     {"notes", &Dropped::notes, "note", "notes"},
     {"headers", &Dropped::headers, "header", "headers"},
     {"links", &Dropped::links, "link", "links"},
     {"hidden", &Dropped::hidden, "hidden character", "hidden characters"},
     {"deleted", &Dropped::deleted, "deleted character", "deleted characters"},
     {"unknown", &Dropped::unknown, "unknown character", "unknown characters"},
     {"fonts", &Dropped::fonts, "font", "fonts"},
     {"colors", &Dropped::colors, "colour", "colours"},
     {"sizes", &Dropped::sizes, "size", "sizes"},
     {"formats", &Dropped::formats, "format", "formats"}}};

/// "2 pictures, 1 link"; empty where nothing was dropped.
std::string in_words(const Dropped& dropped);

}  // namespace qel::convert
