#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "qel/base/Color.h"
#include "qel/tables/QELIndexLabels.h"

namespace qel {

/// The numbered table of the ten text colours that "/y0" to "/y9" refer to. Colour 0 is the
/// default; 1, 2 and 3 also mark ignored, hidden and note text. A system colour is stored as the
/// value that it has at that moment.
class QELIndexColors {
 public:
  QELIndexColors() { rebuild_color_table(); }
  // Copies would share one label table: `CopyFrom` copies it too.
  QELIndexColors(const QELIndexColors&) = delete;
  QELIndexColors& operator=(const QELIndexColors&) = delete;

  /// 0 when colour 0 is this colour, else the lowest of 1 to 9 that is; -1 when none is.
  std::int16_t ColorIndexGivenColor(Color Value) const;
  /// The current value of the system colour that `Value` names. The high bit is ignored.
  static Color ConvertSystemColor(Color Value);

  /// The table as text: colours, label colours, label names and the active label, joined by
  /// "<Colors:Rec>".
  std::u16string get_All() const;
  /// Reads such a text. Never raises; what does not convert is skipped. Colours convert as 16-bit
  /// integers only, so most real colours are skipped, and `ColorTable` keeps showing the old ones
  /// until a colour is next set.
  void put_All(std::u16string_view Value);

  /// The colour table of an RTF document, as of the last colour that was set.
  const std::u16string& get_ColorTable() const { return color_table_; }

  /// The label table, created on first use and shared with the caller.
  std::shared_ptr<QELIndexLabels> get_Labels() const;
  std::int16_t get_ActiveLabelIndex() const { return get_Labels()->get_ActiveLabelIndex(); }
  void put_ActiveLabelIndex(std::int16_t Index) { get_Labels()->put_ActiveLabelIndex(Index); }
  Color get_ActiveLabelColor() const { return get_Labels()->get_ActiveLabelColor(); }

  /// Copies colours and labels as they are; `ColorTable` is not rebuilt.
  void CopyFrom(const QELIndexColors& Source);
  /// Sets the target's colours and labels one by one.
  void CopyTo(QELIndexColors& Target) const;

  /// Colour at `Index` (0 to 9); 0 for any other index.
  Color get_Color(std::int16_t Index) const;
  /// Stores a colour; an index outside 0 to 9 is ignored. Two indexes may have the same colour.
  void put_Color(std::int16_t Index, Color Value);
  /// Colour 0.
  Color get_DefaultColor() const { return get_Color(0); }
  void put_DefaultColor(Color Value) { put_Color(0, Value); }

  /// Colour and name of a label: see `QELIndexLabels`, whose errors pass through.
  Color get_LabelColor(std::int16_t Index) const { return get_Labels()->get_Color(Index); }
  void put_LabelColor(std::int16_t Index, Color Value) { get_Labels()->put_Color(Index, Value); }
  std::u16string get_LabelName(std::int16_t Index) const { return get_Labels()->get_Name(Index); }
  void put_LabelName(std::int16_t Index, std::u16string_view Value) {
    get_Labels()->put_Name(Index, Value);
  }

  /// Colours 1, 2 and 3.
  Color get_IgnoredColor() const { return get_Color(1); }
  void put_IgnoredColor(Color Value) { put_Color(1, Value); }
  Color get_HiddenColor() const { return get_Color(2); }
  void put_HiddenColor(Color Value) { put_Color(2, Value); }
  Color get_NoteColor() const { return get_Color(3); }
  void put_NoteColor(Color Value) { put_Color(3, Value); }

  /// For hosts that do not want any colour twice: raises 0x80042AF9 when an index other than
  /// `index` has `value`. No setter checks this.
  void require_unused_color(Color value, std::int16_t index) const;
  /// The same check before `value` becomes a label's colour, against the text colours too; raises
  /// 0x80042AFA.
  void require_unused_label_color(Color value, std::int16_t index) const;

 private:
  bool is_used_elsewhere(Color value, std::int16_t index) const;
  void rebuild_color_table();

  std::array<Color, 10> colors_ = {0,   49152, 16711680, 49344,   2390745,
                                   255, 65280, 4210752,  8421504, 12632256};
  std::u16string color_table_;
  mutable std::shared_ptr<QELIndexLabels> labels_;
};

}  // namespace qel
