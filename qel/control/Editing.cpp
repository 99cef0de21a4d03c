// Editing in the text box: the selection, keys, typed quotes, the clipboard, events.

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

#include "qel/base/CaseMapping.h"
#include "qel/base/Scan.h"
#include "qel/control/Conversion.h"
#include "qel/control/EditorCommands.h"
#include "qel/control/FormatCommands.h"
#include "qel/control/MarkupPositions.h"
#include "qel/control/QELTextbox.h"
#include "qel/control/QuoteCodes.h"
#include "qel/control/frmTextEditor.h"
#include "qel/platform/Keys.h"
#include "qel/richtext/DocumentReader.h"
#include "qel/rtf/MarkupReader.h"

namespace qel {

using richtext::FormatChange;

using namespace keys;

/// Passes the events of the large editor's box on as events of the control.
class QELTextbox::EditorEvents : public platform::BoxListener {
 public:
  explicit EditorEvents(QELTextbox& control) : control_(control) {}

  void on_change() override {
    // The control itself raises the event for a change that it makes.
    if (!control_.changes_held_) control_.raise_change();
  }
  void on_selection() override {
    if (!control_.changes_held_) control_.raise_selection();
  }
  void on_key_down(std::int16_t& key_code, std::int16_t& shift) override {
    control_.TE_KeyDown(key_code, shift);
  }
  void on_key_press(std::int16_t& character) override { control_.TE_KeyPress(character); }
  void on_key_up(std::int16_t& key_code, std::int16_t& shift) override {
    control_.TE_KeyUp(key_code, shift);
  }

 protected:
  QELTextbox& control_;
};

/// Does the same for one of the control's own boxes, and handles the control's keys and pasted
/// data.
class QELTextbox::BoxEvents : public EditorEvents {
 public:
  BoxEvents(QELTextbox& control, std::size_t index) : EditorEvents(control), index_(index) {}

  void on_change() override {
    if (index_ == control_.active_) EditorEvents::on_change();
  }
  void on_selection() override {
    if (control_.CurrentRichTextBox() == control_.boxes_[index_]) EditorEvents::on_selection();
  }
  void on_click() override { tell(&ControlEvents::Click); }
  void on_double_click() override { tell(&ControlEvents::DblClick); }
  void on_key_down(std::int16_t& key_code, std::int16_t& shift) override {
    // The host may end the control, and this with it.
    const std::weak_ptr<const bool> alive = control_.alive_;
    EditorEvents::on_key_down(key_code, shift);
    if (!alive.expired()) control_.handle_key(key_code, shift);
  }
  void on_key_press(std::int16_t& character) override {
    const std::int16_t typed = character;
    EditorEvents::on_key_press(character);
    character = character_of(character, typed);
  }
  void on_mouse_down(std::int16_t button, std::int16_t shift, float x, float y) override {
    tell(&ControlEvents::MouseDown, button, shift, x, y);
  }
  void on_mouse_move(std::int16_t button, std::int16_t shift, float x, float y) override {
    tell(&ControlEvents::MouseMove, button, shift, x, y);
  }
  void on_mouse_up(std::int16_t button, std::int16_t shift, float x, float y) override {
    tell(&ControlEvents::MouseUp, button, shift, x, y);
  }
  bool on_paste(platform::DragData& data) override {
    control_.paste(*control_.boxes_[index_], data);
    return true;
  }
  void on_start_drag(platform::DragData& data, std::int32_t& allowed_effects) override {
    tell(&ControlEvents::OLEStartDrag, data, allowed_effects);
  }
  void on_set_data(platform::DragData& data, std::int16_t format) override {
    tell(&ControlEvents::OLESetData, data, format);
  }
  void on_give_feedback(std::int32_t& effect, bool& default_cursors) override {
    tell(&ControlEvents::OLEGiveFeedback, effect, default_cursors);
  }
  void on_drag_over(platform::DragData& data, std::int32_t& effect, std::int16_t button,
                    std::int16_t shift, float x, float y, std::int16_t state) override {
    tell(&ControlEvents::OLEDragOver, data, effect, button, shift, x, y, state);
  }
  void on_drag_drop(platform::DragData& data, std::int32_t& effect, std::int16_t button,
                    std::int16_t shift, float x, float y) override {
    tell(&ControlEvents::OLEDragDrop, data, effect, button, shift, x, y);
  }
  void on_complete_drag(std::int32_t& effect) override {
    tell(&ControlEvents::OLECompleteDrag, effect);
  }

