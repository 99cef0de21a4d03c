#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "qel/base/Color.h"
#include "qel/platform/BoxListener.h"
#include "qel/platform/EditorWindow.h"
#include "qel/platform/Platform.h"
#include "qel/richtext/Document.h"
#include "qel/rtf/RTFParser.h"

namespace qel {

namespace editor_commands {
struct Target;
}

/// The text that an editor is opened on.
struct EditedText {
  richtext::Document content;
  platform::Range selection;
  std::array<std::u16string, 10> fonts;
  std::array<Color, 10> colors = {};
  Way way = Way::stated;
  const platform::RichEdit* replaced = nullptr;  ///< the box that it comes from

  // In the lossless way.

  float font_size = 10;           ///< in points, of what is pasted
  bool pastes_text_only = false;  ///< whatever is pasted
  bool acts_on_plain = true;      ///< to Ctrl+Space
  bool takes_formats = true;      ///< false where the text is markup with its codes shown
};

/// A larger window, with menus, for editing the text of a control. It raises events to the control
/// and decides everything that happens; the window itself is the platform's.
class frmTextEditor : private platform::EditorListener, private platform::BoxListener {
 public:
  /// `events` receives changes and keys in the box, before the form's own handling, and may turn a
  /// character into a typographic quote's code in code page 1252. Both must outlive the form. The
  /// menus are those for `Text`, which is loaded later.
  frmTextEditor(const platform::Platform& platform, platform::BoxListener& events,
                const EditedText& Text);
  frmTextEditor(const frmTextEditor&) = delete;
  frmTextEditor& operator=(const frmTextEditor&) = delete;
  ~frmTextEditor() override;

  const std::shared_ptr<platform::RichEdit>& RichTextBoxObj() const { return box_; }
  /// Sets the parser for the form's own conversions.
  void SetRTFParser(const RTFParser& Parser) { parser_ = Parser; }
  /// Loads the text, which Cancel, Undo and closing by the frame restore.
  void SetText(EditedText Text);
  /// The text as RTF.
  std::u16string GetText() const { return box_->get_TextRTF(); }
  /// Shows the window until the user closes it. Closing it in any way but `cmdOK` restores the
  /// text.
  void Show();

  void cmdOK() { window_->close(); }
  void cmdCancel();
  /// Whether the text is another than the one that was loaded; never in the stated way, in which
  /// closing asks nothing.
  bool has_edits() const override;
  /// Runs the command of that name; any other name does nothing. Commands act on the selection.
  void run(std::u16string_view command);
  /// Whether the selection has the command's format.
  bool is_checked(std::u16string_view command) const override;
  /// Whether the command can act now; always in the stated way.
  bool is_enabled(std::u16string_view command) const override;
  /// The text as markup.
  std::u16string pane_text() const override;

 private:
  void on_change() override;
  void on_selection() override;
  void on_key_down(std::int16_t& key_code, std::int16_t& shift) override;
  void on_key_press(std::int16_t& character) override;
  void on_key_up(std::int16_t& key_code, std::int16_t& shift) override {
    events_.on_key_up(key_code, shift);
  }
  bool on_paste(platform::DragData& data) override;

  void on_activate() override;
  void on_resize(std::int32_t width, std::int32_t height) override;
  void on_ok() override { cmdOK(); }
  void on_cancel() override { cmdCancel(); }
  void on_close() override { restore(); }
  void on_command(std::u16string_view name) override { run(name); }

  editor_commands::Target target() const;
  void handle_key(std::int16_t& key_code, std::int16_t shift);
  platform::RichEdit& box() const { return *box_; }
  void restore();
  void undo_all();

  const platform::Platform& platform_;
  platform::BoxListener& events_;
  std::unique_ptr<platform::EditorWindow> window_;
  std::shared_ptr<platform::RichEdit> box_;
  std::optional<RTFParser> parser_;
  Way way_;
  EditedText edited_;
  bool was_activated_ = false;
};

}  // namespace qel
