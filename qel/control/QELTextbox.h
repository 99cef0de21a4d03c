#pragma once

#include <array>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qel/base/Color.h"
#include "qel/base/Scoped.h"
#include "qel/control/ControlEvents.h"
#include "qel/model/QELCode.h"
#include "qel/model/ReservedColors.h"
#include "qel/platform/Common.h"
#include "qel/platform/ControlSite.h"
#include "qel/platform/Dispatch.h"
#include "qel/platform/PropertyBag.h"
#include "qel/rtf/RTFParser.h"
#include "qel/tables/QELIndexColors.h"
#include "qel/tables/QELIndexFonts.h"

namespace qel {

struct Conversion;
struct EditedText;
enum class CaseChange : std::uint8_t;

/// The line around a control: from the control's top left corner to (`right`, `bottom`), in its
/// scale units, one unit wide.
struct ControlFrame {
  std::int32_t right = 0;
  std::int32_t bottom = 0;
  Color color = 0;  ///< may be a system colour

  friend bool operator==(const ControlFrame&, const ControlFrame&) = default;
};

/// A text box for a host's form. It shows and edits rich text, which can be read and written as
/// plain text, markup or RTF.
///
/// It holds two boxes, one for a single line and one for many; exactly one is visible, and every
/// member that reads or writes text or a selection acts on that one. Setters of persisted
/// properties notify the site under the property's name at the end.
class QELTextbox {
 public:
  /// `site` must outlive the control. The parsers of this thread convert with the new control,
  /// until a later one is created or this one is destroyed.
  explicit QELTextbox(
      platform::ControlSite& site,
      std::shared_ptr<const platform::Platform> platform = Common::current_platform());
  QELTextbox(const QELTextbox&) = delete;
  QELTextbox& operator=(const QELTextbox&) = delete;
  ~QELTextbox();

  // Persistence.

  /// For a control that is new on a form: sets the presets again and empties the boxes.
  void InitProperties();
  /// Reads all properties in their order, but `Lossless` first, and applies them through their
  /// setters. A property that cannot be read takes its preset. Markup comes after plain text and
  /// wins.
  void ReadProperties(const platform::PropertyBag& Bag);
  /// Writes all properties, in their order but for the two before the last, which are swapped; the
  /// bag does not keep those that have their presets.
  void WriteProperties(platform::PropertyBag& Bag) const;

  // The content. All of these act on the visible box.

  /// The plain text; breaks are CR LF.
  std::u16string get_Text() const { return CurrentRichTextBox()->get_Text(); }
  void put_Text(std::u16string_view Value);
  /// The markup. With `RevealCodes` the box holds the markup itself as plain text, codes and all.
  std::u16string get_TextQEL() const;
  void put_TextQEL(std::u16string_view Value);
  /// The text as RTF, in the control words that `RTFParser` writes. While the form is being
  /// designed it reads empty and cannot be written. Not persisted.
  std::u16string get_TextRTF() const;
  void put_TextRTF(std::u16string_view Value);
  /// Alignment of the selected paragraphs: 0 left, 1 right, 2 centre; 0 where they differ.
  std::int32_t get_SelAlignment() const;
  void put_SelAlignment(std::int32_t Value);
  /// The box that holds the text: that of the large editor while it is open.
  const std::shared_ptr<platform::RichEdit>& CurrentRichTextBox() const {
    return editor_box_ ? editor_box_ : boxes_[active_];
  }
  /// Both boxes, for a host that moves them to another window.
  const std::array<std::shared_ptr<platform::RichEdit>, 2>& boxes() const { return boxes_; }

  /// Opens the large editor on the text and returns when the user has closed it. While it is open,
  /// all that acts on the visible box acts on the editor's. Does nothing when it is already
  /// open. The control may be destroyed meanwhile.
  void InvokeLargeEditor();
  /// Replaces the selection with a line break.
  void InsertCRLF() { CurrentRichTextBox()->put_SelText(u"\r\n"); }

  // The selection. A value that differs within it reads as false, 0 or empty, and a Boolean that
  // the box cannot tell as false; writing text or a format raises `Change`.

  std::int32_t get_SelStart() const { return CurrentRichTextBox()->get_SelStart(); }
  void put_SelStart(std::int32_t Value) { CurrentRichTextBox()->put_SelStart(Value); }
  std::int32_t get_SelLength() const { return CurrentRichTextBox()->get_SelLength(); }
  void put_SelLength(std::int32_t Value) { CurrentRichTextBox()->put_SelLength(Value); }
  std::u16string get_SelText() const { return CurrentRichTextBox()->get_SelText(); }
  void put_SelText(std::u16string_view Value) { CurrentRichTextBox()->put_SelText(Value); }
  /// As RTF, in the control words that `RTFParser` writes.
  std::u16string get_SelRTF() const;
  void put_SelRTF(std::u16string_view Value) { CurrentRichTextBox()->put_SelRTF(Value); }