 private:
  template <class... Parameters, class... Arguments>
  void tell(void (ControlEvents::*event)(Parameters...), Arguments&... arguments) {
    if (control_.events_ != nullptr) (control_.events_->*event)(arguments...);
  }

  std::size_t index_;
};

void QELTextbox::listen_to_boxes() {
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    box_events_.push_back(std::make_shared<BoxEvents>(*this, i));
    boxes_[i]->listen(box_events_.back().get());
  }
}

QELTextbox::~QELTextbox() {
  if (editor_box_) editor_box_->listen(nullptr);
  for (const auto& box : boxes_) box->listen(nullptr);
}

void QELTextbox::raise_change() {
  if (events_ != nullptr) events_->Change();
}

void QELTextbox::raise_selection() {
  if (events_ != nullptr) events_->SelectionChanged();
}

// The selection.

std::u16string QELTextbox::get_SelRTF() const {
  return conversion().simple_rtf_in(*CurrentRichTextBox(), platform::Scope::selection);
}

std::int16_t QELTextbox::get_SelCharOffset() const {
  return CurrentRichTextBox()->get_SelCharOffset().value_or(0);
}

Color QELTextbox::plain_color() const {
  return is_system_color(fore_color_) ? ConvertSystemColor(fore_color_) : fore_color_;
}

bool QELTextbox::has_color(std::int16_t index) const {
  return is(&platform::RichEdit::get_SelColor, colors_->get_Color(index));
}

void QELTextbox::mark(std::int16_t color, bool on) {
  change(&platform::RichEdit::put_SelColor, on ? colors_->get_Color(color) : plain_color());
}

Color QELTextbox::get_SelColor() const { return CurrentRichTextBox()->get_SelColor().value_or(0); }

void QELTextbox::put_SelColor(Color Value) {
  bool is_known = Value == plain_color();
  for (std::int16_t i = 1; i <= 9 && !is_known; ++i) is_known = Value == colors_->get_Color(i);
  if (is_known) change(&platform::RichEdit::put_SelColor, Value);
}

std::u16string QELTextbox::get_SelFontName() const {
  return CurrentRichTextBox()->get_SelFontName().value_or(u"");
}

void QELTextbox::put_SelFontName(std::u16string_view Value) {
  FormatChange new_format;
  for (std::int16_t i = 0; i <= 9 && !new_format.font_name; ++i) {
    const std::u16string name = fonts_->get_Font(i);
    if (name != QELIndexFonts::unused && equal_ignoring_case(name, Value)) {
      new_format.font_name = name;
    }
  }
  change(&platform::RichEdit::change_format, new_format);
}

void QELTextbox::SelPlain() {
  FormatChange plain;
  plain.bold = plain.italic = plain.underline = plain.strike_through = false;
  plain.small_caps = false;
  plain.offset = std::int16_t{0};
  plain.color = plain_color();
  plain.font_name = get_FontName();
  change(&platform::RichEdit::change_format, plain);
}

void QELTextbox::make_font_plain() {
  FormatChange plain;
  plain.font_name = get_FontName();
  change(&platform::RichEdit::change_format, plain);
}

void QELTextbox::change_case(CaseChange change) {
  const auto box = CurrentRichTextBox();
  box->settle();
  editor_commands::change_letters(*box, change, get_HideColor());
}

