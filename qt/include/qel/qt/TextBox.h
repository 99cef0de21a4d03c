#pragma once

#include <QString>
#include <QStringList>
#include <QUrl>
#include <QWidget>
#include <cstdint>
#include <memory>
#include <optional>

#include "qel/control/QELTextbox.h"

class QMenu;

namespace qel::qt {

class BoxView;
class Speller;
class WordMarks;
struct ViewOptions;

/// The text box control as a widget. The control's persisted properties are properties of the
/// widget, with the same names and values: colours are 0x00BBGGRR, or name a system colour when
/// negative. The control's events are signals. Everything else, such as the selection, is a member
/// of `control()`.
///
/// The widget does what a desktop expects: Tab leaves it, the focus goes to its visible box, a menu
/// offers the clipboard and the formats, its size hints follow font and `Multiline`, its colours
/// follow the palette. The first one makes Qt the platform of its thread.
///
/// Until it is first painted, and while it is being designed, markup that was set survives changes
/// of the font, the colours and `Multiline`: a form may set its properties in any order.
class TextBox : public QWidget {
  Q_OBJECT
  Q_MOC_INCLUDE(<QMenu>)
  Q_PROPERTY(bool ActOnColors READ get_ActOnColors WRITE put_ActOnColors)
  Q_PROPERTY(bool ActOnFonts READ get_ActOnFonts WRITE put_ActOnFonts)
  Q_PROPERTY(bool ActOnPlain READ get_ActOnPlain WRITE put_ActOnPlain)
  Q_PROPERTY(bool ActOnStyles READ get_ActOnStyles WRITE put_ActOnStyles)
  Q_PROPERTY(bool AllowEdits READ get_AllowEdits WRITE put_AllowEdits)
  Q_PROPERTY(int BackColor READ get_BackColor WRITE put_BackColor)
  Q_PROPERTY(int BorderStyle READ get_BorderStyle WRITE put_BorderStyle)
  Q_PROPERTY(bool Enabled READ get_Enabled WRITE put_Enabled)
  Q_PROPERTY(QString FontName READ get_FontName WRITE put_FontName)
  Q_PROPERTY(double FontSize READ get_FontSize WRITE put_FontSize)
  Q_PROPERTY(int ForeColor READ get_ForeColor WRITE put_ForeColor)
  Q_PROPERTY(int HideColor READ get_HideColor WRITE put_HideColor)
  Q_PROPERTY(int IgnoreColor READ get_IgnoreColor WRITE put_IgnoreColor)
  Q_PROPERTY(int NoteColor READ get_NoteColor WRITE put_NoteColor)
  Q_PROPERTY(bool Multiline READ get_Multiline WRITE put_Multiline)
  Q_PROPERTY(int OLEDragMode READ get_OLEDragMode WRITE put_OLEDragMode)
  Q_PROPERTY(int OLEDropMode READ get_OLEDropMode WRITE put_OLEDropMode)
  Q_PROPERTY(bool RecognizeCRLF READ get_RecognizeCRLF WRITE put_RecognizeCRLF)
  Q_PROPERTY(bool RecognizeTabs READ get_RecognizeTabs WRITE put_RecognizeTabs)
  Q_PROPERTY(bool ConvertNLToSpace READ get_ConvertNLToSpace WRITE put_ConvertNLToSpace)
  Q_PROPERTY(bool ConvertTabsToSpace READ get_ConvertTabsToSpace WRITE put_ConvertTabsToSpace)
  Q_PROPERTY(bool RevealCodes READ get_RevealCodes WRITE put_RevealCodes)
  Q_PROPERTY(int ScrollBars READ get_ScrollBars WRITE put_ScrollBars)
  Q_PROPERTY(int SelAlignment READ get_SelAlignment WRITE put_SelAlignment)
  Q_PROPERTY(QString Text READ get_Text WRITE put_Text)
  Q_PROPERTY(QString TextQEL READ get_TextQEL WRITE put_TextQEL NOTIFY TextQELChanged USER true)
  Q_PROPERTY(bool TabStop READ get_TabStop WRITE put_TabStop)
  Q_PROPERTY(int XPTheme READ get_XPTheme WRITE put_XPTheme)
  Q_PROPERTY(bool ShowEditorOnShiftF2 READ get_ShowEditorOnShiftF2 WRITE put_ShowEditorOnShiftF2)
  Q_PROPERTY(bool SmartQuotes READ get_SmartQuotes WRITE put_SmartQuotes)
  Q_PROPERTY(bool PasteTextOnly READ get_PasteTextOnly WRITE put_PasteTextOnly)
  Q_PROPERTY(bool Lossless READ get_Lossless WRITE put_Lossless)
  /// Shown in grey while there is no text. Not persisted.
  Q_PROPERTY(QString PlaceholderText READ get_PlaceholderText WRITE put_PlaceholderText)
  /// Whether the large editor asks before it is closed in any way but by its buttons, if something
  /// was edited in it. Only in the lossless way. Not persisted.
  Q_PROPERTY(bool AsksBeforeClosing READ get_AsksBeforeClosing WRITE put_AsksBeforeClosing)
  // How words are checked. Not persisted.
  Q_PROPERTY(bool ChecksSpelling READ get_ChecksSpelling WRITE put_ChecksSpelling)
  Q_PROPERTY(QString SpellingLanguage READ get_SpellingLanguage WRITE put_SpellingLanguage)
  // How the text is shown, which changes nothing of it. Not persisted.
  Q_PROPERTY(int Zoom READ get_Zoom WRITE put_Zoom NOTIFY ZoomChanged)
  Q_PROPERTY(bool AdaptsColors READ get_AdaptsColors WRITE put_AdaptsColors)
  Q_PROPERTY(int LineSpacing READ get_LineSpacing WRITE put_LineSpacing)
  Q_PROPERTY(int TextMargin READ get_TextMargin WRITE put_TextMargin)
  Q_PROPERTY(bool OpensLinks READ get_OpensLinks WRITE put_OpensLinks)