  bool get_SelBold() const { return is(&platform::RichEdit::get_SelBold, true); }
  void put_SelBold(bool Value) { change(&platform::RichEdit::put_SelBold, Value); }
  bool get_SelItalic() const { return is(&platform::RichEdit::get_SelItalic, true); }
  void put_SelItalic(bool Value) { change(&platform::RichEdit::put_SelItalic, Value); }
  bool get_SelUnderline() const { return is(&platform::RichEdit::get_SelUnderline, true); }
  void put_SelUnderline(bool Value) { change(&platform::RichEdit::put_SelUnderline, Value); }
  bool get_SelStrikeOut() const { return is(&platform::RichEdit::get_SelStrikeThru, true); }
  void put_SelStrikeOut(bool Value) { change(&platform::RichEdit::put_SelStrikeThru, Value); }
  /// Only the lossless way keeps small capitals.
  bool get_SelSmallCaps() const { return is(&platform::RichEdit::get_SelSmallCaps, true); }
  void put_SelSmallCaps(bool Value) { change(&platform::RichEdit::put_SelSmallCaps, Value); }
  /// Raised or lowered by exactly 45 twips.
  bool get_SelSuperscript() const { return is(&platform::RichEdit::get_SelCharOffset, raised); }
  void put_SelSuperscript(bool Value) { put_SelCharOffset(Value ? raised : std::int16_t{0}); }
  bool get_SelSubscript() const { return is(&platform::RichEdit::get_SelCharOffset, lowered); }
  void put_SelSubscript(bool Value) { put_SelCharOffset(Value ? lowered : std::int16_t{0}); }
  /// In twips, positive raises.
  std::int16_t get_SelCharOffset() const;
  void put_SelCharOffset(std::int16_t Value) {
    change(&platform::RichEdit::put_SelCharOffset, Value);
  }
  /// Whether the text has colour 1, 2 or 3 of the colour table; writing false gives it `ForeColor`.
  bool get_SelIgnore() const { return has_color(ignored_color); }
  void put_SelIgnore(bool Value) { mark(ignored_color, Value); }
  bool get_SelHide() const { return has_color(hidden_color); }
  void put_SelHide(bool Value) { mark(hidden_color, Value); }
  bool get_SelNote() const { return has_color(note_color); }
  void put_SelNote(bool Value) { mark(note_color, Value); }
  Color get_SelColor() const;
  /// `ForeColor` or one of colours 1 to 9; any other colour changes nothing and raises nothing.
  void put_SelColor(Color Value);
  std::u16string get_SelFontName() const;
  /// One of fonts 0 to 9 that are in use, whatever its case; any other name changes nothing.
  void put_SelFontName(std::u16string_view Value);
  /// Removes bold, italic, underline, strike-through and offset from the selection, and gives it
  /// `ForeColor` and `FontName`.
  void SelPlain();
  /// The font of text that has none of its own, and a colour that `ForeColor` names as a value.
  void make_font_plain();
  void make_color_plain() { mark(0, false); }
  /// Changes the case of the selected letters and nothing else.
  void change_case(CaseChange change);

  /// The selection in the markup of `TextQEL`, from 0. A code before the first selected character
  /// is not selected, one between the first and the last is. Unless lossless, every character that
  /// is not part of a code counts as one of the box, although a line break, two of the box, is a
  /// code or one blank.
  std::int32_t get_SelStartQEL() const { return selection_in(get_TextQEL()).start; }
  std::int32_t get_SelLengthQEL() const { return selection_in(get_TextQEL()).length; }
  std::u16string get_SelTextQEL() const;

  /// Replaces the selection with the clipboard's content: its RTF as far as markup can express it,
  /// or else (lossless only, and where the platform can read it) its HTML, or else its text. Line
  /// breaks and tabs become blanks in any case (unless lossless). An error leaves the text as it
  /// was.
  void PasteClipboardContents();
  /// The same with the clipboard's text alone.
  void PasteText();

  // Events.

