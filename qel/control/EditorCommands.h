#pragma once

#include <string>
#include <string_view>

#include "qel/control/frmTextEditor.h"
#include "qel/platform/Clipboard.h"
#include "qel/text/TextCase.h"

/// The commands of the large editor's menus, which act on the selection of a box.
namespace qel::editor_commands {

/// What the commands work with.
struct Target {
  platform::RichEdit& box;
  platform::Clipboard& clipboard;
  const RTFParser* parser;  ///< converts to markup; null for none
  const EditedText& edited;
  std::int16_t script_offset;  ///< of superscript, in twips
};

/// Runs a command other than "mnuUndo"; whether there is one of that name.
bool run(std::u16string_view name, const Target& target);

/// Whether a menu shows if the command's format is on.
bool has_check(std::u16string_view name);
/// Whether the selection already has the format that the command gives it.
bool is_checked(std::u16string_view name, const Target& target);

/// Whether the command leaves the text as it is.
bool reads_only(std::u16string_view name);
/// Whether the command can act now, in the lossless way.
bool is_enabled(std::u16string_view name, const Target& target);

/// The command of a key; empty for none.
std::u16string command_of(std::int16_t key_code, std::int16_t shift, const EditedText& edited);

/// Changes the case of the selected letters in one change of the box, which keeps all formats.
void change_letters(platform::RichEdit& box, CaseChange change, Color hidden);

/// Puts data from elsewhere in place of the selection.
void paste(platform::DragData& data, const Target& target);

/// The text as markup; empty without a parser.
std::u16string markup(const Target& target);

/// The window with its menus, for that text.
platform::EditorDescription description(const EditedText& edited);

}  // namespace qel::editor_commands
