#pragma once

class QMenu;

namespace qel::qt {

class BoxView;
class TextBox;

/// Fills the menu of a text box, shown in one of its boxes: undo, the clipboard, the formats of the
/// selection with check marks, the large editor. Items that the user may not use are grey.
void fill_menu(QMenu& menu, TextBox& box, BoxView& view);

}  // namespace qel::qt