 public:
  explicit TextBox(QWidget* parent = nullptr);
  ~TextBox() override;

  /// The control, which lives as long as the widget. A listener set on it replaces the widget's
  /// own, so the signals stop.
  QELTextbox& control() { return *control_; }
  const QELTextbox& control() const { return *control_; }
  /// Makes the widget listen to the control again, so that the signals resume.
  void take_events();

  /// Whether the form runs, which is the default; false while it is being designed.
  bool is_run_time() const { return is_run_time_; }
  void put_RunTime(bool Value);

  bool get_ActOnColors() const { return control_->get_ActOnColors(); }
  void put_ActOnColors(bool Value) { control_->put_ActOnColors(Value); }
  bool get_ActOnFonts() const { return control_->get_ActOnFonts(); }
  void put_ActOnFonts(bool Value) { control_->put_ActOnFonts(Value); }
  bool get_ActOnPlain() const { return control_->get_ActOnPlain(); }
  void put_ActOnPlain(bool Value) { control_->put_ActOnPlain(Value); }
  bool get_ActOnStyles() const { return control_->get_ActOnStyles(); }
  void put_ActOnStyles(bool Value) { control_->put_ActOnStyles(Value); }
  bool get_AllowEdits() const { return control_->get_AllowEdits(); }
  void put_AllowEdits(bool Value) { control_->put_AllowEdits(Value); }
  int get_BackColor() const { return control_->get_BackColor(); }
  void put_BackColor(int Value) { control_->put_BackColor(Value); }
  int get_BorderStyle() const { return control_->get_BorderStyle(); }
  void put_BorderStyle(int Value) { control_->put_BorderStyle(Value); }
  bool get_Enabled() const { return control_->get_Enabled(); }
  void put_Enabled(bool Value) { control_->put_Enabled(Value); }
  QString get_FontName() const;
  void put_FontName(const QString& Value);
  double get_FontSize() const { return static_cast<double>(control_->get_FontSize()); }
  void put_FontSize(double Value);
  int get_ForeColor() const { return control_->get_ForeColor(); }
  void put_ForeColor(int Value) { control_->put_ForeColor(Value); }
  int get_HideColor() const { return control_->get_HideColor(); }
  void put_HideColor(int Value);
  int get_IgnoreColor() const { return control_->get_IgnoreColor(); }
  void put_IgnoreColor(int Value);
  int get_NoteColor() const { return control_->get_NoteColor(); }
  void put_NoteColor(int Value);
  bool get_Multiline() const { return control_->get_Multiline(); }
  void put_Multiline(bool Value);
  int get_OLEDragMode() const { return control_->get_OLEDragMode(); }
  void put_OLEDragMode(int Value) { control_->put_OLEDragMode(Value); }
  int get_OLEDropMode() const { return control_->get_OLEDropMode(); }
  void put_OLEDropMode(int Value) { control_->put_OLEDropMode(Value); }
  bool get_RecognizeCRLF() const { return control_->get_RecognizeCRLF(); }
  void put_RecognizeCRLF(bool Value) { control_->put_RecognizeCRLF(Value); }
  bool get_RecognizeTabs() const { return control_->get_RecognizeTabs(); }
  void put_RecognizeTabs(bool Value) { control_->put_RecognizeTabs(Value); }
  bool get_ConvertNLToSpace() const { return control_->get_ConvertNLToSpace(); }
  void put_ConvertNLToSpace(bool Value) { control_->put_ConvertNLToSpace(Value); }
  bool get_ConvertTabsToSpace() const { return control_->get_ConvertTabsToSpace(); }
  void put_ConvertTabsToSpace(bool Value) { control_->put_ConvertTabsToSpace(Value); }
  bool get_RevealCodes() const { return control_->get_RevealCodes(); }
  void put_RevealCodes(bool Value);
  int get_ScrollBars() const { return control_->get_ScrollBars(); }
  void put_ScrollBars(int Value) { control_->put_ScrollBars(Value); }
  int get_SelAlignment() const { return control_->get_SelAlignment(); }
  void put_SelAlignment(int Value);
  QString get_Text() const;
  void put_Text(const QString& Value);
  QString get_TextQEL() const;
  void put_TextQEL(const QString& Value);
  bool get_TabStop() const { return control_->get_TabStop(); }
  void put_TabStop(bool Value) { control_->put_TabStop(Value); }
  int get_XPTheme() const { return control_->get_XPTheme(); }
  void put_XPTheme(int Value) { control_->put_XPTheme(Value); }
  bool get_ShowEditorOnShiftF2() const { return control_->get_ShowEditorOnShiftF2(); }
  void put_ShowEditorOnShiftF2(bool Value) { control_->put_ShowEditorOnShiftF2(Value); }
  bool get_SmartQuotes() const { return control_->get_SmartQuotes(); }
  void put_SmartQuotes(bool Value) { control_->put_SmartQuotes(Value); }
  bool get_PasteTextOnly() const { return control_->get_PasteTextOnly(); }
  void put_PasteTextOnly(bool Value) { control_->put_PasteTextOnly(Value); }
  /// True at first, unlike that of a control elsewhere.
  bool get_Lossless() const { return control_->get_Lossless(); }
  void put_Lossless(bool Value) { control_->put_Lossless(Value); }
  bool get_AsksBeforeClosing() const { return asks_before_closing_; }
  void put_AsksBeforeClosing(bool Value) { asks_before_closing_ = Value; }
  QString get_PlaceholderText() const;
  void put_PlaceholderText(const QString& Value);
  /// The size of the text in per cent, from 25 to 500. Users change it with Ctrl and the wheel,
  /// plus, minus or 0.
  int get_Zoom() const { return zoom_; }
  void put_Zoom(int Value);
  /// Whether a colour with a contrast below 4.5 to 1 on the background is shown in the nearest
  /// lightness that has as much (`readable_color`). The text keeps its colour.
  bool get_AdaptsColors() const;
  void put_AdaptsColors(bool Value);
  /// From line to line, in per cent of one line, where there are several.
  int get_LineSpacing() const;
  void put_LineSpacing(int Value);
  /// Around the text, in pixels. A single line stands in the middle of its box.
  int get_TextMargin() const;
  void put_TextMargin(int Value);
  /// Whether addresses in the text are links: underlined under the pointer, and opened by a click
  /// with Ctrl.
  bool get_OpensLinks() const;
  void put_OpensLinks(bool Value);

