#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "qel/model/ReservedColors.h"

namespace qel {

/// A style to apply to text, and which parts of the text's own style to keep. A new record keeps
/// all of them. No member raises an error; indexes out of range are stored as given.
class cReplaceData : public ReservedColors<cReplaceData> {
 public:
  bool DontChangeStyle = true;  ///< keep the target's attributes (`QELText`: its whole style)
  bool DontChangeFont = true;   ///< keep the target's font index
  bool DontChangeColor = true;  ///< keep the target's colour index
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
  bool StrikeOut = false;
  bool Superscript = false;
  bool Subscript = false;
  std::int16_t FontID = 0;
  std::int16_t ColorID = 0;

  /// The record as text: the eleven fields in the order above, joined by "<Repl:Data>".
  std::u16string get_All() const;
  /// Reads such a text; a value that does not convert leaves its field as it was. Never raises.
  void put_All(std::u16string_view Value);

  /// Resets all fields to the defaults.
  void Initialize();

  friend bool operator==(const cReplaceData&, const cReplaceData&) = default;
};

}  // namespace qel