platform::Range QELTextbox::selection_in(std::u16string_view markup) const {
  const platform::Range selection = CurrentRichTextBox()->selection();
  if (get_Lossless() && reveal_codes_) return selection;
  MarkupPositions positions(markup, parser_.way());
  positions.pass_characters(selection.start);
  if (selection.length > 0) positions.pass_codes();
  const std::size_t start = positions.at();
  positions.pass_characters(selection.length);
  return {static_cast<std::int32_t>(start), static_cast<std::int32_t>(positions.at() - start)};
}

std::u16string QELTextbox::get_SelTextQEL() const {
  const std::u16string markup = get_TextQEL();
  const platform::Range range = selection_in(markup);
  return markup.substr(static_cast<std::size_t>(range.start),
                       static_cast<std::size_t>(range.length));
}

// Keys.

void QELTextbox::TE_KeyDown(std::int16_t& KeyCode, std::int16_t& Shift) {
  if (events_ != nullptr) events_->KeyDown(KeyCode, Shift);
}

void QELTextbox::TE_KeyUp(std::int16_t& KeyCode, std::int16_t& Shift) {
  if (events_ != nullptr) events_->KeyUp(KeyCode, Shift);
}

namespace {

bool is_paste_key(std::int16_t key_code, std::int16_t shift) {
  return shift == ctrl_key && key_code == letter_key('V');
}

bool is_editor_key(std::int16_t key_code, std::int16_t shift) {
  return shift == shift_key && key_code == function_key(2);
}

/// Null for a key that is none of a style.
const format_commands::Toggle* toggle_of_key(std::int16_t key_code, std::int16_t shift) {
  const auto& toggles = format_commands::toggles;
  const auto* const toggle = std::find_if(toggles.begin(), toggles.end(), [&](const auto& row) {
    return row.label.key_code == key_code && row.label.shift == shift;
  });
  return key_code == 0 || toggle == toggles.end() ? nullptr : toggle;
}

/// The font or colour that a function key stands for; 0 for any other key.
std::int16_t index_of_key(std::int16_t key_code) {
  const auto number = static_cast<std::int16_t>(key_code - first_function_key + 1);
  return number >= 1 && number <= 9 ? number : std::int16_t{0};
}

}  // namespace

bool QELTextbox::acts_on_key(std::int16_t key_code, std::int16_t shift) const {
  const bool is_index = index_of_key(key_code) != 0;
  const auto& plain = format_commands::plain;
  const bool is_plain = (shift == alt_key && key_code == function_key(10)) ||
                        (get_Lossless() && shift == plain.shift && key_code == plain.key_code);
  return is_paste_key(key_code, shift) || (show_editor_ && is_editor_key(key_code, shift)) ||
         (act_on_styles_ && toggle_of_key(key_code, shift) != nullptr) ||
         (act_on_fonts_ && shift == alt_key && is_index) ||
         (act_on_colors_ && shift == ctrl_key && is_index) || (act_on_plain_ && is_plain);
}

/// Acts on the control's own keys, unless edits are not allowed.
void QELTextbox::handle_key(std::int16_t& key_code, std::int16_t shift) {
  if (!acts_on_key(key_code, shift)) return;
  const std::int16_t pressed = std::exchange(key_code, std::int16_t{0});
  if (is_editor_key(pressed, shift)) return InvokeLargeEditor();
  if (!allow_edits_) return;
  const std::int16_t index = index_of_key(pressed);
  if (is_paste_key(pressed, shift)) {
    PasteClipboardContents();
  } else if (const auto* const toggle = toggle_of_key(pressed, shift)) {
    (this->*toggle->put)(!(this->*toggle->get)());
  } else if (index == 0) {
    SelPlain();
  } else if (shift == alt_key) {
    put_SelFontName(GetFontNameGivenFontIndex(index));
  } else {
    put_SelColor(GetColorGivenColorIndex(index));
  }
}

