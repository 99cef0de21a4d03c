#pragma once

class QMenu;

namespace qel::qt {

class BoxView;

/// Adds undo, redo, the clipboard and selecting to a menu of the box. Items that cannot act now are
/// grey.
void fill_edit_menu(QMenu& menu, BoxView& view);

}  // namespace qel::qt
