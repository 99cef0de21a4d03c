#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "qel/base/Color.h"

namespace qel {

/// Ten label colours with names and one active label. Label 0 is a placeholder; 1 to 9 are those to
/// choose from.
class QELIndexLabels {
 public:
  /// The table as text: colours, names and active index, joined by "<Labels:Rec>". In place of the
  /// first name it has the number of colour 0.
  std::u16string get_All() const;
  /// Reads such a text. Never raises; what does not convert is skipped. Colours convert as 16-bit
  /// integers only, so most real colours are skipped; names, that of label 0 too, and the active
  /// index are not checked, and missing names become empty.
  void put_All(std::u16string_view Value);

  std::int16_t get_ActiveLabelIndex() const { return active_; }
  /// Ignored outside 1 to 9.
  void put_ActiveLabelIndex(std::int16_t Index);
  /// Colour of the active label.
  Color get_ActiveLabelColor() const { return get_Color(active_); }

  /// Copies the colours, names and active index; name 0 becomes empty.
  void CopyFrom(const QELIndexLabels& Source);
  /// Sets the target's colours, names and active index one by one, with the checks of its setters.
  void CopyTo(QELIndexLabels& Target) const;

  /// Colour at `Index` (0 to 9); 0 for any other index.
  Color get_Color(std::int16_t Index) const;
  /// Stores a colour, a system colour as its current value. Raises 0x80042AFA when another label
  /// has it; an index outside 0 to 9 is ignored.
  void put_Color(std::int16_t Index, Color Value);
  /// Name at `Index` (1 to 9); empty for any other index, 0 included.
  std::u16string get_Name(std::int16_t Index) const;
  /// Stores the name; ignored outside 1 to 9.
  void put_Name(std::int16_t Index, std::u16string_view Value);

 private:
  static constexpr std::size_t size = 10;

  std::array<Color, size> colors_ = {0,        14602187, 16760226, 7457516,  16777152,
                                     12648384, 12648447, 12640511, 10533564, 12632256};
  std::array<std::u16string, size> names_ = {u"Unused",  u"Label 1", u"Label 2", u"Label 3",
                                             u"Label 4", u"Label 5", u"Label 6", u"Label 7",
                                             u"Label 8", u"Label 9"};
  std::int16_t active_ = 1;
};

}  // namespace qel