void QELTextbox::TE_KeyPress(std::int16_t& KeyAscii) {
  const std::weak_ptr<const bool> alive = alive_;
  if (events_ != nullptr) events_->KeyPress(KeyAscii);
  if (alive.expired()) return;
  if (!smart_quotes_ || (KeyAscii != u'"' && KeyAscii != u'\'')) return;
  constexpr std::u16string_view before_closing =
      u"abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789~!@#$%^&*()-_=+{}[]\\|:;?/"
      u"<>,.";
  bool closes = false;
  if (const std::int32_t before = get_SelStart() - 1; before >= 0) {
    // Copying the whole text for one character would slow typing noticeably.
    CurrentRichTextBox()->visit_runs(before, [&](const platform::FormatRun& run) {
      const char16_t character = run.text[static_cast<std::size_t>(before - run.start)];
      closes = before_closing.find(character) != std::u16string_view::npos;
      return false;
    });
  }
  const std::int16_t opening = KeyAscii == u'"' ? std::int16_t{147} : std::int16_t{145};
  KeyAscii = static_cast<std::int16_t>(opening + (closes ? 1 : 0));
}

namespace {

/// Hosts also store truth as a number.
bool is_true(const Variant& value) {
  const auto holds = [](const auto& held) {
    if constexpr (std::is_arithmetic_v<std::decay_t<decltype(held)>>) return held != 0;
    return false;
  };
  return std::visit(holds, value);
}

}  // namespace

void QELTextbox::RichEditKeyDown(platform::Dispatch& Target, std::int16_t& KeyCode,
                                 std::int16_t Shift) {
  const auto toggle = [&](std::u16string_view name) {
    Target.put(name, !is_true(Target.get(name)));
  };
  struct Row {
    std::int16_t key_code;
    std::int16_t shift;
    std::u16string_view name;
  };
  // Bold brings italic with it.
  static constexpr std::array rows = {Row{letter_key('B'), ctrl_key, u"SelBold"},
                                      Row{letter_key('B'), ctrl_key, u"SelItalic"},
                                      Row{letter_key('K'), ctrl_key, u"SelIgnore"},
                                      Row{letter_key('T'), ctrl_key, u"SelHide"},
                                      Row{letter_key('U'), ctrl_key, u"SelUnderline"},
                                      Row{function_key(1), alt_key, u"SelAltFont1"},
                                      Row{function_key(2), alt_key, u"SelAltFont2"}};
  bool is_handled = KeyCode == enter_key;
  for (const Row& row : rows) {
    if (row.key_code != KeyCode || row.shift != Shift) continue;
    toggle(row.name);
    is_handled = true;
  }
  if (KeyCode == function_key(3) && Shift == alt_key) {
    Target.call(u"SelPlain");
    is_handled = true;
  }
  if (is_handled) KeyCode = 0;
}

EditedText QELTextbox::edited_text() const {
  const auto& box = CurrentRichTextBox();
  EditedText edited;
  for (std::int16_t i = 0; i < 10; ++i) {
    edited.fonts[static_cast<std::size_t>(i)] = GetFontNameGivenFontIndex(i);
    edited.colors[static_cast<std::size_t>(i)] = GetColorGivenColorIndex(i);
  }
  if (get_Lossless()) {
    edited.way = Way::lossless;
    edited.fonts[0] = get_FontName();
    edited.font_size = get_FontSize();
    edited.pastes_text_only = paste_text_only_;
    edited.acts_on_plain = act_on_plain_;
    edited.takes_formats = !reveal_codes_;
  }
  edited.content = box->content(platform::Scope::document);
  edited.selection = box->selection();
  edited.replaced = box.get();
  return edited;
}

