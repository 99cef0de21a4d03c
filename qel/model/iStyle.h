#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "qel/model/ReservedColors.h"

namespace qel {

/// The style of one run of text: a plain value, and the one place that turns styles into codes.
/// No field is range-checked; a `FontID` or `ColorID` outside 1 to 9 produces no code.
class iStyle : public ReservedColors<iStyle> {
 public:
  std::u16string Name = u"Arial";  ///< font name
  float Size = 8;                  ///< font size in points
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
  bool SmallCaps = false;
  bool StrikeThru = false;
  bool Superscript = false;
  bool Subscript = false;
  std::int16_t FontID = 0;   ///< 0 is the default font, 1 to 9 an entry of the font table
  std::int16_t ColorID = 0;  ///< 0 is the default colour, 1 to 9 an entry of the colour table
  bool TitleCase = false;    ///< carried only: it has no code and is not part of `All`
  bool Unicode = false;

  /// The codes that switch on all that `pStyle` has. These builders read their arguments only.
  static std::u16string OnCodes(const iStyle& pStyle);
  /// The codes that switch off all that `pStyle` has.
  static std::u16string OffCodes(const iStyle& pStyle);
  /// The codes that switch on what `pStyle` has and `LastStyle`, the run before, does not. Where
  /// `pStyle` has a colour and keeps the font, "/f0" is written too and the font is lost: this is
  /// intended.
  static std::u16string DifferentOnCodes(const iStyle& pStyle, const iStyle& LastStyle);
  /// The codes that switch off what `pStyle` has and `NextStyle`, the run after, lacks; all of it
  /// when there is no run after (null).
  static std::u16string DifferentOffCodes(const iStyle& pStyle, const iStyle* NextStyle);

  /// The same four in the older code set, which has two fonts and two colours.
  static std::u16string v6OnCodes(const iStyle& pStyle);
  static std::u16string v6OffCodes(const iStyle& pStyle);
  static std::u16string v6DifferentOnCodes(const iStyle& pStyle, const iStyle& LastStyle);
  static std::u16string v6DifferentOffCodes(const iStyle& pStyle, const iStyle* NextStyle);

  /// The record as text: twelve values joined by "<Font:Rec>".
  std::u16string get_All() const;
  /// Reads such a text; a value that does not convert leaves its field as it was. Never raises.
  void put_All(std::u16string_view Value);
  /// Copies what the record text of `source` carries: everything but `TitleCase`.
  void copy_record(const iStyle& source);

  /// Resets everything but `TitleCase` to the defaults.
  void Initialize();

  friend bool operator==(const iStyle&, const iStyle&) = default;
};

}  // namespace qel
