#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "qel/model/QELCode.h"
#include "qel/platform/Canvas.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel {

class RememberedLines;

namespace platform {
class Platform;
}

/// How the lines of a paragraph are aligned between its margins.
enum TextAlignment : std::int16_t { alLeft = 0, alRight = 1, alCenter = 2 };

/// Measures and draws markup on a canvas, breaks it into lines, and counts and cuts it by visible
/// characters.
///
/// Text without a font code is in font 0 and text without a colour code in colour 0 of this
/// object's own tables; the default font, its size, the text colour and the three reserved colours
/// are entries of those tables under other names. Superscript and subscript are drawn at two thirds
/// of the size, small capitals at four fifths. A code after "~" or after two backslashes is shown
/// as text. Lengths and positions on the canvas are in its units.
///
/// Without a canvas, members that measure do it on one of the thread's platform (see
/// `Common::current_platform`), in points, and `WriteParagraph` raises error 91.
class TextAndFormatting {
 public:
  TextAndFormatting();
  ~TextAndFormatting();
  // Copies would share their colours.
  TextAndFormatting(const TextAndFormatting&) = delete;
  TextAndFormatting& operator=(const TextAndFormatting&) = delete;

  /// The canvas to measure and draw on, shared with the caller; null for none.
  std::shared_ptr<platform::Canvas> get_Canvas() const { return canvas_; }
  void put_Canvas(std::shared_ptr<platform::Canvas> Value);

  // The tables. Setting copies them: later changes to the host's tables do not show here.

  void SetFonts(const QELIndexFonts& Fonts) { fonts_->CopyFrom(Fonts); }
  void SetColors(const QELIndexColors& Colors) { colors_->CopyFrom(Colors); }
  void SetFontAndColors(const QELIndexFonts& Fonts, const QELIndexColors& Colors);
  /// This object's own tables, shared with the caller.
  std::shared_ptr<QELIndexFonts> get_Fonts() const { return fonts_; }
  std::shared_ptr<QELIndexColors> get_Colors() const { return colors_; }

  /// Font 0, and the size in points.
  std::u16string get_DefaultFont() const { return fonts_->get_DefaultFont(); }
  void put_DefaultFont(std::u16string_view Value) { fonts_->put_DefaultFont(Value); }
  float get_DefaultFontSize() const { return fonts_->get_FontSize(); }
  void put_DefaultFontSize(float Value) { fonts_->put_FontSize(Value); }
  /// Colour 0. A system colour is stored as its value at that moment.
  Color get_ForeColor() const { return colors_->get_DefaultColor(); }
  void put_ForeColor(Color Value) { colors_->put_DefaultColor(Value); }
  /// Colours 1, 2 and 3.
  Color get_IgnoredColor() const { return colors_->get_IgnoredColor(); }
  void put_IgnoredColor(Color Value) { colors_->put_IgnoredColor(Value); }
  Color get_HiddenColor() const { return colors_->get_HiddenColor(); }
  void put_HiddenColor(Color Value) { colors_->put_HiddenColor(Value); }
  Color get_NoteColor() const { return colors_->get_NoteColor(); }
  void put_NoteColor(Color Value) { colors_->put_NoteColor(Value); }

  // How text is shown.

  /// See `TextAlignment`; any other value is kept and aligns left.
  std::int16_t get_Align() const { return align_; }
  void put_Align(std::int16_t Value) { align_ = Value; }
  /// Whether text is shown as the lossless way reads it: a code after "~" as text without its
  /// tilde, and two backslashes as what they are. False at first.
  bool get_Lossless() const { return way_ == Way::lossless; }
  void put_Lossless(bool Value) { way_ = Value ? Way::lossless : Way::stated; }
  /// Whether `WriteParagraph` breaks lines that are too wide.
  bool get_WordWrap() const { return word_wrap_; }
  void put_WordWrap(bool Value) { word_wrap_ = Value; }
  /// Whether the markup itself is measured and drawn, all of it in the default style.
  bool get_RevealCodes() const { return reveal_codes_; }
  void put_RevealCodes(bool Value) { reveal_codes_ = Value; }
  /// Whether text in colour 2 is measured and drawn.
  bool get_ShowHiddenText() const { return show_hidden_text_; }
  void put_ShowHiddenText(bool Value) { show_hidden_text_ = Value; }
  /// Whether all text is drawn in `ForeColor`.
  bool get_IgnoreColors() const { return ignore_colors_; }
  void put_IgnoreColors(bool Value) { ignore_colors_ = Value; }
  /// The label (1 to 9, see `QELIndexLabels`) whose colour lies behind the paragraphs; any other
  /// number for none.
  std::int16_t get_LabelID() const { return label_id_; }
  void put_LabelID(std::int16_t Value) { label_id_ = Value; }