void QELTextbox::InvokeLargeEditor() {
  if (editor_box_) return;
  // The host may end the control while the user edits.
  const std::weak_ptr<const bool> alive = alive_;
  const auto box = CurrentRichTextBox();
  box->settle();
  if (alive.expired() || editor_box_) return;
  const std::shared_ptr<const platform::Platform> platform = platform_;
  EditorEvents events(*this);
  const EditedText edited = edited_text();
  frmTextEditor form(*platform, events, edited);
  const platform::BoxAppearance here = box->appearance();
  form.SetRTFParser(parser_);
  platform::BoxAppearance there = form.RichTextBoxObj()->appearance();
  there.font_name = here.font_name;
  there.font_size = here.font_size;
  there.back_color = here.back_color;
  there.takes_breaks = here.multiline;
  there.read_only = !allow_edits_ || !enabled_;
  form.RichTextBoxObj()->put_appearance(there);
  form.SetText(edited);
  editor_box_ = form.RichTextBoxObj();
  raise_selection();
  if (alive.expired()) return;
  site_.put_modal(true);
  if (alive.expired()) return;
  try {
    form.Show();
  } catch (...) {
    if (!alive.expired()) {
      editor_box_.reset();
      site_.put_modal(false);
    }
    throw;
  }
  form.RichTextBoxObj()->settle();
  if (alive.expired()) return;
  site_.put_modal(false);
  if (alive.expired()) return;
  editor_box_.reset();
  richtext::Document content = form.RichTextBoxObj()->content(platform::Scope::document);
  if (!(content == edited.content)) {
    const auto current = CurrentRichTextBox();
    current->put_content(platform::Scope::document, std::move(content));
    if (alive.expired()) return;
  }
  put_SelStart(static_cast<std::int32_t>(get_Text().size()));
  if (!alive.expired()) raise_selection();
}

// The clipboard.

void QELTextbox::PasteClipboardContents() {
  platform::DragData data = platform_->clipboard().data();
  paste(*CurrentRichTextBox(), data);
}

void QELTextbox::PasteText() {
  platform::DragData data = platform_->clipboard().text_alone();
  paste(*CurrentRichTextBox(), data);
}

namespace {

std::u16string with_single_blanks(std::u16string text) {
  for (const std::u16string_view blank : {u"\r\n", u"\r", u"\n", u"\t", u"  "}) {
    text = replace_all(std::move(text), blank, u" ");
  }
  return text;
}

}  // namespace

void QELTextbox::paste(platform::RichEdit& box, platform::DragData& data) {
  if (get_Lossless()) {
    auto content = conversion().pasted(data, platform_->clipboard(), box, paste_text_only_);
    if (content) box.put_content(platform::Scope::selection, *std::move(content));
    return;
  }
  const auto rtf = paste_text_only_ ? std::nullopt : data.get(platform::rtf_format);
  if (rtf) {
    if (!rtf->empty()) paste_rtf(box, *rtf);
  } else if (const auto text = data.get(platform::text_format)) {
    box.put_SelText(with_single_blanks(*text));
  }
}

void QELTextbox::paste_rtf(platform::RichEdit& box, std::u16string_view rtf) {
  const bool recognizes_crlf = parser_.get_RecognizeCRLF();
  const bool nl_to_space = parser_.get_ConvertNLToSpace();
  parser_.put_RecognizeCRLF(false);
  parser_.put_ConvertNLToSpace(true);
  // Only pasted text goes through markup: the text around it would lose what markup cannot express.
  const std::u16string pasted = conversion().markup_of(rtf);
  const richtext::CharFormat here = box.text_defaults(platform::Scope::selection).format;
  rtf::MarkupFormats formats = rtf::markup_formats(parser_, *fonts_, *colors_, here);
  // Text that names no font of the table looks like the text around it, unless that has such a
  // font: the new text would be read as having it, too.
  formats.fonts[0] = fonts_->FontIndexGivenFontName(here.font_name) > 0 ? box.appearance().font_name
                                                                        : here.font_name;
  formats.size = here.size;
  // Before the host learns of the change, as it may then read the text.
  parser_.put_RecognizeCRLF(recognizes_crlf);
  parser_.put_ConvertNLToSpace(nl_to_space);
  richtext::Document content = rtf::read_markup(pasted, formats);
  // Text may look like the code of a line.
  if (!box.appearance().multiline) content = richtext::in_one_line(content);
  box.put_content(platform::Scope::selection, std::move(content));
}

}  // namespace qel
