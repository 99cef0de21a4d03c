#pragma once

class QMenu;

namespace qel {
class QELTextbox;
}

namespace qel::qt {

class BoxView;

/// Fills the menu of a text box: undo, the clipboard, the formats of the selection with check
/// marks, the large editor. Items that the user may not use are grey.
void fill_menu(QMenu& menu, QELTextbox& control, BoxView& view);

}  // namespace qel::qt
