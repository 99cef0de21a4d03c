#pragma once

#include <olectl.h>

#include "com/automation/Adapter.h"
#include "com/automation/HostObject.h"
#include "com/control/Activation.h"
#include "com/control/Choices.h"
#include "com/control/ConnectionContainer.h"
#include "com/control/Embedding.h"
#include "com/control/HostedControl.h"
#include "com/control/Pages.h"
#include "com/control/QuickActivation.h"
#include "com/control/Storage.h"
#include "com/control/Transfer.h"
#include "com/control/View.h"
#include "com/objects/QELIndexColorsObject.h"
#include "com/objects/QELIndexFontsObject.h"
#include "com/objects/QELIndexLabelsObject.h"
#include "com/objects/RichTextBoxObject.h"

namespace qel::com {

/// The text box as a control on forms, and as an object that scripts create without a form.
class QELTextboxObject final : public Members<QELTextbox, IQELTextbox> {
  using Textbox = QELTextbox;

 public:
  STDMETHODIMP get_Text(BSTR* Result) override { return answer(Result, &Textbox::get_Text); }
  STDMETHODIMP put_Text(BSTR Value) override {
    return put_bound(DISPID_TEXT, &Textbox::put_Text, Value);
  }
  STDMETHODIMP get_TextQEL(BSTR* Result) override { return answer(Result, &Textbox::get_TextQEL); }
  STDMETHODIMP put_TextQEL(BSTR Value) override {
    return put_bound(DISPID_VALUE, &Textbox::put_TextQEL, Value);
  }
  STDMETHODIMP get_TextRTF(BSTR* Result) override { return answer(Result, &Textbox::get_TextRTF); }
  STDMETHODIMP put_TextRTF(BSTR Value) override { return call(&Textbox::put_TextRTF, Value); }
  STDMETHODIMP get_SelAlignment(::TextAlignment* Result) override {
    return answer(Result, &Textbox::get_SelAlignment);
  }
  STDMETHODIMP put_SelAlignment(::TextAlignment Value) override {
    return call(&Textbox::put_SelAlignment, Value);
  }
  STDMETHODIMP InvokeLargeEditor() override { return call(&Textbox::InvokeLargeEditor); }
  STDMETHODIMP InsertCRLF() override { return call(&Textbox::InsertCRLF); }
  STDMETHODIMP get_SelStart(LONG* Result) override {
    return answer(Result, &Textbox::get_SelStart);
  }
  STDMETHODIMP put_SelStart(LONG Value) override { return call(&Textbox::put_SelStart, Value); }
  STDMETHODIMP get_SelLength(LONG* Result) override {
    return answer(Result, &Textbox::get_SelLength);
  }
  STDMETHODIMP put_SelLength(LONG Value) override { return call(&Textbox::put_SelLength, Value); }
  STDMETHODIMP get_SelText(BSTR* Result) override { return answer(Result, &Textbox::get_SelText); }
  STDMETHODIMP put_SelText(BSTR Value) override { return call(&Textbox::put_SelText, Value); }
  STDMETHODIMP get_SelRTF(BSTR* Result) override { return answer(Result, &Textbox::get_SelRTF); }
  STDMETHODIMP put_SelRTF(BSTR Value) override { return call(&Textbox::put_SelRTF, Value); }
  STDMETHODIMP get_SelBold(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_SelBold);
  }
  STDMETHODIMP put_SelBold(VARIANT_BOOL Value) override {
    return call(&Textbox::put_SelBold, Value);
  }
  STDMETHODIMP get_SelItalic(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_SelItalic);
  }
  STDMETHODIMP put_SelItalic(VARIANT_BOOL Value) override {
    return call(&Textbox::put_SelItalic, Value);
  }
  STDMETHODIMP get_SelUnderline(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_SelUnderline);
  }
  STDMETHODIMP put_SelUnderline(VARIANT_BOOL Value) override {
    return call(&Textbox::put_SelUnderline, Value);
  }
  STDMETHODIMP get_SelStrikeOut(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_SelStrikeOut);
  }
  STDMETHODIMP put_SelStrikeOut(VARIANT_BOOL Value) override {
    return call(&Textbox::put_SelStrikeOut, Value);
  }
  STDMETHODIMP get_SelSuperscript(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_SelSuperscript);
  }
  STDMETHODIMP put_SelSuperscript(VARIANT_BOOL Value) override {
    return call(&Textbox::put_SelSuperscript, Value);
  }
  STDMETHODIMP get_SelSubscript(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_SelSubscript);
  }
  STDMETHODIMP put_SelSubscript(VARIANT_BOOL Value) override {
    return call(&Textbox::put_SelSubscript, Value);
  }
  STDMETHODIMP get_SelCharOffset(SHORT* Result) override {
    return answer(Result, &Textbox::get_SelCharOffset);
  }
  STDMETHODIMP put_SelCharOffset(SHORT Value) override {
    return call(&Textbox::put_SelCharOffset, Value);
  }
  STDMETHODIMP get_SelIgnore(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_SelIgnore);
  }
  STDMETHODIMP put_SelIgnore(VARIANT_BOOL Value) override {
    return call(&Textbox::put_SelIgnore, Value);
  }
  STDMETHODIMP get_SelHide(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_SelHide);
  }
  STDMETHODIMP put_SelHide(VARIANT_BOOL Value) override {
    return call(&Textbox::put_SelHide, Value);
  }
  STDMETHODIMP get_SelNote(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_SelNote);
  }
  STDMETHODIMP put_SelNote(VARIANT_BOOL Value) override {
    return call(&Textbox::put_SelNote, Value);
  }
  STDMETHODIMP get_SelColor(OLE_COLOR* Result) override {
    return answer(Result, &Textbox::get_SelColor);
  }
  STDMETHODIMP put_SelColor(OLE_COLOR Value) override {
    return call(&Textbox::put_SelColor, Value);
  }
  STDMETHODIMP get_SelFontName(BSTR* Result) override {
    return answer(Result, &Textbox::get_SelFontName);
  }
  STDMETHODIMP put_SelFontName(BSTR Value) override {
    return call(&Textbox::put_SelFontName, Value);
  }
  STDMETHODIMP SelPlain() override { return call(&Textbox::SelPlain); }
  STDMETHODIMP get_SelStartQEL(LONG* Result) override {
    return answer(Result, &Textbox::get_SelStartQEL);
  }
  STDMETHODIMP get_SelLengthQEL(LONG* Result) override {
    return answer(Result, &Textbox::get_SelLengthQEL);
  }
  STDMETHODIMP get_SelTextQEL(BSTR* Result) override {
    return answer(Result, &Textbox::get_SelTextQEL);
  }
  STDMETHODIMP PasteClipboardContents() override {
    return call_trusted(&Textbox::PasteClipboardContents);
  }
  STDMETHODIMP TE_Change() override { return call(&Textbox::TE_Change); }
  STDMETHODIMP get_ActOnStyles(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_ActOnStyles);
  }
  STDMETHODIMP put_ActOnStyles(VARIANT_BOOL Value) override {
    return call(&Textbox::put_ActOnStyles, Value);
  }
  STDMETHODIMP get_ActOnFonts(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_ActOnFonts);
  }
  STDMETHODIMP put_ActOnFonts(VARIANT_BOOL Value) override {
    return call(&Textbox::put_ActOnFonts, Value);
  }
  STDMETHODIMP get_ActOnColors(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_ActOnColors);
  }
  STDMETHODIMP put_ActOnColors(VARIANT_BOOL Value) override {
    return call(&Textbox::put_ActOnColors, Value);
  }
  STDMETHODIMP get_ActOnPlain(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_ActOnPlain);
  }
  STDMETHODIMP put_ActOnPlain(VARIANT_BOOL Value) override {
    return call(&Textbox::put_ActOnPlain, Value);
  }
  STDMETHODIMP get_ShowEditorOnShiftF2(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_ShowEditorOnShiftF2);
  }
  STDMETHODIMP put_ShowEditorOnShiftF2(VARIANT_BOOL Value) override {
    return call(&Textbox::put_ShowEditorOnShiftF2, Value);
  }
  STDMETHODIMP get_PasteTextOnly(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_PasteTextOnly);
  }
  STDMETHODIMP put_PasteTextOnly(VARIANT_BOOL Value) override {
    return call(&Textbox::put_PasteTextOnly, Value);
  }
  STDMETHODIMP get_AllowEdits(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_AllowEdits);
  }
  STDMETHODIMP put_AllowEdits(VARIANT_BOOL Value) override {
    return call(&Textbox::put_AllowEdits, Value);
  }
  STDMETHODIMP get_Enabled(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_Enabled);
  }
  STDMETHODIMP put_Enabled(VARIANT_BOOL Value) override {
    return call(&Textbox::put_Enabled, Value);
  }
  STDMETHODIMP get_TabStop(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_TabStop);
  }
  STDMETHODIMP put_TabStop(VARIANT_BOOL Value) override {
    return call(&Textbox::put_TabStop, Value);
  }
  STDMETHODIMP get_Multiline(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_Multiline);
  }
  STDMETHODIMP put_Multiline(VARIANT_BOOL Value) override {
    return call(&Textbox::put_Multiline, Value);
  }
  STDMETHODIMP get_OLEDragMode(OLEDragModeKind* Result) override {
    return answer(Result, &Textbox::get_OLEDragMode);
  }
  STDMETHODIMP put_OLEDragMode(OLEDragModeKind Value) override {
    return call(&Textbox::put_OLEDragMode, Value);
  }
  STDMETHODIMP get_OLEDropMode(OLEDropModeKind* Result) override {
    return answer(Result, &Textbox::get_OLEDropMode);
  }
  STDMETHODIMP put_OLEDropMode(OLEDropModeKind Value) override {
    return call(&Textbox::put_OLEDropMode, Value);
  }
  STDMETHODIMP get_BackColor(OLE_COLOR* Result) override {
    return answer(Result, &Textbox::get_BackColor);
  }
  STDMETHODIMP put_BackColor(OLE_COLOR Value) override {
    return call(&Textbox::put_BackColor, Value);
  }
  STDMETHODIMP get_ForeColor(OLE_COLOR* Result) override {
    return answer(Result, &Textbox::get_ForeColor);
  }
  STDMETHODIMP put_ForeColor(OLE_COLOR Value) override {
    return call(&Textbox::put_ForeColor, Value);
  }
  STDMETHODIMP get_BorderStyle(BorderStyleKind* Result) override {
    return answer(Result, &Textbox::get_BorderStyle);
  }
  STDMETHODIMP put_BorderStyle(BorderStyleKind Value) override {
    return call(&Textbox::put_BorderStyle, Value);
  }
  STDMETHODIMP get_FontName(BSTR* Result) override {
    return answer(Result, &Textbox::get_FontName);
  }
  STDMETHODIMP put_FontName(BSTR Value) override { return call(&Textbox::put_FontName, Value); }
  STDMETHODIMP get_FontSize(FLOAT* Result) override {
    return answer(Result, &Textbox::get_FontSize);
  }
  STDMETHODIMP put_FontSize(FLOAT Value) override { return call(&Textbox::put_FontSize, Value); }
  STDMETHODIMP get_ScrollBars(ScrollBarsKind* Result) override {
    return answer(Result, &Textbox::get_ScrollBars);
  }
  STDMETHODIMP put_ScrollBars(ScrollBarsKind Value) override {
    return call(&Textbox::put_ScrollBars, Value);
  }
  STDMETHODIMP get_XPTheme(XPThemeKind* Result) override {
    return answer(Result, &Textbox::get_XPTheme);
  }
  STDMETHODIMP put_XPTheme(XPThemeKind Value) override {
    return call(&Textbox::put_XPTheme, Value);
  }
  STDMETHODIMP XPThemeColor(BSTR* Result) override {
    return answer(Result, &Textbox::XPThemeColor);
  }
  STDMETHODIMP get_IgnoreColor(OLE_COLOR* Result) override {
    return answer(Result, &Textbox::get_IgnoreColor);
  }
  STDMETHODIMP put_IgnoreColor(OLE_COLOR Value) override {
    return call(&Textbox::put_IgnoreColor, Value);
  }
  STDMETHODIMP get_HideColor(OLE_COLOR* Result) override {
    return answer(Result, &Textbox::get_HideColor);
  }
  STDMETHODIMP put_HideColor(OLE_COLOR Value) override {
    return call(&Textbox::put_HideColor, Value);
  }
  STDMETHODIMP get_NoteColor(OLE_COLOR* Result) override {
    return answer(Result, &Textbox::get_NoteColor);
  }
  STDMETHODIMP put_NoteColor(OLE_COLOR Value) override {
    return call(&Textbox::put_NoteColor, Value);
  }
  STDMETHODIMP get_RevealCodes(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_RevealCodes);
  }
  STDMETHODIMP put_RevealCodes(VARIANT_BOOL Value) override {
    return call(&Textbox::put_RevealCodes, Value);
  }
  STDMETHODIMP get_RecognizeCRLF(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_RecognizeCRLF);
  }
  STDMETHODIMP put_RecognizeCRLF(VARIANT_BOOL Value) override {
    return call(&Textbox::put_RecognizeCRLF, Value);
  }
  STDMETHODIMP get_RecognizeTabs(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_RecognizeTabs);
  }
  STDMETHODIMP put_RecognizeTabs(VARIANT_BOOL Value) override {
    return call(&Textbox::put_RecognizeTabs, Value);
  }
  STDMETHODIMP get_ConvertNLToSpace(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_ConvertNLToSpace);
  }
  STDMETHODIMP put_ConvertNLToSpace(VARIANT_BOOL Value) override {
    return call(&Textbox::put_ConvertNLToSpace, Value);
  }
  STDMETHODIMP get_ConvertTabsToSpace(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_ConvertTabsToSpace);
  }
  STDMETHODIMP put_ConvertTabsToSpace(VARIANT_BOOL Value) override {
    return call(&Textbox::put_ConvertTabsToSpace, Value);
  }
  STDMETHODIMP QELToRTF(BSTR Text, BSTR* Result) override {
    return answer(Result, &Textbox::QELToRTF, Text);
  }
  STDMETHODIMP QELToRTFWithoutTables(BSTR Text, BSTR* Result) override {
    return answer(Result, &Textbox::QELToRTFWithoutTables, Text);
  }
  STDMETHODIMP RTFToQEL(BSTR RTF, BSTR* Result) override {
    return answer(Result, &Textbox::RTFToQEL, RTF);
  }
  STDMETHODIMP get_Fonts(IQELIndexFonts** Result) override {
    return answer(Result, &Textbox::get_Fonts);
  }
  STDMETHODIMP get_Colors(IQELIndexColors** Result) override {
    return answer(Result, &Textbox::get_Colors);
  }
  STDMETHODIMP GetFontNameGivenFontIndex(SHORT Index, BSTR* Result) override {
    return answer(Result, &Textbox::GetFontNameGivenFontIndex, Index);
  }
  STDMETHODIMP GetFontIndexGivenFontName(BSTR Name, SHORT* Result) override {
    return answer(Result, &Textbox::GetFontIndexGivenFontName, Name);
  }
  STDMETHODIMP GetColorGivenColorIndex(SHORT Index, OLE_COLOR* Result) override {
    return answer(Result, &Textbox::GetColorGivenColorIndex, Index);
  }
  STDMETHODIMP GetColorIndexGivenColor(OLE_COLOR Value, SHORT* Result) override {
    return answer(Result, &Textbox::GetColorIndexGivenColor, Value);
  }
  STDMETHODIMP ConvertSystemColor(OLE_COLOR Value, OLE_COLOR* Result) override {
    return answer(Result, &Textbox::ConvertSystemColor, Value);
  }
  STDMETHODIMP IsQELCode(BSTR Text, QELCodeKind Flags, VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::IsQELCode, Text, Flags);
  }
  STDMETHODIMP HexToChar(BSTR Text, BSTR* Result) override {
    return answer(Result, &Textbox::HexToChar, Text);
  }
  STDMETHODIMP get_Width(LONG* Result) override { return answer(Result, &Textbox::get_Width); }
  STDMETHODIMP get_Height(LONG* Result) override { return answer(Result, &Textbox::get_Height); }
  STDMETHODIMP SetFocus() override { return call(&Textbox::SetFocus); }
  STDMETHODIMP Size(LONG Width, LONG Height) override {
    return call(&Textbox::Size, Width, Height);
  }
  STDMETHODIMP Refresh() override { return call(&Textbox::Refresh); }
  STDMETHODIMP OLEDrag() override { return call_trusted(&Textbox::OLEDrag); }

  STDMETHODIMP get_CurrentRichTextBox(IRichTextBox** Result) override {
    return answer(Result, &Textbox::CurrentRichTextBox);
  }
  STDMETHODIMP TE_KeyDown(VARIANT* KeyCode, VARIANT* Shift) override {
    return call(&Textbox::TE_KeyDown, KeyCode, Shift);
  }
  STDMETHODIMP TE_KeyPress(VARIANT* KeyAscii) override {
    return call(&Textbox::TE_KeyPress, KeyAscii);
  }
  STDMETHODIMP TE_KeyUp(VARIANT* KeyCode, VARIANT* Shift) override {
    return call(&Textbox::TE_KeyUp, KeyCode, Shift);
  }
  STDMETHODIMP RichEditKeyDown(IDispatch* Target, VARIANT* KeyCode, SHORT Shift) override {
    return guard([&] {
      HostObject target(Target);
      Textbox::RichEditKeyDown(target, given(KeyCode), Shift);
    });
  }
  STDMETHODIMP get_hDC(OLE_HANDLE* Result) override {
    return answer(Result, [this] { return handle_of(control_.device_context()); });
  }
  STDMETHODIMP get_hWnd(OLE_HANDLE* Result) override {
    return answer(Result, [this] { return handle_of(control_.window()); });
  }
  STDMETHODIMP get_TestFont(BSTR* Result) override {
    return answer(Result, [this] { return control_.test_font(); });
  }
  STDMETHODIMP put_TestFont(BSTR Value) override {
    return call([&] { control_.put_test_font(text_of(Value)); });
  }
  STDMETHODIMP get_Lossless(VARIANT_BOOL* Result) override {
    return answer(Result, &Textbox::get_Lossless);
  }
  STDMETHODIMP put_Lossless(VARIANT_BOOL Value) override {
    return call(&Textbox::put_Lossless, Value);
  }
  STDMETHODIMP get_AccessibleName(BSTR* Result) override {
    return answer(Result, [this] { return control_.accessible_name(); });
  }
  STDMETHODIMP put_AccessibleName(BSTR Value) override {
    return call([&] { control_.put_accessible_name(text_of(Value)); });
  }

 protected:
  void* extra_interface(const IID& id) override;
  const IID& source_id() const override { return __uuidof(QELTextboxEvents); }
  QELTextbox& object() const override { return control_.textbox(); }

 private:
  void on_trust(bool trusts) override { control_.put_trust(trusts); }
  HRESULT call_trusted(void (Textbox::*member)()) {
    return guard([&] {
      require_trust();
      (object().*member)();
    });
  }

  /// A handle has 32 significant bits in every kind of process.
  static OLE_HANDLE handle_of(std::uintptr_t handle) { return static_cast<OLE_HANDLE>(handle); }

  /// A host may forbid changes to a property to which it has bound a field.
  template <class Member>
  HRESULT put_bound(DISPID property, Member member, BSTR value) {
    return control_.may_change(property) ? call(member, value) : CTL_E_PERMISSIONDENIED;
  }

  ConnectionContainer connections_{whole()};
  mutable HostedControl control_{whole(), own(), connections_};
  Embedding embedding_{whole(), control_};
  InPlace in_place_{whole(), control_};
  Active active_{whole(), control_};
  Steering steering_{whole(), control_};
  View view_{whole(), control_};
  QuickActivation quick_activation_{whole(), control_, connections_, view_};
  Choices choices_{whole(), *this};
  Pages pages_{whole()};
  Transfer transfer_{whole(), control_};
  StreamStorage stream_storage_{whole(), control_};
  DocumentStorage document_storage_{whole(), control_};
  BagStorage bag_storage_{whole(), control_};
};

}  // namespace qel::com