  // Measuring, in the font that is set on the canvas (`Canvas::get_FontName`, `get_FontSize`);
  // without a canvas, in `DefaultFont` and `DefaultFontSize`.

  /// Width of the markup on one line.
  float fmtTextWidth(std::u16string_view Text) const;
  /// Height of a line that holds the markup, never less than that of the canvas's font.
  float TextHeight(std::u16string_view Text) const;

  // Word wrap. The lines of the last paragraph are remembered. A line takes as many words as fit,
  // or as many characters of a word that is too wide, but at least one; it never ends within a
  // code, escaped or not, or a surrogate pair. The first line may be `Width` wide, every later one
  // `Width` less `Indent`. A line is a part of the markup and does not repeat the codes of earlier
  // lines. Blanks at a break are in neither line.

  /// How many lines the paragraph needs; 0 without a visible character.
  std::int16_t LineCount(std::u16string_view Text, float Width, float Indent) const;
  /// Markup of the line with this one-based number; empty when there is none. Sets the canvas to
  /// `DefaultFont` and `DefaultFontSize` first.
  std::u16string GetLine(std::u16string_view Text, float Width, float Indent,
                         std::int16_t LineNumber) const;
  /// All the lines, as `GetLine` returns them.
  std::vector<std::u16string> all_lines(std::u16string_view Text, float Width, float Indent) const;

  /// Draws a paragraph whose first line has its top left corner at (`X`, `Y`), in `DefaultFont` and
  /// `DefaultFontSize`, which stay set on the canvas. Returns where the next paragraph may begin.
  /// Lines are broken as above, but keep the styles that began on an earlier line and are measured
  /// with them. "/nl" and line breaks begin a new paragraph within the text.
  float WriteParagraph(std::u16string_view Text, float X, float Y, float Width, float Indent = 0);
  /// How many lines the last `WriteParagraph` drew.
  std::int16_t get_LinesPrinted() const { return lines_printed_; }

  // Strings. Visible characters are counted from 1. Only 34 codes are codes here, in lower or upper
  // case; "/k1", "/k0" and "/nl" are three visible characters each.

  static std::int16_t fmtLen(std::u16string_view Text);
  /// Visible position of the first or last match in the markup as it stands, codes included; 0 when
  /// there is none. An empty search text is found at 1, but not in an empty text.
  static std::int16_t fmtInStr(std::u16string_view Text, std::u16string_view SearchText);
  static std::int16_t fmtRevInStr(std::u16string_view Text, std::u16string_view SearchText);
  /// The markup of the first `Count` characters, without the codes after them. A count of 0 gives
  /// the code that the text begins with, or the whole text when it begins with none. A negative
  /// count gives the whole text.
  static std::u16string fmtLeft(std::u16string_view Text, std::int16_t Count);
  /// The markup of the last `Count` characters, without the codes before them. A negative count
  /// gives the whole text.
  static std::u16string fmtRight(std::u16string_view Text, std::int16_t Count);
  /// The markup of `Length` characters from `Start` on, or of all the rest when `Length` is 0,
  /// without the codes before. Empty for a start below 1 or a negative length.
  static std::u16string fmtMid(std::u16string_view Text, std::int16_t Start, std::int16_t Length);

  /// Whether the text is one of "/y0", "/y1" and "/y2".
  static bool IsSortCode(std::u16string_view Text);
  /// Whether the text is a code with two backslashes in place of the slash.
  static bool IsEscapeCode(std::u16string_view Text);
  /// The decimal value of a Roman numeral in any case; empty when the text is not one. Four equal
  /// letters in a row are allowed.
  static std::u16string RomanToArabic(std::u16string_view Text);

 private:
  platform::Canvas& measuring_canvas() const;
  platform::Canvas& measuring_canvas_in_default_font() const;

  RememberedLines& lines_of(std::u16string_view text, float width, float indent,
                            const platform::Canvas& on) const;

  std::shared_ptr<platform::Canvas> canvas_;
  mutable std::shared_ptr<platform::Canvas> own_canvas_;  // to measure on while there is none
  mutable std::shared_ptr<const platform::Platform> own_canvas_platform_;
  std::shared_ptr<QELIndexFonts> fonts_ = std::make_shared<QELIndexFonts>();
  std::shared_ptr<QELIndexColors> colors_ = std::make_shared<QELIndexColors>();
  std::int16_t align_ = alLeft;
  std::int16_t label_id_ = 0;
  std::int16_t lines_printed_ = 0;
  bool word_wrap_ = true;
  bool reveal_codes_ = false;
  bool show_hidden_text_ = true;
  bool ignore_colors_ = false;
  Way way_ = Way::stated;
  mutable std::unique_ptr<RememberedLines> lines_;  // of the last text
};

}  // namespace qel