  /// Sets the receiver of the control's events; null for none. It must outlive the control or be
  /// taken away before it goes.
  void listen(ControlEvents* events) { events_ = events; }
  /// Whether the control has a command on a key as its properties are, whatever it would do now.
  /// Key codes and masks are those of `platform/Keys.h`.
  bool acts_on_key(std::int16_t key_code, std::int16_t shift) const;
  /// For a larger editor that edits in the control's place: these raise `Change`, `KeyDown`,
  /// `KeyUp` and `KeyPress`; the last one also makes typed quotes typographic with `SmartQuotes`.
  /// A quote comes as its code in code page 1252.
  void TE_Change() { raise_change(); }
  void TE_KeyDown(std::int16_t& KeyCode, std::int16_t& Shift);
  void TE_KeyPress(std::int16_t& KeyAscii);
  void TE_KeyUp(std::int16_t& KeyCode, std::int16_t& Shift);
  /// Applies the shortcuts to any object with the properties "SelBold" and so on. Enter and each
  /// key that is handled are swallowed: `KeyCode` becomes 0.
  static void RichEditKeyDown(platform::Dispatch& Target, std::int16_t& KeyCode,
                              std::int16_t Shift);

  // Which shortcuts work in the boxes.

  bool get_ActOnStyles() const { return act_on_styles_; }
  void put_ActOnStyles(bool Value) { store(act_on_styles_, Value, u"ActOnStyles"); }
  bool get_ActOnFonts() const { return act_on_fonts_; }
  void put_ActOnFonts(bool Value) { store(act_on_fonts_, Value, u"ActOnFonts"); }
  bool get_ActOnColors() const { return act_on_colors_; }
  void put_ActOnColors(bool Value) { store(act_on_colors_, Value, u"ActOnColors"); }
  bool get_ActOnPlain() const { return act_on_plain_; }
  void put_ActOnPlain(bool Value) { store(act_on_plain_, Value, u"ActOnPlain"); }
  /// Whether Shift+F2 opens the large editor.
  bool get_ShowEditorOnShiftF2() const { return show_editor_; }
  void put_ShowEditorOnShiftF2(bool Value) { store(show_editor_, Value, u"ShowEditorOnShiftF2"); }
  /// Whether pasting drops all formats.
  bool get_PasteTextOnly() const { return paste_text_only_; }
  void put_PasteTextOnly(bool Value) { store(paste_text_only_, Value, u"PasteTextOnly"); }
  /// Whether typed quotes become typographic ones.
  bool get_SmartQuotes() const { return smart_quotes_; }
  void put_SmartQuotes(bool Value) { store(smart_quotes_, Value, u"SmartQuotes"); }

  // What the user may do.

  /// Whether the user may change the text; the host always may.
  bool get_AllowEdits() const { return allow_edits_; }
  void put_AllowEdits(bool Value);
  bool get_Enabled() const { return enabled_; }
  void put_Enabled(bool Value);
  bool get_TabStop() const { return appearance().tab_stop; }
  void put_TabStop(bool Value);
  /// Whether the box for many lines is the visible one. Each box keeps its own text.
  bool get_Multiline() const { return active_ == multi_line; }
  void put_Multiline(bool Value);
  /// 0 the host starts drags, 1 the boxes do.
  std::int32_t get_OLEDragMode() const { return appearance().drag_mode; }
  void put_OLEDragMode(std::int32_t Value);
  /// 0 drops are refused, 1 the host handles them, 2 the boxes do.
  std::int32_t get_OLEDropMode() const { return appearance().drop_mode; }
  void put_OLEDropMode(std::int32_t Value);

  // Appearance.

  Color get_BackColor() const { return back_color_; }
  void put_BackColor(Color Value);
  /// The colour that text gets when formats are removed from it.
  Color get_ForeColor() const { return fore_color_; }
  void put_ForeColor(Color Value) { store(fore_color_, Value, u"ForeColor"); }
  /// 0 none, 1 a single line.
  std::int32_t get_BorderStyle() const { return border_style_; }
  void put_BorderStyle(std::int32_t Value);
  /// Setting these changes all text, also that in fonts of the table (unless lossless). Markup that
  /// is assigned is in font 0 and the size of the font table (unless lossless).
  std::u16string get_FontName() const { return appearance().font_name; }
  void put_FontName(std::u16string_view Value);
  float get_FontSize() const { return appearance().font_size; }
  void put_FontSize(float Value);
  /// 0 none, 1 horizontal, 2 vertical, 3 both.
  std::int32_t get_ScrollBars() const { return appearance().scroll_bars; }
  void put_ScrollBars(std::int32_t Value);
  /// 0 the system's (`XPThemeColor`), 1 blue, 2 green, 3 silver. The border changes its colour only
  /// when the control is enabled or disabled, or read from a bag.
  std::int32_t get_XPTheme() const { return theme_; }
  void put_XPTheme(std::int32_t Value);
  /// "Blue", "Green", "Silver" or "Unknown"; empty while visual styles are off.
  std::u16string XPThemeColor() const;

