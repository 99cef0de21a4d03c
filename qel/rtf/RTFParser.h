#pragma once

#include <string>
#include <string_view>

#include "qel/base/Color.h"
#include "qel/model/QELCode.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel {

/// Turns markup into RTF and RTF into markup. Writing a document needs the thread's measuring
/// surface, reading one also its conversion box (`Common::publish`, `Common::ConversionSlots`); a
/// member that finds either missing raises an error that says which. Fonts and colours are those of
/// the tables given.
///
/// Reading tells bold, italic, underline, strike-through, raised and lowered text, fonts 1 to 3 and
/// colours 1 to 3 apart; lossless also small capitals and all fonts and colours. Everything else is
/// dropped.
class RTFParser {
 public:
  /// Whether all that markup can say survives. Then fonts and colours 1 to 9 are read, fonts
  /// whatever the case of their names, small capitals are read and written, and a document's font
  /// table has a name of its own for each entry. Line breaks are "/nl" and tabs are tabs, whatever
  /// the switches below say; CR LF, CR and LF in markup are "/nl", too. Text that looks like a code
  /// is "~/b1" in markup, or is kept apart by a code of no effect where a tilde cannot help, and
  /// two backslashes are two backslashes. Fonts and colours of a table that are alike cannot be
  /// told apart, except for fonts by the case of their letters. False by default.
  bool get_Lossless() const { return way_ == Way::lossless; }
  void put_Lossless(bool Value) { way_ = Value ? Way::lossless : Way::stated; }

  Way way() const { return way_; }

  /// A whole RTF document. Accepts any text. Raises an error when the size of `Fonts` in
  /// half-points is negative or does not fit 16 bits.
  std::u16string QELToRTF(std::u16string_view Text, QELIndexFonts& Fonts,
                          const QELIndexColors& Colors) const;
  /// The converted body alone, for text that is put into an existing document. Codes that stand in
  /// the markup as text (with two backslashes for the slash) are not restored.
  std::u16string QELToRTFWithoutTables(std::u16string_view Text) const;

  /// The converter's own idea of a code: exactly three characters, "/", a letter of "biupsckrl"
  /// with 0 or 1 or a letter of "fy" with a digit.
  static bool IsQELCode(std::u16string_view Code);
  /// The current value of the system colour that `Value` names. The high bit is ignored.
  static Color ConvertSystemColor(Color Value);

  // How the reading members treat breaks and tabs, unless lossless.

  /// A line break becomes a blank, and one blank at the end of the text is dropped. Wins over
  /// `RecognizeCRLF`. True by default.
  bool get_ConvertNLToSpace() const { return nl_to_space_; }
  void put_ConvertNLToSpace(bool Value) { nl_to_space_ = Value; }
  /// A tab becomes a blank, unless tabs are recognised. True by default.
  bool get_ConvertTabsToSpace() const { return tabs_to_space_; }
  void put_ConvertTabsToSpace(bool Value) { tabs_to_space_ = Value; }
  /// A line break becomes "/nl" ("\par " in RTF). False by default.
  bool get_RecognizeCRLF() const { return recognize_crlf_; }
  void put_RecognizeCRLF(bool Value) { recognize_crlf_ = Value; }
  /// A tab stays a tab. False by default.
  bool get_RecognizeTabs() const { return recognize_tabs_; }
  void put_RecognizeTabs(bool Value) { recognize_tabs_ = Value; }

  /// The markup of an RTF document. A code that stands in it as text comes out with two backslashes
  /// in place of its slash (unless lossless). Broken RTF gives the text before the damage.
  std::u16string RTFToQEL(std::u16string_view RTF, const QELIndexFonts& Fonts,
                          const QELIndexColors& Colors) const;
  /// The document, written with only the control words that this class writes.
  std::u16string SimpleRTF(std::u16string_view RTF, QELIndexFonts& Fonts,
                           const QELIndexColors& Colors) const;
  /// The plain text of an RTF document, with breaks and tabs as the switches say. A recognised line
  /// break is CR LF.
  std::u16string RTFToText(std::u16string_view RTF) const;
  /// The RTF with the words for typographic characters as code page escapes and raised and lowered
  /// text as offsets. The words are replaced wherever they occur, even in longer words.
  static std::u16string PreprocessRTF(std::u16string_view RTF);

 private:
  bool nl_to_space_ = true;
  bool tabs_to_space_ = true;
  bool recognize_crlf_ = false;
  bool recognize_tabs_ = false;
  Way way_ = Way::stated;
};

}  // namespace qel
