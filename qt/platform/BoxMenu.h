#pragma once

class QMenu;

namespace qel::qt {

class BoxView;

/// Adds undo, redo, the clipboard and selecting to a menu of the box. What cannot be done now is
/// grey.
void fill_edit_menu(QMenu& menu, BoxView& view);

}  // namespace qel::qt
