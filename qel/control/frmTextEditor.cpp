#include "qel/control/frmTextEditor.h"

#include <algorithm>
#include <utility>

#include "qel/control/EditorCommands.h"
#include "qel/control/QuoteCodes.h"
#include "qel/platform/Keys.h"

namespace qel {

using namespace keys;

frmTextEditor::frmTextEditor(const platform::Platform& platform, platform::BoxListener& events,
                             const EditedText& Text)
    : platform_(platform),
      events_(events),
      window_(platform.create_editor_window(editor_commands::description(Text))),
      box_(window_->box()),
      way_(Text.way) {
  const platform::Screen screen = platform.screen();
  window_->put_extent(screen.width / 2 * screen.twips_per_pixel_x,
                      screen.height / 2 * screen.twips_per_pixel_y);
}

frmTextEditor::~frmTextEditor() { box_->listen(nullptr); }

void frmTextEditor::SetText(EditedText Text) {
  // Nothing has been edited yet, so nobody is told.
  box_->listen(nullptr);
  edited_ = std::move(Text);
  restore();
  box().select(edited_.selection);
  box_->listen(this);
}

void frmTextEditor::Show() { window_->show_modal(*this); }

void frmTextEditor::restore() { box().put_content(platform::Scope::document, edited_.content); }

/// Goes back to the beginning in one step, which can itself be undone.
void frmTextEditor::undo_all() {
  const auto size = static_cast<std::int32_t>(box().get_Text().size());
  box().select({0, size});
  box().put_content(platform::Scope::selection, edited_.content);
  box().put_SelStart(0);
}

bool frmTextEditor::has_edits() const {
  if (way_ == Way::stated) return false;
  box().settle();
  return !(box().content(platform::Scope::document) == edited_.content);
}

bool frmTextEditor::is_enabled(std::u16string_view command) const {
  if (way_ == Way::stated) return true;
  if (command == u"mnuUndo") return !box().appearance().read_only && has_edits();
  return editor_commands::is_enabled(command, target());
}

void frmTextEditor::cmdCancel() {
  restore();
  window_->close();
}

void frmTextEditor::run(std::u16string_view command) {
  box().settle();
  if (box().appearance().read_only && !editor_commands::reads_only(command)) return;
  if (!is_enabled(command)) return;
  if (command == u"mnuUndo") {
    undo_all();
  } else {
    editor_commands::run(command, target());
  }
}

editor_commands::Target frmTextEditor::target() const {
  constexpr std::int32_t raised_pixels = 3;
  const auto offset =
      static_cast<std::int16_t>(raised_pixels * platform_.screen().twips_per_pixel_y);
  return {box(), platform_.clipboard(), parser_ ? &*parser_ : nullptr, edited_, offset};
}

bool frmTextEditor::is_checked(std::u16string_view command) const {
  return editor_commands::is_checked(command, target());
}

std::u16string frmTextEditor::pane_text() const { return editor_commands::markup(target()); }

void frmTextEditor::on_activate() {
  if (!std::exchange(was_activated_, true)) window_->focus_box();
}

void frmTextEditor::on_resize(std::int32_t width, std::int32_t height) {
  constexpr std::int32_t margin_pixels = 8;
  constexpr std::int32_t button_width_pixels = 88;
  constexpr std::int32_t button_height_pixels = 26;
  const platform::Screen screen = platform_.screen();
  const std::int32_t margin_x = margin_pixels * screen.twips_per_pixel_x;
  const std::int32_t margin_y = margin_pixels * screen.twips_per_pixel_y;
  const std::int32_t button_width = button_width_pixels * screen.twips_per_pixel_x;
  const std::int32_t button_height = button_height_pixels * screen.twips_per_pixel_y;
  const std::int32_t buttons_top = std::max(height - margin_y - button_height, margin_y);
  const std::int32_t cancel_left = std::max(width - margin_x - button_width, margin_x);
  const std::int32_t ok_left = std::max(cancel_left - margin_x - button_width, margin_x);
  window_->lay_out({margin_x, margin_y, std::max(width - 2 * margin_x, 0),
                    std::max(buttons_top - 2 * margin_y, 0)},
                   {ok_left, buttons_top, button_width, button_height},
                   {cancel_left, buttons_top, button_width, button_height});
}

void frmTextEditor::on_change() {
  window_->show_state();
  events_.on_change();
}

void frmTextEditor::on_selection() {
  window_->show_state();
  events_.on_selection();
}

void frmTextEditor::on_key_down(std::int16_t& key_code, std::int16_t& shift) {
  events_.on_key_down(key_code, shift);
  handle_key(key_code, shift);
}

void frmTextEditor::on_key_press(std::int16_t& character) {
  const std::int16_t typed = character;
  events_.on_key_press(character);
  character = character_of(character, typed);
}

bool frmTextEditor::on_paste(platform::DragData& data) {
  editor_commands::paste(data, target());
  return true;
}

void frmTextEditor::handle_key(std::int16_t& key_code, std::int16_t shift) {
  const std::u16string command = editor_commands::command_of(key_code, shift, edited_);
  const bool is_quote =
      shift == ctrl_key && (key_code == grave_accent_key || key_code == apostrophe_key);
  // Where there can be lines, the box makes one.
  const bool breaks_line = way_ == Way::lossless && shift == shift_key &&
                           box().appearance().takes_breaks && key_code == enter_key;
  if (breaks_line) return;
  if (key_code == enter_key) {
    cmdOK();
  } else if (is_quote) {
    if (!box().appearance().read_only) {
      box().put_SelText(key_code == grave_accent_key ? u"\u201C" : u"\u201D");
    }
  } else if (!command.empty()) {
    run(command);
  } else {
    return;
  }
  key_code = 0;
}

}  // namespace qel