  /// Whether words that the dictionary does not have are marked in text that may be edited, and the
  /// menu offers others; true at first. It takes a dictionary of the language, and a library built
  /// with enchant, or a host's own speller. Codes that are revealed are not checked.
  bool get_ChecksSpelling() const { return checks_spelling_; }
  void put_ChecksSpelling(bool Value);
  /// Such as "en_GB"; empty, as at first, for that of the locale.
  QString get_SpellingLanguage() const { return spelling_language_; }
  void put_SpellingLanguage(const QString& Value);
  /// Checks words by this speller, whatever the language; null for the system's again.
  void put_Speller(std::shared_ptr<Speller> Value);

  /// Marks the words that begin with one of these, whatever their case and accents, such as those
  /// that the host has searched for. No part of the text; an empty list ends it.
  void MarkWords(const QStringList& Words);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 public slots:
  void InvokeLargeEditor() { control_->InvokeLargeEditor(); }
  void PasteClipboardContents() { control_->PasteClipboardContents(); }
  /// Pastes without formats, as Ctrl+Shift+V does.
  void PasteText() { control_->PasteText(); }
  /// Gives the selection the format of plain text.
  void SelPlain() { control_->SelPlain(); }

 signals:
  // The control's events. A slot may change what a pointer points to during the call, so only
  // directly connected slots can use it. A key code or character set to 0 goes no further. A slot
  // must delete the widget only with `deleteLater`.