  // Colours 1, 2 and 3 of the colour table. Where the table raises an error, it is ignored and the
  // old colour stays. Lossless, text in one of them follows.

  Color get_IgnoreColor() const { return colors_->get_IgnoredColor(); }
  void put_IgnoreColor(Color Value);
  Color get_HideColor() const { return colors_->get_HiddenColor(); }
  void put_HideColor(Color Value);
  Color get_NoteColor() const { return colors_->get_NoteColor(); }
  void put_NoteColor(Color Value);

  // How conversions treat codes, breaks and tabs (see `RTFParser`).

  /// Whether all that markup can say survives (see `RTFParser::get_Lossless`). Then `FontName` and
  /// `FontSize` are those of text that has no font of its own, also in markup that is assigned;
  /// `TextQEL` returns markup that was assigned as it was for as long as nobody has changed the
  /// text; the members that speak of the selection in the markup are exact; and what is pasted
  /// keeps its lines and tabs in the box for many lines, and its blanks everywhere. False at first.
  bool get_Lossless() const { return parser_.get_Lossless(); }
  void put_Lossless(bool Value) { put_in_parser(&RTFParser::put_Lossless, Value, u"Lossless"); }
  /// For a platform whose controls are lossless at first: makes this one so, also as the preset of
  /// the property.
  void begin_lossless();

  /// Whether markup is shown and returned as it is.
  bool get_RevealCodes() const { return reveal_codes_; }
  void put_RevealCodes(bool Value) { store(reveal_codes_, Value, u"RevealCodes"); }
  bool get_RecognizeCRLF() const { return parser_.get_RecognizeCRLF(); }
  void put_RecognizeCRLF(bool Value);
  bool get_RecognizeTabs() const { return parser_.get_RecognizeTabs(); }
  void put_RecognizeTabs(bool Value);
  bool get_ConvertNLToSpace() const { return parser_.get_ConvertNLToSpace(); }
  void put_ConvertNLToSpace(bool Value);
  bool get_ConvertTabsToSpace() const { return parser_.get_ConvertTabsToSpace(); }
  void put_ConvertTabsToSpace(bool Value);

  // Conversions with the control's tables.

  std::u16string QELToRTF(std::u16string_view Text) const;
  std::u16string QELToRTFWithoutTables(std::u16string_view Text) const;
  /// The markup of RTF, without a line break (CR LF) at its end.
  std::u16string RTFToQEL(std::u16string_view RTF) const;

  // Tables and lookups.

  /// The control's tables, shared with the caller.
  const std::shared_ptr<QELIndexFonts>& get_Fonts() const { return fonts_; }
  const std::shared_ptr<QELIndexColors>& get_Colors() const { return colors_; }
  std::u16string GetFontNameGivenFontIndex(std::int16_t Index) const {
    return fonts_->get_Font(Index);
  }
  std::int16_t GetFontIndexGivenFontName(std::u16string_view Name) const {
    return fonts_->FontIndexGivenFontName(Name);
  }
  Color GetColorGivenColorIndex(std::int16_t Index) const { return colors_->get_Color(Index); }
  std::int16_t GetColorIndexGivenColor(Color Value) const {
    return colors_->ColorIndexGivenColor(Value);
  }
  /// The current value of the system colour that `Value` names. The high bit is ignored.
  static Color ConvertSystemColor(Color Value) { return RTFParser::ConvertSystemColor(Value); }
  /// Whether the text is a code of the kind that `Flags` asks for (see `QELCodeFlags`).
  static bool IsQELCode(std::u16string_view Text, std::int32_t Flags = sfAll) {
    return qel::IsQELCode(Text, Flags);
  }
  /// The character of code page 1252 whose hexadecimal number the first and the last character of
  /// `Text` are; empty for a number below 32. Anything that is not a digit counts as 0.
  static std::u16string HexToChar(std::u16string_view Text);

  // The control on its form.

  std::int32_t get_Width() const { return site_.extent().width; }
  std::int32_t get_Height() const { return site_.extent().height; }
  std::uintptr_t get_hDC() const { return site_.device_context(); }
  void SetFocus() { site_.focus(); }
  void Size(std::int32_t Width, std::int32_t Height) { site_.put_extent({Width, Height}); }
  void Refresh() { site_.invalidate(); }
  /// Drags the selection of the visible box; returns when the drag is over.
  void OLEDrag() { boxes_[active_]->start_drag(); }
  /// To be called when the control's extent has changed: lays out the boxes.
  void Resize();
  /// The line to paint around the boxes: the border, or one in the background colour.
  ControlFrame frame() const;
  Color border_color() const { return border_color_; }

