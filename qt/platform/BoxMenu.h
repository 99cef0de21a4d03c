#pragma once

#include <QString>
#include <string_view>

#include "qel/control/FormatCommands.h"

class QMenu;

namespace qel::qt {

class BoxView;

/// A caption of the library in the user's language, and that of a command with its key.
QString caption_of(std::u16string_view text);
QString menu_text_of(const format_commands::Label& label);

/// Adds undo, redo, the clipboard and selecting to a menu of the box. Items that cannot act now are
/// grey.
void fill_edit_menu(QMenu& menu, BoxView& view);

}  // namespace qel::qt