  void Change();
  void Click();
  void DblClick();
  void KeyDown(std::int16_t* KeyCode, std::int16_t* Shift);
  void KeyPress(std::int16_t* KeyAscii);
  void KeyUp(std::int16_t* KeyCode, std::int16_t* Shift);
  void MouseDown(std::int16_t Button, std::int16_t Shift, float X, float Y);
  void MouseMove(std::int16_t Button, std::int16_t Shift, float X, float Y);
  void MouseUp(std::int16_t Button, std::int16_t Shift, float X, float Y);
  void OLEStartDrag(qel::platform::DragData* Data, std::int32_t* AllowedEffects);
  void OLESetData(qel::platform::DragData* Data, std::int16_t DataFormat);
  void OLEGiveFeedback(std::int32_t* Effect, bool* DefaultCursors);
  void OLEDragOver(qel::platform::DragData* Data, std::int32_t* Effect, std::int16_t Button,
                   std::int16_t Shift, float X, float Y, std::int16_t State);
  void OLEDragDrop(qel::platform::DragData* Data, std::int32_t* Effect, std::int16_t Button,
                   std::int16_t Shift, float X, float Y);
  void OLECompleteDrag(std::int32_t* Effect);

  /// The text or its formats have changed.
  void TextQELChanged();
  /// The selection, the caret, the format of the next character typed, or what can be undone has
  /// changed; in the large editor while that is open.
  void SelectionChanged();
  void ZoomChanged(int Zoom);
  /// The menu of the box, or of the large editor's box, is about to be shown for a position of the
  /// text. A slot may add to it; the menu goes when it is closed.
  void AboutToShowMenu(QMenu* Menu, int Position);
  /// An address in the text is to be opened, after a click with Ctrl for instance. The desktop does
  /// so unless a slot, which must be directly connected, clears `Opens`.
  void LinkActivated(const QUrl& Url, bool* Opens);
  /// A persisted property was set.
  void PropertyChanged(const QString& Name);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  class Site;
  class Events;
  class Host;

  /// The box that is shown.
  BoxView* view() const;
  const ViewOptions& options() const;
  /// Sets a value in the options of both boxes.
  template <class Value>
  void put_option(Value ViewOptions::*option, Value value);
  void share_options(const ViewOptions& options);
  void note_property(const QString& name);
  void check_spelling();
  bool is_in_the_making() const { return !was_painted_ || !is_run_time_; }
  template <class Put>
  void put_and_keep_text(Put put);
  bool shows_markup() const;
  void keep(const QString& markup);

  std::unique_ptr<Site> site_;
  std::unique_ptr<Events> events_;
  std::unique_ptr<Host> host_;
  std::unique_ptr<QELTextbox> control_;
  std::unique_ptr<WordMarks> words_;
  std::shared_ptr<Speller> speller_;
  QString spelling_language_;
  bool checks_spelling_ = true;
  std::optional<QString> markup_;  // what a form has set before it was shown,
  std::u16string shown_;           // and the RTF that the box made of it
  bool asks_before_closing_ = true;
  bool was_painted_ = false;
  bool is_run_time_ = true;
  bool shares_options_ = false;
  int zoom_ = 100;
};

}  // namespace qel::qt