 private:
  enum BoxIndex : std::size_t { single_line, multi_line };
  struct Persisted;

  /// The appearance of the first box, for what both have in common.
  platform::BoxAppearance appearance() const { return boxes_[single_line]->appearance(); }
  template <class Change>
  void change_boxes(Change change);
  /// Each passes a value on to where it is kept, and notifies the site.
  template <class Value>
  void put_in_boxes(Value platform::BoxAppearance::*field, const Value& value,
                    std::u16string_view name);
  void put_in_parser(void (RTFParser::*put)(bool), bool value, std::u16string_view name);
  void put_in_colors(std::int16_t index, void (QELIndexColors::*put)(Color), Color value,
                     std::u16string_view name);
  void change_color(Color before, Color after);
  template <class Value>
  void store(Value& member, const Value& value, std::u16string_view name) {
    member = value;
    site_.property_changed(name);
  }
  Conversion conversion() const;
  void show_active_box();
  void show_what_is_allowed();
  void compute_border_color();

  static constexpr std::int16_t raised = 45;
  static constexpr std::int16_t lowered = -45;

  /// Calls a member that changes the selection's format, and raises `Change` once. The box raises
  /// it only where there is text; the control always does.
  template <class Put, class Value>
  void change(Put put, const Value& value) {
    {
      const Scoped holding(changes_held_, true);
      (CurrentRichTextBox().get()->*put)(value);
    }
    // The host may end the control.
    const std::weak_ptr<const bool> alive = alive_;
    raise_change();
    if (!alive.expired()) raise_selection();
  }
  /// Whether the box reports that value for the whole selection.
  template <class Value>
  bool is(std::optional<Value> (platform::RichEdit::*get)() const, Value value) const {
    try {
      return (CurrentRichTextBox().get()->*get)() == value;
    } catch (const std::exception&) {
      return false;
    }
  }
  bool has_color(std::int16_t index) const;
  void mark(std::int16_t color, bool on);
  Color plain_color() const;
  platform::Range selection_in(std::u16string_view markup) const;

  void raise_change();
  void raise_selection();
  void handle_key(std::int16_t& key_code, std::int16_t shift);
  /// Puts data from elsewhere into the box, as `PasteClipboardContents` does.
  void paste(platform::RichEdit& box, platform::DragData& data);
  void paste_rtf(platform::RichEdit& box, std::u16string_view rtf);

  EditedText edited_text() const;

  class EditorEvents;
  class BoxEvents;
  void listen_to_boxes();

  static const std::array<Persisted, 32>& persisted();

  platform::ControlSite& site_;
  std::shared_ptr<const platform::Platform> platform_;
  std::shared_ptr<platform::MeasuringSurface> surface_;
  std::shared_ptr<platform::RichEdit> converter_;
  std::array<std::shared_ptr<platform::RichEdit>, 2> boxes_;
  BoxIndex active_ = single_line;
  std::vector<std::shared_ptr<BoxEvents>> box_events_;  // of each box
  std::shared_ptr<platform::RichEdit> editor_box_;      // while the large editor is open
  ControlEvents* events_ = nullptr;
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
  bool changes_held_ = false;  // the changes in progress will be reported as one

  /// Lossless markup that was assigned. `in_box` is what the box says for it, once somebody has
  /// asked.
  struct Assigned {
    std::size_t box = 0;
    std::u16string markup;
    std::optional<std::u16string> in_box;
  };
  mutable std::optional<Assigned> assigned_;

  RTFParser parser_;
  std::shared_ptr<QELIndexFonts> fonts_ = std::make_shared<QELIndexFonts>();
  std::shared_ptr<QELIndexColors> colors_ = std::make_shared<QELIndexColors>();

  Color back_color_ = system_color(5);
  Color fore_color_ = system_color(8);
  Color border_color_ = rgb(0, 0, 255);
  std::int32_t border_style_ = 1;
  std::int32_t theme_ = 0;
  bool act_on_styles_ = true;
  bool act_on_fonts_ = true;
  bool act_on_colors_ = true;
  bool act_on_plain_ = true;
  bool allow_edits_ = true;
  bool enabled_ = true;
  bool reveal_codes_ = false;
  bool show_editor_ = false;
  bool paste_text_only_ = false;
  bool smart_quotes_ = false;
  bool lossless_at_first_ = false;
};

}  // namespace qel
