#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "qel/convert/Formats.h"
#include "qel/richtext/RtfCounts.h"

namespace qel::convert {

/// How much of the input the output lacks. Of RTF everything counts that reading drops. Formats
/// count where the output has formats by their numbers in the tables, so not in plain text, nor in
/// RTF that is rewritten as RTF, which keeps them all. Of markup, whose formats are those numbers,
/// they count where it becomes RTF.
struct Dropped : richtext::RtfCounts {
  std::uint64_t fonts = 0;   ///< distinct ones of text or breaks that the table lacks
  std::uint64_t colors = 0;  ///< likewise
  std::uint64_t sizes = 0;   ///< distinct ones besides one: all text gets the size of the table

  bool operator==(const Dropped&) const = default;
};

/// What a conversion did.
struct Report {
  InputFormat from = InputFormat::qel;  ///< what the input was read as
  std::uint64_t bytes_in = 0;
  std::uint64_t bytes_out = 0;
  bool is_stopped = false;     ///< the caller ended it: the output is a beginning
  bool is_broken_off = false;  ///< the last brace of the RTF never came
  Dropped dropped;
};

/// The counts with their names, for messages and records.
struct DroppedKind {
  std::string_view name;
  std::uint64_t Dropped::*count;
};
inline constexpr std::array<DroppedKind, 13> dropped_kinds = {{{"pictures", &Dropped::pictures},
                                                               {"objects", &Dropped::objects},
                                                               {"cells", &Dropped::cells},
                                                               {"rows", &Dropped::rows},
                                                               {"notes", &Dropped::notes},
                                                               {"headers", &Dropped::headers},
                                                               {"links", &Dropped::links},
                                                               {"hidden", &Dropped::hidden},
                                                               {"deleted", &Dropped::deleted},
                                                               {"unknown", &Dropped::unknown},
                                                               {"fonts", &Dropped::fonts},
                                                               {"colors", &Dropped::colors},
                                                               {"sizes", &Dropped::sizes}}};

}  // namespace qel::convert
